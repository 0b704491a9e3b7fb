#pragma once

#include "base/ProfileDataStore.h"
#include "calllist/CallBatch.h"
#include "calllist/CallDatabase.h"
#include "calllist/CallRow.h"
#include "calllist/CallStatistics.h"
#include "calllist/MemoStore.h"
#include "calllist/SmartListStore.h"

#include <QDateTime>
#include <QList>
#include <QMutex>
#include <QObject>
#include <QStringList>
#include <QVariantMap>

#include <optional>

class Clock;
class NotificationCenter;
class SettingsStore;
class TNPreferences;
class TNPreferencesManager;

// The call database "Tondrel.db": the calls of every profile, the caller-name cache, memos and
// smart lists, with the counters of the active profile. Every operation opens its own
// connection; the in-memory state is guarded by a mutex, so any thread may call.
class TNCallinglist : public QObject, public ProfileDataStore
{
    Q_OBJECT
public:
    // Positions in callsCounter().
    enum CounterPosition {
        CounterIncoming = 0,
        CounterOutgoing = 1,
        CounterMissed = 2,
        CounterAll = 3,
        CounterCurrent = 4,
        CounterNew = 5,
        CounterVoicemail = 6,
        CounterFax = 7,
        CounterFirstSmartList = 8,
    };
    // callstate of marker rows (profile = -p).
    enum Marker { MarkerImport = 0, MarkerVoicemail = 1, MarkerFax = 2 };

    // Creates or migrates the file; isValid() is false when it cannot be opened. The settings
    // hold the list's sort and date format; changes are posted to the centre.
    TNCallinglist(const QString& dbPath, SettingsStore& settings, NotificationCenter& center,
                  Clock* clock = nullptr, QObject* parent = nullptr);
    ~TNCallinglist() override;

    bool isValid() const { return m_valid; }
    QString dbPath() const { return m_db.path(); }
    const CallDatabase& database() const { return m_db; }

    NotificationCenter& notificationCenter() const { return m_center; }

    // Where the hidden lines and the location's date format come from; null: none hidden. Set
    // after construction, as the manager itself is built on the database.
    void setPreferencesManager(TNPreferencesManager* manager) { m_manager = manager; }
    std::shared_ptr<TNPreferences> prefsForProfile(int profile) const;

    // ProfileDataStore
    std::optional<int> maxProfileNumber() override;
    void deleteProfile(int profile) override;
    void createDefaultSmartList(int profile) override;

    // New-calls mark.
    void setLastDateForNewCallsForProfile(int profile);
    void unsetlastSavedDateForNewCalls();
    qint64 lastSavedDateForNewCalls() const;
    int currentListCounter() const;

    // Marker dates.
    std::optional<QDateTime> getMarkerDate(int profile, Marker marker) const;
    bool updateMarkerDate(int profile, Marker marker, const QDateTime& when);
    std::optional<QDateTime> getLastDateForVoicemailForProfile(int profile) const;
    bool updateLastDateForVoicemailForProfile(int profile);
    std::optional<QDateTime> getLastDateForFaxForProfile(int profile) const;
    bool updateLastDateForFaxForProfile(int profile);

    // Counters.
    void refreshCallsCounterForProfile(int profile);
    QList<qint64> callsCounter() const;
    // Recomputes the counters of the current location on a pool thread, then posts
    // "UPDATESIDETABLE".
    void refreshCallsCounter();
    qint64 getNewCallsCounterFromListForProfile(int profile);
    QStringList getLinesForProfile(int profile) const;
    SqlFragment hiddenLineFilterForProfile(int profile) const;

    // The list (selector: see ListQuery). Empty orderBy uses the stored sort.
    QList<CallRow> getCallerlistForProfile(int profile, int callState, const QString& searchString,
                                           const QString& searchColumn, const QString& orderBy,
                                           const QString& orderDirection, int limit);
    // The same as table entries with day headers; sets currentListCounter.
    QList<CallListEntry> callListEntriesForProfile(int profile, int callState, const QString& searchString,
                                                   const QString& searchColumn, const QString& orderBy,
                                                   const QString& orderDirection, int limit);
    // The stored sort of the list: (column identifier, ascending); ("date", false) by default.
    std::pair<QString, bool> sortDescriptor() const;
    void setSortDescriptor(const QString& identifier, bool ascending);
    // The user's list date pattern and its strftime form.
    QString dateFormatForProfile(int profile) const;

    // Recent numbers for the menu: {"in": [...], "missed": [...]}, at most five distinct each,
    // each entry {"phonenumber","name","abid","label","lastdate" (Unix time of the newest call)}.
    QVariantMap getLastRecentCallsForProfile(int profile, const QStringList& excludeCalls) const;

    // Caller cache: [abid, name, label] or empty.
    QStringList searchCallerNameForPhoneNumber(const QString& number) const;
    bool insertCallerWithName(const QString& name, const QString& number, const QString& abid,
                              const QString& label);
    void resetCallerNamesForNumber(const QString& number);

    // For the journal import: the newest stored call of a profile, and the age limit (calls
    // older than the given days go; marker rows stay).
    std::optional<qint64> newestCallDateForProfile(int profile) const;
    bool deleteCallsOlderThanDays(int profile, int days);

    // Inserts (the journal import and tests); a batch shares one transaction.
    qint64 insertCall(const NewCall& call);
    CallBatch beginBatch() const { return CallBatch(m_db); }

    // Deletions.
    bool deleteItemFromCallingListwithID(qint64 rowid);
    // Deletes the listed calls of one profile in one transaction (rowids of other profiles and
    // marker rows stay), refreshes the counters and posts "REFRESHLATESTCALLSMENU". The number
    // of calls deleted, -1 when the database refused.
    int deleteCallsForProfile(int profile, const QList<qint64>& rowids);
    // The rowids of the list that are calls of the profile (not marker rows, not other profiles).
    QList<qint64> callsOfProfile(int profile, const QList<qint64>& rowids) const;
    // column: one of the callinglist columns; others are refused.
    bool deleteItemFromCallingListwithColumn(const QString& column, const QVariant& value);
    bool deleteItemFromCallerwithID(qint64 rowid);
    bool deleteItemFromCallerwithColumn(const QString& column, const QVariant& value);
    void deleteCallinglistForProfile(int profile, int activeProfile);
    int getMaxProfileNumber() const;

    // Statistics (month, year 0 = any; callstate 0 = all).
    qint64 getCallCounterStatisticForProfile(int profile, int month, int year, int callstate) const;
    CallStatistics::TimeSum getTimeCounterStatisticForProfile(int profile, int month, int year,
                                                              int callstate) const;
    QStringList getYearsStatisticForProfile(int profile) const;

    // Smart lists.
    SmartListStore& smartLists() { return m_smart; }
    qint64 insertSmartListForProfile(int profile, const QString& name,
                                     const QList<SmartCondition>& conditions);
    bool updateSmartListForProfile(int profile, const QString& name, const QList<SmartCondition>& conditions,
                                   qint64 id);
    bool deleteSmartListForID(qint64 id);
    SqlFragment getConditionSearchStringForID(qint64 id);
    qint64 getSmartCallsCounterFromListForProfile(int profile, qint64 conditionID);
    // The same count for rules not stored yet (the rule editor's preview).
    qint64 smartCallsCounterForConditions(int profile, const QList<SmartCondition>& conditions);
    void setCallCounterForProfile(int profile, qint64 id);

    // Memos; saving and updating post "RELOADMEMOS".
    MemoStore& memos() { return m_memos; }
    qint64 setMemoForProfile(int profile, const QString& number, qint64 calldate, const QString& subject,
                             const QString& body);
    bool updateMemoWithID(qint64 id, const QString& subject, const QString& body);
    QList<Memo> searchMemosForProfile(int profile, const QString& text, const QString& column) const;

    // Imports in progress; false when the profile is already being imported.
    bool beginUpdatingProfile(int profile);
    void endUpdatingProfile(int profile);
    QList<int> updatingProfiles() const;

    // The last downloaded journal text.
    QString csvList() const;
    void setCsvList(const QString& text);

private:
    QDateTime now() const;
    Smart::Context smartContext(int profile);
    qint64 newCallsMark(int profile);

    CallDatabase m_db;
    SmartListStore m_smart;
    MemoStore m_memos;
    Clock* m_clock;
    TNPreferencesManager* m_manager = nullptr;
    SettingsStore& m_settings;
    NotificationCenter& m_center;
    bool m_valid = false;

    mutable QMutex m_mutex;
    QList<qint64> m_callsCounter;
    qint64 m_lastSavedDateForNewCalls = 0;
    int m_currentListCounter = 0;
    QList<int> m_updatingProfiles;
    QString m_csvList;
};
