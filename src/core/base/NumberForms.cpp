#include "base/NumberForms.h"

#include "base/StringAdditions.h"
#include "base/TNPreferencesManager.h"

#include <QRegularExpression>

Prefixis::Prefixis(const QStringList& list)
    : international(list.value(0)), country(list.value(1)), trunk(list.value(2)), area(list.value(3))
{
}

Prefixis Prefixis::current(const TNPreferencesManager* manager)
{
    if (!manager)
        return {};
    const auto prefs = manager->currentPreferences();
    return prefs ? Prefixis(prefs->prefixis) : Prefixis();
}

namespace methods {

QString removePrefixWhenLongEnough(const QString& text, const QString& prefix)
{
    if (text.size() >= prefix.size() && text.startsWith(prefix))
        return text.mid(prefix.size());
    return text;
}

namespace {
QString plusToInternational(const QString& text, const QString& p0)
{
    if (!text.isEmpty() && text.at(0) == u'+')
        return p0 + text.mid(1);
    return text;
}

QString digitsOnly(const QString& text)
{
    QString out;
    out.reserve(text.size());
    for (const QChar c : text)
        if (c >= u'0' && c <= u'9')
            out += c;
    return out;
}
} // namespace

QString cleanNumber(const QString& number, const Prefixis& p)
{
    QString m = SearchingAdditions::stringByReplacingCharactersInSet(number, u"()./- ", QString());
    m = plusToInternational(m, p.international);
    const QString i = p.internationalCountry();
    // The fold always yields "0", never the trunk prefix setting.
    if (m.size() >= i.size() && !i.isEmpty() && m.startsWith(i))
        m = QStringLiteral("0") + m.mid(i.size());
    return m;
}

QString trimString(const QString& text)
{
    qsizetype begin = 0;
    qsizetype end = text.size();
    const auto isBlank = [](QChar c) { return c == u'\t' || c.category() == QChar::Separator_Space; };
    while (begin < end && isBlank(text.at(begin)))
        ++begin;
    while (end > begin && isBlank(text.at(end - 1)))
        --end;
    return text.mid(begin, end - begin);
}

QString replaceCommandStringinNumber(const QString& number)
{
    static const QRegularExpression command(QStringLiteral("^.*#(.*)$"),
                                            QRegularExpression::DotMatchesEverythingOption);
    const auto match = command.match(number);
    return match.hasMatch() ? match.captured(1) : number;
}

QString matchExpressionInString(const QString& text)
{
    const QStringList lines = text.split(u'\n');
    return lines.size() < 2 ? QString() : lines.first();
}

QString numberWithoutParenthesisPart(const QString& number)
{
    const qsizetype open = number.indexOf(u'(');
    if (open < 0)
        return number;
    if (number.startsWith(u'(') && number.endsWith(u')'))
        return digitsOnly(number);
    return digitsOnly(number.left(open));
}

} // namespace methods

namespace adressbooksearch {

QString standardizePhoneNumber(const QString& number, const Prefixis& p)
{
    QString m = number;
    if (!m.isEmpty() && m.at(0) == u'+')
        m = p.international + m.mid(1);
    const QString i = p.internationalCountry();
    if (!i.isEmpty() && m.size() >= i.size() && m.startsWith(i))
        m = QStringLiteral("0") + m.mid(i.size());
    // Also folds a local number that merely begins with the country code's digits: kept so.
    if (!p.country.isEmpty() && m.size() >= p.country.size() && m.startsWith(p.country))
        m = QStringLiteral("0") + m.mid(p.country.size());
    return methods::digitsOnly(m);
}

} // namespace adressbooksearch
