#include "calllist/SmartCondition.h"

#include "base/Logging.h"

#include <QDateTime>

namespace Smart {

namespace {

QString dateExpr(const char* format)
{
    return QStringLiteral("STRFTIME('%1',callinglist.calldate,'unixepoch','localtime')")
        .arg(QLatin1String(format));
}

// The same field of "now", now being bound.
QString nowExpr(const char* format)
{
    return QStringLiteral("STRFTIME('%1',?,'unixepoch','localtime')").arg(QLatin1String(format));
}

QString twoDigits(const QString& value)
{
    const QString v = value.trimmed();
    return v.size() == 1 && v[0].isDigit() ? QStringLiteral("0") + v : v;
}

QString dayModifier(qint64 days)
{
    return QStringLiteral("-%1 day").arg(days);
}

// A day count as the user or a stored list gives it; beyond a few centuries (or not a number) it
// reads as 0 like any malformed value, which also keeps the negation below defined.
qint64 dayCount(const QString& value)
{
    bool ok = false;
    const qint64 days = value.trimmed().toLongLong(&ok);
    return ok && days > -1000000 && days < 1000000 ? days : 0;
}

qint64 localMidnight(const QDate& day)
{
    return QDateTime(day, QTime(0, 0)).toSecsSinceEpoch();
}

// Calls of whole local days [first, last]: the same calls as comparing STRFTIME texts, but the
// (profile, calldate) index finds them without formatting every call.
SqlFragment daysRange(const QDate& first, const QDate& last)
{
    return SqlFragment(QStringLiteral("( callinglist.calldate >= ? AND callinglist.calldate < ? )"),
                       {localMidnight(first), localMidnight(last.addDays(1))});
}

SqlFragment datePiece(int condition, const QString& value, qint64 now)
{
    const QDate today = QDateTime::fromSecsSinceEpoch(now).date();
    switch (condition) {
    case Today:
        return daysRange(today, today);
    case CurrentMonth:
        return SqlFragment(dateExpr("%m") + QStringLiteral(" = ") + nowExpr("%m"), {now});
    case CurrentYear:
        return daysRange(QDate(today.year(), 1, 1), QDate(today.year(), 12, 31));
    case DayOfMonth:
        return SqlFragment(dateExpr("%d") + QStringLiteral(" = ?"), {twoDigits(value)});
    case Month:
        return SqlFragment(dateExpr("%m") + QStringLiteral(" = ?"), {twoDigits(value)});
    case Year: {
        bool ok = false;
        const int year = value.trimmed().toInt(&ok);
        if (ok && year > 0 && year <= 9999)
            return daysRange(QDate(year, 1, 1), QDate(year, 12, 31));
        return SqlFragment(dateExpr("%Y") + QStringLiteral(" = ?"), {value.trimmed()});
    }
    case LastDays:
        // Compares the stored time with a text of seconds (local time read as UTC), as SQLite
        // compares an integer column with text.
        return SqlFragment(
            QStringLiteral("callinglist.calldate > STRFTIME('%s',?,'unixepoch','localtime',?)"),
            {now, dayModifier(dayCount(value))});
    case DaysAgo: {
        // Exactly the local day N days back.
        const QDate day = today.addDays(-dayCount(value));
        return daysRange(day, day);
    }
    default:
        return {};
    }
}

QString textField(int column)
{
    switch (column) {
    case ColumnName:
        return QStringLiteral("caller.name");
    case ColumnNumber:
        return QStringLiteral("callinglist.phonenumber");
    case ColumnExtension:
        return QStringLiteral("callinglist.extension");
    case ColumnLine:
        return QStringLiteral("callinglist.line");
    case ColumnDuration:
        return QStringLiteral("callinglist.duration");
    default:
        return {};
    }
}

SqlFragment textPiece(int column, int condition, const QString& value)
{
    const QString field = textField(column);
    switch (condition) {
    case Is:
        return SqlFragment(field + QStringLiteral(" = ?"), {value});
    case IsNot:
        return SqlFragment(field + QStringLiteral(" != ?"), {value});
    case Contains:
        return SqlFragment(field + u' ' + likeContainsPiece(), {likeEscaped(value)});
    case ContainsNot:
        return SqlFragment(field + QStringLiteral(" NOT ") + likeContainsPiece(), {likeEscaped(value)});
    default:
        return {};
    }
}

SqlFragment typePiece(int condition, qint64 newCallsMark)
{
    switch (condition) {
    case TypeIncoming:
        return SqlFragment(QStringLiteral("callinglist.callstate = 1"));
    case TypeOutgoing:
        return SqlFragment(QStringLiteral("callinglist.callstate = 3"));
    case TypeMissed:
        return SqlFragment(QStringLiteral("callinglist.callstate = 2"));
    case TypeNew:
        return SqlFragment(QStringLiteral("callinglist.calldate > ?"), {newCallsMark});
    default:
        return {};
    }
}

} // namespace

SqlFragment conditionPiece(const SmartCondition& c, const Context& context)
{
    switch (c.listcolumn) {
    case ColumnDate:
        return datePiece(c.condition, c.condvalue, context.now);
    case ColumnName:
    case ColumnNumber:
    case ColumnExtension:
    case ColumnLine:
    case ColumnDuration:
        return textPiece(c.listcolumn, c.condition, c.condvalue);
    case ColumnCallType:
        return typePiece(c.condition, context.newCallsMark);
    default:
        return {};
    }
}

SqlFragment conditionSearchString(const QList<SmartCondition>& conditions, const Context& context)
{
    const bool any = std::any_of(conditions.begin(), conditions.end(),
                                 [](const SmartCondition& c) { return c.listcolumn == ColumnMatchAny; });
    SqlFragment sql;
    for (const SmartCondition& c : conditions) {
        if (c.listcolumn == ColumnMatchAny)
            continue;
        const SqlFragment piece = conditionPiece(c, context);
        if (piece.isEmpty()) {
            qCWarning(lcCalllist) << "ignoring unknown smart list rule" << c.listcolumn << c.condition;
            continue;
        }
        sql.add(sql.isEmpty() ? QStringLiteral(" AND ( ")
                              : (any ? QStringLiteral(" OR ") : QStringLiteral(" AND ")));
        sql.add(piece);
    }
    if (!sql.isEmpty())
        sql.add(QStringLiteral(" ) "));
    return sql;
}

QString conditionKey(int listcolumn, int condition)
{
    static const char* const date[] = {"smart_today",     "smart_curr_month", "smart_curr_year",
                                       "smart_day",       "smart_month",      "smart_year",
                                       "smart_last_days", "smart_days_ago"};
    static const char* const text[] = {"smart_is", "smart_is_not", "smart_contains", "smart_contains_not"};
    static const char* const type[] = {"CallinPhoneList", "CalloutPhoneList", "CallinfailedPhoneList",
                                       "smart_new_call"};
    if (listcolumn == ColumnDate && condition >= 0 && condition < 8)
        return QString::fromLatin1(date[condition]);
    if (listcolumn >= ColumnName && listcolumn <= ColumnDuration && condition >= 0 && condition < 4)
        return QString::fromLatin1(text[condition]);
    if (listcolumn == ColumnCallType && condition >= 0 && condition < 4)
        return QString::fromLatin1(type[condition]);
    return {};
}

} // namespace Smart
