#pragma once

#include <QByteArray>
#include <QString>

// The multipart forms of the router's configuration page "/cgi-bin/firmwarecfg" that read and
// write phone book 0. The router reads parts separated by plain line feeds.
namespace BoxPhonebookForm {

inline const QString kPath = QStringLiteral("/cgi-bin/firmwarecfg");
inline const QByteArray kBoundary = "---------------------------9849436581144108930470211272";

// Without a session ("-1" or empty) the password goes along instead of the SID.
struct Auth
{
    QString sessionID;
    QString password;
    bool hasSession() const { return !sessionID.isEmpty() && sessionID != u"-1"; }
};

QByteArray contentType();
// loadPhoneBook: asks for the book as XML.
QByteArray exportBody(const Auth& auth);
// uploadPhonebook: the book's XML (without declaration) sent as the file "Phonebook.xml".
QByteArray importBody(const Auth& auth, const QString& bookXML);

} // namespace BoxPhonebookForm
