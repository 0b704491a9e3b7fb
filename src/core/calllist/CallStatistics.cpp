#include "calllist/CallStatistics.h"

#include "calllist/CallDatabase.h"

#include <QDateTime>

namespace CallStatistics {

namespace {

qint64 localStart(int year, int month)
{
    return QDateTime(QDate(year, month, 1), QTime(0, 0)).toSecsSinceEpoch();
}

} // namespace

SqlFragment periodFilter(int month, int year, int callstate)
{
    SqlFragment sql;
    if (year > 0 && month >= 1 && month <= 12) {
        const int nextYear = month == 12 ? year + 1 : year;
        const int nextMonth = month == 12 ? 1 : month + 1;
        sql.add(QStringLiteral(" AND calldate >= ? AND calldate < ? "),
                {localStart(year, month), localStart(nextYear, nextMonth)});
    } else if (year > 0) {
        sql.add(QStringLiteral(" AND calldate >= ? AND calldate < ? "),
                {localStart(year, 1), localStart(year + 1, 1)});
    } else if (month >= 1 && month <= 12) {
        sql.add(QStringLiteral(" AND STRFTIME('%m',calldate,'unixepoch','localtime') = ? "),
                {QStringLiteral("%1").arg(month, 2, 10, QLatin1Char('0'))});
    }
    if (callstate > 0)
        sql.add(QStringLiteral(" AND callstate = ? "), {callstate});
    return sql;
}

qint64 callCount(const CallDatabase& db, int profile, int month, int year, int callstate,
                 const SqlFragment& hiddenLines)
{
    SqlFragment sql(QStringLiteral("SELECT count(*) as callcnt FROM callinglist WHERE profile = ?"),
                    {profile});
    sql.add(periodFilter(month, year, callstate)).add(hiddenLines);
    return db.scalarLogged(sql, "getCallCounterStatistic").toLongLong();
}

TimeSum talkTime(const CallDatabase& db, int profile, int month, int year, int callstate,
                 const SqlFragment& hiddenLines)
{
    SqlFragment sql(
        QStringLiteral("SELECT SUM( CAST(substr(duration, 1, instr(duration, ':') - 1) AS INTEGER) * 60 + "
                       "CAST(substr(duration, instr(duration, ':') + 1) AS INTEGER) ) AS minutes "
                       "FROM callinglist WHERE profile = ?"),
        {profile});
    sql.add(periodFilter(month, year, callstate)).add(hiddenLines);
    return {db.scalarLogged(sql, "getTimeCounterStatistic").toLongLong()};
}

QStringList years(const CallDatabase& db, int profile)
{
    QStringList list;
    const auto rows = db.selectLogged(
        SqlFragment(
            QStringLiteral("SELECT STRFTIME('%Y',calldate,'unixepoch','localtime') as year FROM callinglist "
                           "WHERE profile = ? GROUP BY year ORDER BY year DESC"),
            {profile}),
        "getYearsStatistic");
    for (const QVariantMap& r : rows)
        list.append(r.value(QStringLiteral("year")).toString());
    return list;
}

} // namespace CallStatistics
