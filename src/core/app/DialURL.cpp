#include "app/DialURL.h"

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

} // namespace methods
