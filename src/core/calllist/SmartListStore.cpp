#include "calllist/SmartListStore.h"

#include "base/Logging.h"
#include "calllist/CallDatabase.h"

#include <SQLiteCpp/SQLiteCpp.h>

namespace {

void insertConditions(SQLite::Database& db, qint64 sid, const QList<SmartCondition>& conditions)
{
    for (const SmartCondition& c : conditions)
        CallDatabase::exec(
            db, SqlFragment(QStringLiteral("INSERT INTO smartconditions (sid, listcolumn, condition, "
                                           "condvalue) VALUES (?, ?, ?, ?)"),
                            {sid, c.listcolumn, c.condition, c.condvalue}));
}

SmartListInfo infoFromRecord(const QVariantMap& r)
{
    return {r.value(QStringLiteral("rowid")).toLongLong(), r.value(QStringLiteral("name")).toString()};
}

} // namespace

qint64 SmartListStore::insertSmartListForProfile(int profile, const QString& name,
                                                 const QList<SmartCondition>& conditions)
{
    auto db = m_db.open();
    if (!db)
        return 0;
    try {
        SQLite::Transaction tx(*db);
        CallDatabase::exec(*db,
                           SqlFragment(QStringLiteral("INSERT INTO smartlist (profile, name) VALUES (?, ?)"),
                                       {profile, name}));
        const qint64 sid = CallDatabase::lastInsertRowid(*db);
        insertConditions(*db, sid, conditions);
        tx.commit();
        return sid;
    } catch (const std::exception& e) {
        qCWarning(lcCalllist) << "insertSmartList" << e.what();
        return 0;
    }
}

bool SmartListStore::updateSmartListForProfile(int profile, const QString& name,
                                               const QList<SmartCondition>& conditions, qint64 id)
{
    auto db = m_db.open();
    if (!db)
        return false;
    try {
        SQLite::Transaction tx(*db);
        // The profile guards against renaming another location's list.
        const int changed = CallDatabase::exec(
            *db, SqlFragment(QStringLiteral("UPDATE smartlist SET name = ? WHERE rowid = ? AND profile = ?"),
                             {name, id, profile}));
        if (changed == 0)
            return false;
        CallDatabase::exec(*db,
                           SqlFragment(QStringLiteral("DELETE FROM smartconditions WHERE sid = ?"), {id}));
        insertConditions(*db, id, conditions);
        tx.commit();
        return true;
    } catch (const std::exception& e) {
        qCWarning(lcCalllist) << "updateSmartList" << e.what();
        return false;
    }
}

bool SmartListStore::deleteSmartListForID(qint64 id)
{
    if (!smartListForID(id))
        return false;
    return m_db.execLogged({SqlFragment(QStringLiteral("DELETE FROM smartconditions WHERE sid = ?"), {id}),
                            SqlFragment(QStringLiteral("DELETE FROM smartlist WHERE rowid = ?"), {id})},
                           "deleteSmartList");
}

QList<qint64> SmartListStore::getAllSmartListIDsForProfile(int profile) const
{
    QList<qint64> ids;
    for (const SmartListInfo& info : smartListsForProfile(profile))
        ids.append(info.rowid);
    return ids;
}

QStringList SmartListStore::getAllSmartListNamesForProfile(int profile) const
{
    QStringList names;
    for (const SmartListInfo& info : smartListsForProfile(profile))
        names.append(info.name);
    return names;
}

QList<SmartListInfo> SmartListStore::smartListsForProfile(int profile) const
{
    QList<SmartListInfo> lists;
    const auto rows = m_db.selectLogged(
        SqlFragment(QStringLiteral("SELECT rowid, name FROM smartlist WHERE profile = ? ORDER BY rowid DESC"),
                    {profile}),
        "getAllSmartLists");
    for (const QVariantMap& r : rows)
        lists.append(infoFromRecord(r));
    return lists;
}

std::optional<SmartListInfo> SmartListStore::getSmartListForProfile(int profile, int row) const
{
    if (row < 0)
        return std::nullopt;
    const auto rows = m_db.selectLogged(
        SqlFragment(
            QStringLiteral("SELECT rowid,* FROM smartlist WHERE profile = ? ORDER BY rowid ASC LIMIT ?, 1"),
            {profile, row}),
        "getSmartListForProfile");
    if (rows.isEmpty())
        return std::nullopt;
    return infoFromRecord(rows.first());
}

std::optional<SmartListInfo> SmartListStore::smartListForID(qint64 id) const
{
    const auto rows = m_db.selectLogged(
        SqlFragment(QStringLiteral("SELECT rowid, name FROM smartlist WHERE rowid = ?"), {id}),
        "smartListForID");
    if (rows.isEmpty())
        return std::nullopt;
    return infoFromRecord(rows.first());
}

QList<SmartCondition> SmartListStore::getSmartConditionsForID(qint64 id) const
{
    QList<SmartCondition> conditions;
    const auto rows = m_db.selectLogged(
        SqlFragment(QStringLiteral("SELECT * FROM smartconditions WHERE sid = ? ORDER BY rowid DESC"), {id}),
        "getSmartConditionsForID");
    for (const QVariantMap& r : rows)
        conditions.append({r.value(QStringLiteral("listcolumn")).toInt(),
                           r.value(QStringLiteral("condition")).toInt(),
                           r.value(QStringLiteral("condvalue")).toString()});
    return conditions;
}

SqlFragment SmartListStore::getConditionSearchStringForID(qint64 id, const Smart::Context& context) const
{
    return Smart::conditionSearchString(getSmartConditionsForID(id), context);
}
