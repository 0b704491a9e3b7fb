#include "base/DialURL.h"

#include "base/StringAdditions.h"

#include <QUrl>

namespace methods {

std::optional<QString> numberFromDialURL(const QString& url)
{
    const QString trimmed = url.trimmed();
    const qsizetype colon = trimmed.indexOf(u':');
    if (colon <= 0)
        return std::nullopt;
    const QString scheme = trimmed.left(colon).toLower();
    if (scheme != u"callto" && scheme != u"dial")
        return std::nullopt;
    QString rest = trimmed.mid(colon);
    rest.remove(u':');
    rest.remove(u'/');
    return QUrl::fromPercentEncoding(rest.toUtf8());
}

std::optional<QString> numberFromTelURL(const QString& url)
{
    const QString trimmed = url.trimmed();
    if (!trimmed.startsWith(u"tel:", Qt::CaseInsensitive))
        return std::nullopt;
    QString rest = trimmed.mid(4);
    while (rest.startsWith(u'/'))
        rest.remove(0, 1);
    const qsizetype params = rest.indexOf(u';');
    if (params >= 0)
        rest.truncate(params);
    return QUrl::fromPercentEncoding(rest.toUtf8()).trimmed();
}

QString dialableNumber(const QString& text, const QString& internationalPrefix)
{
    QString number = SearchingAdditions::unifiedPhoneNumber(text);
    // "int" stands for the international prefix in the unified form.
    if (number.startsWith(u"int"))
        number = u'+' + number.mid(3);
    if (number.startsWith(u'+'))
        number = (internationalPrefix.isEmpty() ? QStringLiteral("00") : internationalPrefix) + number.mid(1);
    // "+" anywhere else is not dialable.
    number.remove(u'+');
    return number;
}

} // namespace methods
