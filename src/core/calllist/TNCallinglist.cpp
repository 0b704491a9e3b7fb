#include "calllist/TNCallinglist.h"

#include "base/Clock.h"
#include "base/Localization.h"
#include "base/Logging.h"
#include "base/NotificationCenter.h"
#include "base/NotificationNames.h"
#include "base/SettingsKeys.h"
#include "base/SettingsStore.h"
#include "base/TNPreferences.h"
#include "base/TNPreferencesManager.h"
#include "calllist/ListQueryBuilder.h"

#include <QPointer>
#include <QThreadPool>

#include <SQLiteCpp/SQLiteCpp.h>

TNCallinglist::TNCallinglist(const QString& dbPath, SettingsStore& settings, NotificationCenter& center,
                             Clock* clock, QObject* parent)
    : QObject(parent), m_db(dbPath), m_smart(m_db), m_memos(m_db), m_clock(clock), m_settings(settings),
      m_center(center)
{
    m_valid = m_db.initialize();
}

TNCallinglist::~TNCallinglist() = default;

QDateTime TNCallinglist::now() const
{
    return (m_clock ? *m_clock : Clock::system()).now();
}

std::shared_ptr<TNPreferences> TNCallinglist::prefsForProfile(int profile) const
{
    return m_manager ? m_manager->locationPreferencesForProfile(QString::number(profile)) : nullptr;
}

// --- ProfileDataStore ---

std::optional<int> TNCallinglist::maxProfileNumber()
{
    if (!m_db.fileExists())
        return std::nullopt;
    return getMaxProfileNumber();
}

int TNCallinglist::getMaxProfileNumber() const
{
    return m_db
        .scalarLogged(SqlFragment(QStringLiteral("SELECT MAX(profile) AS profile FROM callinglist")),
                      "getMaxProfileNumber")
        .toInt();
}

void TNCallinglist::deleteProfile(int profile)
{
    auto db = m_db.open();
    if (!db)
        return;
    try {
        SQLite::Transaction tx(*db);
        CallDatabase::exec(
            *db, SqlFragment(QStringLiteral("DELETE FROM callinglist WHERE profile = ?"), {profile}));
        CallDatabase::exec(
            *db, SqlFragment(QStringLiteral("DELETE FROM callinglist WHERE profile = -?"), {profile}));
        const auto lists = CallDatabase::select(
            *db, SqlFragment(QStringLiteral("SELECT rowid FROM smartlist WHERE profile = ?"), {profile}));
        for (const QVariantMap& row : lists)
            CallDatabase::exec(*db, SqlFragment(QStringLiteral("DELETE FROM smartconditions WHERE sid = ?"),
                                                {row.value(QStringLiteral("rowid"))}));
        CallDatabase::exec(*db,
                           SqlFragment(QStringLiteral("DELETE FROM smartlist WHERE profile = ?"), {profile}));
        tx.commit();
    } catch (const std::exception& e) {
        qCWarning(lcCalllist) << "deleteProfile" << e.what();
    }
}

void TNCallinglist::createDefaultSmartList(int profile)
{
    insertSmartListForProfile(profile, Localization::localized(QStringLiteral("smart_today")),
                              {{Smart::ColumnDate, Smart::Today, QString()}});
}

// --- new-calls mark ---

void TNCallinglist::setLastDateForNewCallsForProfile(int profile)
{
    const QVariant newest = m_db.scalarLogged(
        SqlFragment(QStringLiteral(
                        "SELECT calldate FROM callinglist WHERE profile = ? ORDER BY calldate DESC LIMIT 1"),
                    {profile}),
        "setLastDateForNewCalls");
    QMutexLocker lock(&m_mutex);
    m_lastSavedDateForNewCalls = newest.toLongLong();
}

void TNCallinglist::unsetlastSavedDateForNewCalls()
{
    QMutexLocker lock(&m_mutex);
    m_lastSavedDateForNewCalls = 0;
    m_currentListCounter = 0;
}

qint64 TNCallinglist::lastSavedDateForNewCalls() const
{
    QMutexLocker lock(&m_mutex);
    return m_lastSavedDateForNewCalls;
}

int TNCallinglist::currentListCounter() const
{
    QMutexLocker lock(&m_mutex);
    return m_currentListCounter;
}

qint64 TNCallinglist::newCallsMark(int profile)
{
    if (lastSavedDateForNewCalls() == 0)
        setLastDateForNewCallsForProfile(profile);
    return lastSavedDateForNewCalls();
}

// --- marker rows ---

std::optional<QDateTime> TNCallinglist::getMarkerDate(int profile, Marker marker) const
{
    const QVariant date = m_db.scalarLogged(
        SqlFragment(
            QStringLiteral("SELECT calldate FROM callinglist WHERE profile = -? AND callstate = ? ORDER BY "
                           "calldate DESC LIMIT 1"),
            {profile, int(marker)}),
        "getMarkerDate");
    if (!date.isValid())
        return std::nullopt;
    return QDateTime::fromSecsSinceEpoch(date.toLongLong());
}

bool TNCallinglist::updateMarkerDate(int profile, Marker marker, const QDateTime& when)
{
    auto db = m_db.open();
    if (!db)
        return false;
    try {
        SQLite::Transaction tx(*db);
        const qint64 t = when.toSecsSinceEpoch();
        const QVariant existing = CallDatabase::scalar(
            *db, SqlFragment(
                     QStringLiteral("SELECT calldate FROM callinglist WHERE profile = -? AND callstate = ? "
                                    "ORDER BY calldate DESC LIMIT 1"),
                     {profile, int(marker)}));
        if (existing.isValid())
            CallDatabase::exec(
                *db, SqlFragment(QStringLiteral("UPDATE callinglist SET calldate = ? WHERE profile = -? "
                                                "AND callstate = ?"),
                                 {t, profile, int(marker)}));
        else
            CallDatabase::exec(
                *db, SqlFragment(QStringLiteral("INSERT INTO callinglist (profile, callstate, calldate, "
                                                "phonenumber, extension, line, duration) VALUES (-?, ?, "
                                                "?, '', '', '', '')"),
                                 {profile, int(marker), t}));
        tx.commit();
        return true;
    } catch (const std::exception& e) {
        qCWarning(lcCalllist) << "theException:" << e.what();
        return false;
    }
}

std::optional<QDateTime> TNCallinglist::getLastDateForVoicemailForProfile(int profile) const
{
    return getMarkerDate(profile, MarkerVoicemail);
}

bool TNCallinglist::updateLastDateForVoicemailForProfile(int profile)
{
    return updateMarkerDate(profile, MarkerVoicemail, now());
}

std::optional<QDateTime> TNCallinglist::getLastDateForFaxForProfile(int profile) const
{
    return getMarkerDate(profile, MarkerFax);
}

bool TNCallinglist::updateLastDateForFaxForProfile(int profile)
{
    return updateMarkerDate(profile, MarkerFax, now());
}

// --- counters ---

QStringList TNCallinglist::getLinesForProfile(int profile) const
{
    QStringList lines;
    const auto rows = m_db.selectLogged(
        SqlFragment(
            QStringLiteral("SELECT line FROM callinglist WHERE callinglist.profile = ? GROUP BY line"),
            {profile}),
        "getLinesForProfile");
    for (const QVariantMap& r : rows)
        lines.append(r.value(QStringLiteral("line")).toString());
    return lines;
}

SqlFragment TNCallinglist::hiddenLineFilterForProfile(int profile) const
{
    const auto prefs = prefsForProfile(profile);
    return prefs ? ListQuery::hiddenLineFilter(prefs->lines) : SqlFragment();
}

qint64 TNCallinglist::getNewCallsCounterFromListForProfile(int profile)
{
    SqlFragment sql(
        QStringLiteral("SELECT count(rowid) as cnt FROM callinglist WHERE callinglist.profile = ?"),
        {profile});
    sql.add(QStringLiteral(" AND calldate > ?"), {newCallsMark(profile)});
    sql.add(hiddenLineFilterForProfile(profile));
    return m_db.scalarLogged(sql, "getNewCallsCounter").toLongLong();
}

void TNCallinglist::refreshCallsCounterForProfile(int profile)
{
    SqlFragment sql(
        QStringLiteral("SELECT count(rowid) as cnt, callstate FROM callinglist WHERE profile = ?"),
        {profile});
    sql.add(hiddenLineFilterForProfile(profile)).add(QStringLiteral(" GROUP BY callstate"));
    QList<qint64> counter{0, 0, 0};
    qint64 total = 0;
    for (const QVariantMap& r : m_db.selectLogged(sql, "refreshCallsCounter")) {
        const int state = r.value(QStringLiteral("callstate")).toInt();
        const qint64 cnt = r.value(QStringLiteral("cnt")).toLongLong();
        if (state >= 1 && state <= 3)
            counter[state - 1] = cnt;
        total += cnt;
    }
    counter << total << 0 << getNewCallsCounterFromListForProfile(profile) << 0 << 0;
    counter.swapItemsAt(1, 2);
    for (qint64 id : m_smart.getAllSmartListIDsForProfile(profile))
        counter.append(getSmartCallsCounterFromListForProfile(profile, id));
    QMutexLocker lock(&m_mutex);
    m_callsCounter = counter;
}

void TNCallinglist::refreshCallsCounter()
{
    const auto current = m_manager ? m_manager->currentPreferences() : nullptr;
    if (!current)
        return;
    const int profile = current->activeProfileInt;
    QPointer<TNCallinglist> self(this);
    QThreadPool::globalInstance()->start([self, profile] {
        if (!self)
            return;
        self->refreshCallsCounterForProfile(profile);
        self->m_center.post(Notifications::UPDATESIDETABLE, self.data());
    });
}

QList<qint64> TNCallinglist::callsCounter() const
{
    QMutexLocker lock(&m_mutex);
    return m_callsCounter;
}

// --- caller cache ---

QStringList TNCallinglist::searchCallerNameForPhoneNumber(const QString& number) const
{
    const auto rows = m_db.selectLogged(
        SqlFragment(QStringLiteral("SELECT name, abid, label FROM caller WHERE phonenumber = ? LIMIT 1"),
                    {number}),
        "searchCallerName");
    if (rows.isEmpty())
        return {};
    const QVariantMap& r = rows.first();
    return {r.value(QStringLiteral("abid")).toString(), r.value(QStringLiteral("name")).toString(),
            r.value(QStringLiteral("label")).toString()};
}

bool TNCallinglist::insertCallerWithName(const QString& name, const QString& number, const QString& abid,
                                         const QString& label)
{
    CallBatch batch(m_db);
    return batch.insertCaller(name, number, abid, label) && batch.commit();
}

void TNCallinglist::resetCallerNamesForNumber(const QString& number)
{
    m_db.execLogged({SqlFragment(QStringLiteral("DELETE FROM caller WHERE phonenumber = ?"), {number})},
                    "resetCallerNames");
    m_center.post(Notifications::RELOADCALLINGLIST, this);
}

std::optional<qint64> TNCallinglist::newestCallDateForProfile(int profile) const
{
    const QVariant newest = m_db.scalarLogged(
        SqlFragment(QStringLiteral(
                        "SELECT calldate FROM callinglist WHERE profile = ? ORDER BY calldate DESC LIMIT 1"),
                    {profile}),
        "newestCallDate");
    if (!newest.isValid())
        return std::nullopt;
    return newest.toLongLong();
}

bool TNCallinglist::deleteCallsOlderThanDays(int profile, int days)
{
    if (days < 1)
        return false;
    const qint64 limit = now().toSecsSinceEpoch() - qint64(days) * 86400;
    return m_db.execLogged(
        {SqlFragment(QStringLiteral("DELETE FROM callinglist WHERE profile = ? AND calldate < ?"),
                     {profile, limit})},
        "deleteCallsOlderThanDays");
}

qint64 TNCallinglist::insertCall(const NewCall& call)
{
    CallBatch batch(m_db);
    const qint64 rowid = batch.insertCall(call);
    return rowid && batch.commit() ? rowid : 0;
}

// --- deletions ---

bool TNCallinglist::deleteItemFromCallingListwithID(qint64 rowid)
{
    return m_db.execLogged({SqlFragment(QStringLiteral("DELETE FROM callinglist WHERE rowid = ?"), {rowid})},
                           "deleteItemFromCallingList");
}

int TNCallinglist::deleteCallsForProfile(int profile, const QList<qint64>& rowids)
{
    if (profile <= 0 || rowids.isEmpty())
        return 0;
    // Chunks keep each statement well below SQLite's limit of bound values.
    constexpr qsizetype Chunk = 500;
    int deleted = 0;
    auto db = m_db.open();
    if (!db)
        return -1;
    try {
        SQLite::Transaction tx(*db);
        for (qsizetype from = 0; from < rowids.size(); from += Chunk) {
            const QList<qint64> part = rowids.mid(from, Chunk);
            SqlFragment sql(QStringLiteral("DELETE FROM callinglist WHERE profile = ? AND rowid IN ("),
                            {profile});
            QStringList marks;
            for (qint64 rowid : part) {
                marks.append(QStringLiteral("?"));
                sql.args.append(rowid);
            }
            sql.add(marks.join(u',') + u')');
            deleted += CallDatabase::exec(*db, sql);
        }
        tx.commit();
    } catch (const std::exception& e) {
        qCWarning(lcCalllist) << "deleteCallsForProfile" << e.what();
        return -1;
    }
    refreshCallsCounterForProfile(profile);
    m_center.post(Notifications::REFRESHLATESTCALLSMENU, this);
    return deleted;
}

QList<qint64> TNCallinglist::callsOfProfile(int profile, const QList<qint64>& rowids) const
{
    QList<qint64> found;
    if (profile <= 0)
        return found;
    for (qint64 rowid : rowids) {
        const auto rows = m_db.selectLogged(
            SqlFragment(QStringLiteral("SELECT rowid FROM callinglist WHERE rowid = ? AND profile = ?"),
                        {rowid, profile}),
            "callsOfProfile");
        if (!rows.isEmpty())
            found.append(rowid);
    }
    return found;
}

bool TNCallinglist::deleteItemFromCallingListwithColumn(const QString& column, const QVariant& value)
{
    static const QStringList columns = {QStringLiteral("profile"),   QStringLiteral("callstate"),
                                        QStringLiteral("calldate"),  QStringLiteral("phonenumber"),
                                        QStringLiteral("extension"), QStringLiteral("line"),
                                        QStringLiteral("duration")};
    if (!columns.contains(column))
        return false;
    return m_db.execLogged(
        {SqlFragment(QStringLiteral("DELETE FROM callinglist WHERE ") + column + QStringLiteral(" = ?"),
                     {value})},
        "deleteItemFromCallingList");
}

bool TNCallinglist::deleteItemFromCallerwithID(qint64 rowid)
{
    return m_db.execLogged({SqlFragment(QStringLiteral("DELETE FROM caller WHERE rowid = ?"), {rowid})},
                           "deleteItemFromCaller");
}

bool TNCallinglist::deleteItemFromCallerwithColumn(const QString& column, const QVariant& value)
{
    static const QStringList columns = {QStringLiteral("phonenumber"), QStringLiteral("name"),
                                        QStringLiteral("abid"), QStringLiteral("label")};
    if (!columns.contains(column))
        return false;
    return m_db.execLogged(
        {SqlFragment(QStringLiteral("DELETE FROM caller WHERE ") + column + QStringLiteral(" = ?"), {value})},
        "deleteItemFromCaller");
}

void TNCallinglist::deleteCallinglistForProfile(int profile, int activeProfile)
{
    m_db.execLogged({SqlFragment(QStringLiteral("DELETE FROM callinglist WHERE profile = ?"), {profile})},
                    "deleteCallinglistForProfile");
    refreshCallsCounterForProfile(activeProfile);
    m_center.post(Notifications::RELOADCOUNTER, this);
    m_center.post(Notifications::GETNEWCALLERLIST, this);
}

// --- statistics ---

qint64 TNCallinglist::getCallCounterStatisticForProfile(int profile, int month, int year, int callstate) const
{
    return CallStatistics::callCount(m_db, profile, month, year, callstate,
                                     hiddenLineFilterForProfile(profile));
}

CallStatistics::TimeSum TNCallinglist::getTimeCounterStatisticForProfile(int profile, int month, int year,
                                                                         int callstate) const
{
    return CallStatistics::talkTime(m_db, profile, month, year, callstate,
                                    hiddenLineFilterForProfile(profile));
}

QStringList TNCallinglist::getYearsStatisticForProfile(int profile) const
{
    return CallStatistics::years(m_db, profile);
}

// --- smart lists ---

Smart::Context TNCallinglist::smartContext(int profile)
{
    return {now().toSecsSinceEpoch(), newCallsMark(profile)};
}

qint64 TNCallinglist::insertSmartListForProfile(int profile, const QString& name,
                                                const QList<SmartCondition>& conditions)
{
    return m_smart.insertSmartListForProfile(profile, name, conditions);
}

bool TNCallinglist::updateSmartListForProfile(int profile, const QString& name,
                                              const QList<SmartCondition>& conditions, qint64 id)
{
    return m_smart.updateSmartListForProfile(profile, name, conditions, id);
}

bool TNCallinglist::deleteSmartListForID(qint64 id)
{
    return m_smart.deleteSmartListForID(id);
}

SqlFragment TNCallinglist::getConditionSearchStringForID(qint64 id)
{
    const auto list = m_smart.smartListForID(id);
    if (!list)
        return {};
    const QVariant profile =
        m_db.scalarLogged(SqlFragment(QStringLiteral("SELECT profile FROM smartlist WHERE rowid = ?"), {id}),
                          "smartListProfile");
    return m_smart.getConditionSearchStringForID(id, smartContext(profile.toInt()));
}

qint64 TNCallinglist::getSmartCallsCounterFromListForProfile(int profile, qint64 conditionID)
{
    return smartCallsCounterForConditions(profile, m_smart.getSmartConditionsForID(conditionID));
}

qint64 TNCallinglist::smartCallsCounterForConditions(int profile, const QList<SmartCondition>& conditions)
{
    SqlFragment sql(
        QStringLiteral("SELECT count(callinglist.rowid) as cnt FROM callinglist LEFT JOIN caller ON "
                       "callinglist.phonenumber = caller.phonenumber WHERE callinglist.profile = ?"),
        {profile});
    sql.add(Smart::conditionSearchString(conditions, smartContext(profile)));
    sql.add(hiddenLineFilterForProfile(profile));
    return m_db.scalarLogged(sql, "getSmartCallsCounter").toLongLong();
}

void TNCallinglist::setCallCounterForProfile(int profile, qint64 id)
{
    const QList<qint64> ids = m_smart.getAllSmartListIDsForProfile(profile);
    const qsizetype index = ids.indexOf(id);
    if (index < 0)
        return;
    const qint64 count = getSmartCallsCounterFromListForProfile(profile, id);
    QMutexLocker lock(&m_mutex);
    const qsizetype position = CounterFirstSmartList + index;
    if (position < m_callsCounter.size())
        m_callsCounter[position] = count;
}

// --- memos ---

qint64 TNCallinglist::setMemoForProfile(int profile, const QString& number, qint64 calldate,
                                        const QString& subject, const QString& body)
{
    const qint64 id = m_memos.setMemoForProfile(profile, number, calldate, subject, body);
    if (id)
        m_center.post(Notifications::RELOADMEMOS);
    return id;
}

bool TNCallinglist::updateMemoWithID(qint64 id, const QString& subject, const QString& body)
{
    const bool ok = m_memos.updateMemoWithID(id, subject, body);
    if (ok)
        m_center.post(Notifications::RELOADMEMOS);
    return ok;
}

QList<Memo> TNCallinglist::searchMemosForProfile(int profile, const QString& text,
                                                 const QString& column) const
{
    return m_memos.searchMemosForProfile(profile, text, column,
                                         ListQuery::convertedSQLDateFormat(dateFormatForProfile(profile)));
}

// --- imports in progress ---

bool TNCallinglist::beginUpdatingProfile(int profile)
{
    QMutexLocker lock(&m_mutex);
    if (m_updatingProfiles.contains(profile)) {
        qCInfo(lcCalllist) << "updateInProgress for" << profile;
        return false;
    }
    m_updatingProfiles.append(profile);
    return true;
}

void TNCallinglist::endUpdatingProfile(int profile)
{
    QMutexLocker lock(&m_mutex);
    m_updatingProfiles.removeAll(profile);
}

QList<int> TNCallinglist::updatingProfiles() const
{
    QMutexLocker lock(&m_mutex);
    return m_updatingProfiles;
}

QString TNCallinglist::csvList() const
{
    QMutexLocker lock(&m_mutex);
    return m_csvList;
}

void TNCallinglist::setCsvList(const QString& text)
{
    QMutexLocker lock(&m_mutex);
    m_csvList = text;
}
