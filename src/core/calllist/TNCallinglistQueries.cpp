// The call list queries of TNCallinglist: selectors, search, sort, day entries, recent calls.
#include "calllist/TNCallinglist.h"

#include "base/SettingsKeys.h"
#include "base/SettingsStore.h"
#include "base/TNPreferences.h"
#include "calllist/ListQueryBuilder.h"

namespace {
const QString kDefaultDateFormat = QStringLiteral("dd.MM.yyyy HH:mm");
} // namespace

std::pair<QString, bool> TNCallinglist::sortDescriptor() const
{
    const QVariantList stored = m_settings.value(keys::CallinglistSortOrdering).toList();
    if (stored.size() == 2 && ListQuery::sortExpression(stored[0].toString()))
        return {stored[0].toString(), stored[1].toInt() == 1};
    return {QStringLiteral("date"), false};
}

void TNCallinglist::setSortDescriptor(const QString& identifier, bool ascending)
{
    if (ListQuery::sortExpression(identifier))
        m_settings.setValue(keys::CallinglistSortOrdering, QVariantList{identifier, ascending ? 1 : 0});
}

QString TNCallinglist::dateFormatForProfile(int profile) const
{
    const QString stored = m_settings.value(keys::DateFormatString).toString();
    if (!stored.isEmpty())
        return stored;
    const auto prefs = prefsForProfile(profile);
    return prefs && !prefs->dateFormatString.isEmpty() ? prefs->dateFormatString : kDefaultDateFormat;
}

QList<CallRow> TNCallinglist::getCallerlistForProfile(int profile, int callState, const QString& searchString,
                                                      const QString& searchColumn, const QString& orderBy,
                                                      const QString& orderDirection, int limit)
{
    SqlFragment sql = ListQuery::joinedListQuery(profile);
    if (callState >= ListQuery::SelectorIncoming && callState <= ListQuery::SelectorOutgoing) {
        sql.add(QStringLiteral(" AND callinglist.callstate = ? "), {callState});
    } else if (callState == ListQuery::SelectorNew) {
        sql.add(QStringLiteral(" AND calldate > ?"), {newCallsMark(profile)});
    } else if (callState >= ListQuery::SelectorFirstSmartList) {
        if (const auto list =
                m_smart.getSmartListForProfile(profile, callState - ListQuery::SelectorFirstSmartList))
            sql.add(getConditionSearchStringForID(list->rowid));
    }
    sql.add(hiddenLineFilterForProfile(profile));
    sql.add(ListQuery::searchFragment(searchString, searchColumn,
                                      ListQuery::convertedSQLDateFormat(dateFormatForProfile(profile))));

    auto [storedColumn, storedAscending] = sortDescriptor();
    const QString column = orderBy.isEmpty() ? storedColumn : orderBy;
    const QString expr = ListQuery::sortExpression(column).value_or(QStringLiteral("callinglist.calldate"));
    const bool ascending = orderDirection.isEmpty()
                               ? (orderBy.isEmpty() && storedAscending)
                               : orderDirection.compare(u"ASC", Qt::CaseInsensitive) == 0;
    // The caller cache holds one row per number, so the join cannot repeat a call and no
    // grouping by rowid is needed; rowid breaks ties for a stable order.
    sql.add(QStringLiteral(" ORDER BY ") + expr + u' ' + ListQuery::sortDirection(ascending) +
            QStringLiteral(", callinglist.rowid ") + ListQuery::sortDirection(ascending));
    if (limit > 0)
        sql.add(QStringLiteral(" LIMIT ?"), {limit});

    const CallDatabase::Table table = m_db.selectTableLogged(sql, "getCallerlist");
    return CallRow::fromTable(table.columns, table.rows);
}

QList<CallListEntry> TNCallinglist::callListEntriesForProfile(int profile, int callState,
                                                              const QString& searchString,
                                                              const QString& searchColumn,
                                                              const QString& orderBy,
                                                              const QString& orderDirection, int limit)
{
    const QList<CallRow> rows = getCallerlistForProfile(profile, callState, searchString, searchColumn,
                                                        orderBy, orderDirection, limit);
    {
        QMutexLocker lock(&m_mutex);
        m_currentListCounter = int(rows.size());
    }
    return buildCallListEntries(rows, dateFormatForProfile(profile), dayHeaderFormat());
}

QVariantMap TNCallinglist::getLastRecentCallsForProfile(int profile, const QStringList& excludeCalls) const
{
    const SqlFragment hidden = hiddenLineFilterForProfile(profile);
    auto recent = [&](int state) {
        SqlFragment sql(
            QStringLiteral("SELECT callinglist.phonenumber AS phonenumber, COALESCE( caller.name,  '' ) AS "
                           "name, COALESCE( caller.abid,  '' ) AS abid, COALESCE( caller.label,  '' ) AS "
                           "label, MAX(callinglist.calldate) AS lastdate FROM callinglist LEFT JOIN caller "
                           "ON callinglist.phonenumber = caller.phonenumber WHERE callinglist.profile = ? "
                           "AND callinglist.callstate = ? AND callinglist.phonenumber != ''"),
            {profile, state});
        if (!excludeCalls.isEmpty()) {
            QStringList marks;
            for (const QString& number : excludeCalls) {
                marks.append(QStringLiteral("?"));
                sql.args.append(number);
            }
            sql.add(QStringLiteral(" AND callinglist.phonenumber NOT IN (") + marks.join(u',') +
                    QStringLiteral(") "));
        }
        sql.add(hidden);
        // The newest call of each number decides its place.
        sql.add(QStringLiteral(" GROUP BY callinglist.phonenumber ORDER BY lastdate DESC LIMIT 5"));
        QVariantList list;
        // "lastdate" (Unix time of the newest call) stays for the menu's time.
        for (const QVariantMap& r : m_db.selectLogged(sql, "getLastRecentCalls"))
            list.append(r);
        return list;
    };
    return {{QStringLiteral("in"), recent(1)}, {QStringLiteral("missed"), recent(2)}};
}
