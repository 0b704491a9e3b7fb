#include "contacts/BoxPhonebookForm.h"

#include <QUrl>

namespace BoxPhonebookForm {

namespace {
QByteArray field(const QByteArray& name, const QByteArray& value)
{
    return "Content-Disposition: form-data; name=\"" + name + "\"\n\n" + value;
}

QByteArray authPart(const Auth& auth)
{
    if (auth.hasSession())
        return field("sid", auth.sessionID.toUtf8());
    return field("login:command/password", QUrl::toPercentEncoding(auth.password));
}

QByteArray form(const QList<QByteArray>& parts)
{
    const QByteArray separator = "\n--" + kBoundary + "\n";
    QByteArray body = "--" + kBoundary + "\n";
    body += parts.join(separator);
    body += "\n\n--" + kBoundary + "--\n";
    return body;
}
} // namespace

QByteArray contentType()
{
    return "multipart/form-data; boundary=" + kBoundary;
}

QByteArray exportBody(const Auth& auth)
{
    return form({authPart(auth), field("PhonebookId", "0"), field("PhonebookExportName", "Telefonbuch"),
                 field("PhonebookExport", "1")});
}

QByteArray importBody(const Auth& auth, const QString& bookXML)
{
    const QByteArray file =
        "Content-Disposition: form-data; name=\"PhonebookImportFile\"; filename=\"Phonebook.xml\"\n"
        "Content-Type: text/xml\n\n<?xml version=\"1.0\" encoding=\"UTF-8\"?>" +
        bookXML.toUtf8();
    return form({authPart(auth), field("PhonebookId", "0"), file});
}

} // namespace BoxPhonebookForm
