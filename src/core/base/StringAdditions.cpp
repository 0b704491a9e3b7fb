#include "base/StringAdditions.h"

#include <array>

namespace {

// Built once; the function-local static makes the first use from two threads safe.
struct KeypadSets
{
    std::array<char, 26> digitForLetter{};
    KeypadSets()
    {
        static constexpr std::array<const char*, 8> groups = {"abc", "def",  "ghi", "jkl",
                                                              "mno", "pqrs", "tuv", "wxyz"};
        for (size_t g = 0; g < groups.size(); ++g)
            for (const char* c = groups[g]; *c; ++c)
                digitForLetter[size_t(*c - 'a')] = char('2' + g);
    }
    static bool isDialable(QChar c)
    {
        return (c >= u'0' && c <= u'9') || c == u'+' || c == u'*' || c == u'#';
    }
};

const KeypadSets& keypad()
{
    static const KeypadSets sets;
    return sets;
}

} // namespace

namespace SearchingAdditions {

QString unifiedPhoneNumber(const QString& text)
{
    const KeypadSets& sets = keypad();
    const QString lower = text.toLower();
    QString result;
    result.reserve(lower.size());
    qsizetype i = 0;
    if (lower.startsWith(u"int")) {
        result += u"int";
        i = 3;
    }
    bool seenDialable = false;
    for (; i < lower.size(); ++i) {
        const QChar c = lower.at(i);
        if (KeypadSets::isDialable(c)) {
            result += c;
            seenDialable = true;
        } else if (c >= u'a' && c <= u'z' && seenDialable) {
            result += QLatin1Char(sets.digitForLetter[size_t(c.unicode() - u'a')]);
        }
    }
    return result;
}

bool containsString(const QString& text, const QString& needle, bool ignoringCase)
{
    if (needle.isEmpty())
        return false;
    return text.contains(needle, ignoringCase ? Qt::CaseInsensitive : Qt::CaseSensitive);
}

QString stringByReplacingCharactersInSet(const QString& text, QStringView set, const QString& replacement)
{
    QString result;
    result.reserve(text.size());
    for (const QChar c : text) {
        if (set.contains(c))
            result += replacement;
        else
            result += c;
    }
    return result;
}

QString stringByUnescapingEntities(const QString& text, const QHash<QString, QString>* extra)
{
    static const QHash<QString, QString> xmlEntities = {
        {QStringLiteral("amp"), QStringLiteral("&")},  {QStringLiteral("lt"), QStringLiteral("<")},
        {QStringLiteral("gt"), QStringLiteral(">")},   {QStringLiteral("quot"), QStringLiteral("\"")},
        {QStringLiteral("apos"), QStringLiteral("'")},
    };
    if (!text.contains(u'&'))
        return text;
    QString result;
    result.reserve(text.size());
    qsizetype i = 0;
    while (i < text.size()) {
        const QChar c = text.at(i);
        const qsizetype semi = c == u'&' ? text.indexOf(u';', i + 1) : -1;
        // Entity names are short; a far-away ";" belongs to something else.
        if (semi < 0 || semi - i > 12) {
            result += c;
            ++i;
            continue;
        }
        const QString name = text.mid(i + 1, semi - i - 1);
        QString resolved;
        if (name.startsWith(u'#')) {
            bool ok = false;
            const uint code = (name.size() > 1 && (name.at(1) == u'x' || name.at(1) == u'X'))
                                  ? name.mid(2).toUInt(&ok, 16)
                                  : name.mid(1).toUInt(&ok, 10);
            if (ok && code > 0 && code <= 0x10FFFF && !(code >= 0xD800 && code <= 0xDFFF)) {
                const char32_t cp = code;
                resolved = QString::fromUcs4(&cp, 1);
            }
        } else if (auto it = xmlEntities.constFind(name); it != xmlEntities.constEnd()) {
            resolved = *it;
        } else if (extra) {
            resolved = extra->value(name);
        }
        if (resolved.isEmpty()) {
            result += c;
            ++i;
            continue;
        }
        result += resolved;
        i = semi + 1;
    }
    return result;
}

} // namespace SearchingAdditions

namespace FBStringHelper {

QString replaceStringTarget(const QString& target, const QString& replacement, const QString& text)
{
    if (target.isEmpty())
        return text;
    QString result = text;
    result.replace(target, replacement);
    return result;
}

} // namespace FBStringHelper
