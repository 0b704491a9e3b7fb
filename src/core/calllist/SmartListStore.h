#pragma once

#include "calllist/SmartCondition.h"

#include <QList>
#include <QString>

#include <optional>

class CallDatabase;

struct SmartListInfo
{
    qint64 rowid = 0;
    QString name;
};

// Storage of smart lists and their rules. Side-table order is newest first; the list selector
// counts oldest first.
class SmartListStore
{
public:
    explicit SmartListStore(const CallDatabase& db) : m_db(db) {}

    // The new list's rowid, or 0 on failure.
    qint64 insertSmartListForProfile(int profile, const QString& name,
                                     const QList<SmartCondition>& conditions);
    bool updateSmartListForProfile(int profile, const QString& name, const QList<SmartCondition>& conditions,
                                   qint64 id);
    bool deleteSmartListForID(qint64 id);

    QList<qint64> getAllSmartListIDsForProfile(int profile) const; // rowid descending
    QStringList getAllSmartListNamesForProfile(int profile) const; // rowid descending
    QList<SmartListInfo> smartListsForProfile(int profile) const;  // rowid descending
    // The row-th list counted from the oldest.
    std::optional<SmartListInfo> getSmartListForProfile(int profile, int row) const;
    std::optional<SmartListInfo> smartListForID(qint64 id) const;
    QList<SmartCondition> getSmartConditionsForID(qint64 id) const; // rowid descending
    SqlFragment getConditionSearchStringForID(qint64 id, const Smart::Context& context) const;

private:
    const CallDatabase& m_db;
};
