#include "calllist/ListQueryBuilder.h"

#include "calllist/LocalTimeFunction.h"

#include <QVariantMap>

namespace ListQuery {

SqlFragment joinedListQuery(int profile, bool rowidAlias)
{
    SqlFragment sql(rowidAlias ? QStringLiteral("SELECT callinglist.rowid AS rowid, callinglist.*, ")
                               : QStringLiteral("SELECT callinglist.rowid, callinglist.*, "));
    sql.add(QStringLiteral("COALESCE( caller.name,  '' ) AS name, COALESCE( caller.abid,  '' ) AS abid, "
                           "COALESCE( caller.label,  '' ) AS label FROM callinglist LEFT JOIN caller ON "
                           "callinglist.phonenumber = caller.phonenumber WHERE callinglist.profile = ? "),
            {profile});
    return sql;
}

SqlFragment hiddenLineFilter(const QVariantList& lines)
{
    SqlFragment sql;
    for (const QVariant& entry : lines) {
        const QVariantMap map = entry.toMap();
        const QString line = map.value(QStringLiteral("Line")).toString();
        // An empty number would hide every call.
        if (map.value(QStringLiteral("HideList")).toInt() != 1 || line.isEmpty())
            continue;
        sql.add(QStringLiteral(" AND callinglist.line NOT ") + likeContainsPiece() + u' ',
                {likeEscaped(line)});
    }
    return sql;
}

std::optional<QString> sortExpression(const QString& identifier)
{
    static const QList<std::pair<QString, QString>> table = {
        {QStringLiteral("callstateimg"), QStringLiteral("callinglist.callstate")},
        {QStringLiteral("date"), QStringLiteral("callinglist.calldate")},
        {QStringLiteral("name"), QStringLiteral("name")},
        {QStringLiteral("number"), QStringLiteral("caller.phonenumber")},
        {QStringLiteral("extension"), QStringLiteral("callinglist.extension")},
        {QStringLiteral("line"), QStringLiteral("callinglist.line")},
        {QStringLiteral("duration"), QStringLiteral("callinglist.duration")},
    };
    for (const auto& [id, expr] : table)
        if (id == identifier)
            return expr;
    return std::nullopt;
}

QString sortDirection(bool ascending)
{
    return ascending ? QStringLiteral("ASC") : QStringLiteral("DESC");
}

namespace {

// The shown date of a call as text.
SqlFragment shownDate(const QString& sqlDateFormat)
{
    if (LocalTimeFunction::supports(sqlDateFormat))
        return SqlFragment(QLatin1String(LocalTimeFunction::Name) + QStringLiteral("(?,calldate)"),
                           {sqlDateFormat});
    return SqlFragment(QStringLiteral("STRFTIME(?,calldate,'unixepoch','localtime')"), {sqlDateFormat});
}

} // namespace

std::optional<SqlFragment> searchColumnExpression(const QString& identifier, const QString& sqlDateFormat)
{
    if (identifier == u"date")
        return shownDate(sqlDateFormat);
    static const QList<std::pair<QString, QString>> table = {
        {QStringLiteral("name"), QStringLiteral("caller.name")},
        {QStringLiteral("number"), QStringLiteral("callinglist.phonenumber")},
        {QStringLiteral("extension"), QStringLiteral("callinglist.extension")},
        {QStringLiteral("line"), QStringLiteral("callinglist.line")},
        {QStringLiteral("duration"), QStringLiteral("callinglist.duration")},
    };
    for (const auto& [id, expr] : table)
        if (id == identifier)
            return SqlFragment(expr);
    return std::nullopt;
}

namespace {

// A shown date holds only digits and the format's own separators; other text can never match
// it, and skipping the per-row date formatting makes name searches much faster.
bool dateCouldContain(const QString& text, const QString& sqlDateFormat)
{
    QString literal;
    for (qsizetype i = 0; i < sqlDateFormat.size(); ++i) {
        if (sqlDateFormat[i] == u'%' && i + 1 < sqlDateFormat.size()) {
            if (sqlDateFormat[i + 1] == u'%')
                literal += u'%';
            ++i;
            continue;
        }
        literal += sqlDateFormat[i];
    }
    return std::all_of(text.begin(), text.end(), [&](QChar c) { return c.isDigit() || literal.contains(c); });
}

// Filters on the caller cache without joining every call first: the join then only runs for
// the calls listed. The cache holds one row per number, so this equals caller.name LIKE.
QString nameMatches(const QString& like)
{
    return QStringLiteral("callinglist.phonenumber IN (SELECT phonenumber FROM caller WHERE name") + like +
           QStringLiteral(")");
}

} // namespace

SqlFragment searchFragment(const QString& text, const QString& column, const QString& sqlDateFormat)
{
    SqlFragment sql;
    if (text.isEmpty())
        return sql;
    const QString value = likeEscaped(text);
    const QString like = u' ' + likeContainsPiece();
    if (column == u"name") {
        sql.add(QStringLiteral(" AND ") + nameMatches(like) + u' ', {value});
        return sql;
    }
    if (!column.isEmpty()) {
        const auto expr = searchColumnExpression(column, sqlDateFormat);
        if (!expr)
            return sql;
        sql.add(QStringLiteral(" AND ")).add(*expr).add(like + u' ', {value});
        return sql;
    }
    sql.add(QStringLiteral(" AND ( callinglist.phonenumber") + like, {value});
    sql.add(QStringLiteral(" OR callinglist.extension") + like, {value});
    sql.add(QStringLiteral(" OR callinglist.line") + like, {value});
    sql.add(QStringLiteral(" OR ") + nameMatches(like), {value});
    if (dateCouldContain(text, sqlDateFormat))
        sql.add(QStringLiteral(" OR ")).add(shownDate(sqlDateFormat)).add(like, {value});
    sql.add(QStringLiteral(" ) "));
    return sql;
}

QString convertedSQLDateFormat(const QString& pattern)
{
    QString out;
    for (qsizetype i = 0; i < pattern.size();) {
        const QChar c = pattern[i];
        if (c == u'\'') { // quoted literal text
            qsizetype end = pattern.indexOf(u'\'', i + 1);
            if (end < 0)
                end = pattern.size();
            out += pattern.mid(i + 1, end - i - 1).replace(u'%', QStringLiteral("%%"));
            i = end + 1;
            continue;
        }
        qsizetype run = i;
        while (run < pattern.size() && pattern[run] == c)
            ++run;
        // SQLite's strftime knows only numeric fields: month names become numbers, years are
        // always four digits (a two-digit year still matches inside them).
        switch (c.unicode()) {
        case u'd':
            out += QStringLiteral("%d");
            break;
        case u'M':
        case u'L':
            out += QStringLiteral("%m");
            break;
        case u'y':
        case u'Y':
            out += QStringLiteral("%Y");
            break;
        case u'H':
        case u'h':
            out += QStringLiteral("%H");
            break;
        case u'm':
            out += QStringLiteral("%M");
            break;
        case u's':
            out += QStringLiteral("%S");
            break;
        case u'a':
        case u'A':
        case u'P':
        case u'p':
        case u't':
        case u'z':
            break;
        default:
            if (c == u'%')
                out += QStringLiteral("%%");
            else
                out += pattern.mid(i, run - i);
        }
        i = run;
    }
    return out.trimmed();
}

} // namespace ListQuery
