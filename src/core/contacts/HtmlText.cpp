#include "contacts/HtmlText.h"

#include "base/StringAdditions.h"

#include <QHash>

namespace HtmlText {

QString toPlainText(const QString& html)
{
    // The named entities directory pages use for names and places.
    static const QHash<QString, QString> entities = {
        {QStringLiteral("nbsp"), QStringLiteral(" ")},   {QStringLiteral("auml"), QStringLiteral("ä")},
        {QStringLiteral("ouml"), QStringLiteral("ö")},   {QStringLiteral("uuml"), QStringLiteral("ü")},
        {QStringLiteral("Auml"), QStringLiteral("Ä")},   {QStringLiteral("Ouml"), QStringLiteral("Ö")},
        {QStringLiteral("Uuml"), QStringLiteral("Ü")},   {QStringLiteral("szlig"), QStringLiteral("ß")},
        {QStringLiteral("eacute"), QStringLiteral("é")}, {QStringLiteral("egrave"), QStringLiteral("è")},
        {QStringLiteral("agrave"), QStringLiteral("à")}, {QStringLiteral("aacute"), QStringLiteral("á")},
        {QStringLiteral("ccedil"), QStringLiteral("ç")}, {QStringLiteral("ntilde"), QStringLiteral("ñ")},
        {QStringLiteral("oacute"), QStringLiteral("ó")}, {QStringLiteral("iacute"), QStringLiteral("í")},
        {QStringLiteral("uacute"), QStringLiteral("ú")}, {QStringLiteral("ecirc"), QStringLiteral("ê")},
        {QStringLiteral("acirc"), QStringLiteral("â")},  {QStringLiteral("ocirc"), QStringLiteral("ô")},
        {QStringLiteral("ndash"), QStringLiteral("–")},  {QStringLiteral("mdash"), QStringLiteral("—")},
        {QStringLiteral("middot"), QStringLiteral("·")}, {QStringLiteral("rsquo"), QStringLiteral("’")},
        {QStringLiteral("lsquo"), QStringLiteral("‘")},  {QStringLiteral("bdquo"), QStringLiteral("„")},
        {QStringLiteral("ldquo"), QStringLiteral("“")},  {QStringLiteral("rdquo"), QStringLiteral("”")},
    };
    QString text;
    text.reserve(html.size());
    bool inTag = false;
    for (const QChar c : html) {
        if (inTag) {
            if (c == u'>') {
                inTag = false;
                text += u' '; // <br> and block ends separate words
            }
        } else if (c == u'<') {
            inTag = true;
        } else {
            text += c;
        }
    }
    text = SearchingAdditions::stringByUnescapingEntities(text, &entities);
    return text.simplified();
}

} // namespace HtmlText
