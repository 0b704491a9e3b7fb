#include "app/CallListSync.h"

#include "base/Logging.h"
#include "base/TNPreferences.h"
#include "base/TNPreferencesManager.h"
#include "calllist/JournalBadge.h"
#include "calllist/JournalImporter.h"
#include "calllist/TNCallinglist.h"

#include <QFileInfo>

CallListSync::CallListSync(TNCallinglist& calls, TNPreferencesManager& manager, SettingsStore& settings,
                           BookSource book, Clock* clock, QObject* parent)
    : QObject(parent), m_calls(calls), m_manager(manager), m_settings(settings), m_book(std::move(book)),
      m_clock(clock)
{
    qRegisterMetaType<CallListSyncResult>();
    m_worker.setMaxThreadCount(1);
}

CallListSync::~CallListSync()
{
    m_worker.waitForDone();
}

void CallListSync::setDownload(Download download)
{
    QMutexLocker lock(&m_mutex);
    m_download = std::move(download);
}

void CallListSync::importFromRouter()
{
    importFromRouter(m_manager.currentPreferences());
}

void CallListSync::importFromRouter(std::shared_ptr<TNPreferences> prefs)
{
    if (!prefs || prefs->isDummy())
        return;
    {
        QMutexLocker lock(&m_mutex);
        if (m_waitingDownloads.contains(prefs->uid))
            return;
        m_waitingDownloads << prefs->uid;
    }
    enqueue({QString(), std::move(prefs)});
}

void CallListSync::importFile(const QString& path, std::shared_ptr<TNPreferences> prefs)
{
    if (!prefs)
        prefs = m_manager.currentPreferences();
    if (!prefs || prefs->isDummy())
        return;
    enqueue({path, prefs});
}

void CallListSync::loadCSVListDatainBackground(const QString& path)
{
    if (path.isEmpty())
        importFromRouter();
    else
        importFile(path);
}

int CallListSync::loadCSVListData(const QString& path)
{
    const auto prefs = m_manager.currentPreferences();
    if (!prefs || prefs->isDummy())
        return 0;
    return run({path, prefs}).imported;
}

void CallListSync::enqueue(Request request)
{
    {
        QMutexLocker lock(&m_mutex);
        ++m_pending;
    }
    m_worker.start([this, request = std::move(request)] {
        if (request.path.isEmpty()) {
            QMutexLocker lock(&m_mutex);
            m_waitingDownloads.removeOne(request.prefs->uid);
        }
        const CallListSyncResult result = run(request);
        {
            QMutexLocker lock(&m_mutex);
            --m_pending;
        }
        emit finished(result);
    });
}

CallListSyncResult CallListSync::runRouterImport(const std::shared_ptr<TNPreferences>& prefs)
{
    return run({QString(), prefs});
}

CallListSyncResult CallListSync::runFileImport(const QString& path,
                                               const std::shared_ptr<TNPreferences>& prefs)
{
    return run({path, prefs});
}

CallListSyncResult CallListSync::run(const Request& request)
{
    QMutexLocker running(&m_runLock);
    CallListSyncResult result;
    result.download = request.path.isEmpty();
    if (!request.prefs || request.prefs->isDummy()) {
        result.imported = -1;
        result.error = QStringLiteral("no router is configured");
        return result;
    }
    const int profile = request.prefs->activeProfileInt;
    JournalImporter importer(m_calls, m_settings, m_book ? m_book() : nullptr, m_clock);
    if (result.download) {
        Download download;
        {
            QMutexLocker lock(&m_mutex);
            download = m_download;
        }
        importer.setDownloader([download, prefs = request.prefs, &result](const QString& cancel) {
            return download ? download(prefs, cancel, &result.failure) : QString();
        });
    }
    importer.setProgress([this](qsizetype done, qsizetype total) { emit progress(done, total); });
    const JournalImportResult r = importer.getCSVListFromHost(request.path, profile);
    result.imported = r.result;
    result.missed = r.missed;
    result.badLines = r.badLines;
    result.duplicates = r.duplicates;
    result.stoppedEarly = r.stoppedEarly;
    result.newCalls = m_calls.getNewCallsCounterFromListForProfile(profile);
    if (r.result < 0) {
        result.error =
            result.download
                ? QStringLiteral("the router's journal could not be read%1")
                      .arg(result.failure ? QStringLiteral(": ") + result.failure.message : QString())
            : QFileInfo(request.path).isReadable()
                ? QStringLiteral("%1 is not a call journal").arg(request.path)
                : QStringLiteral("cannot read %1").arg(request.path);
    }
    // Only a download that brought calls changes the badge; file imports are old calls.
    if (result.download && r.result > 0) {
        {
            QMutexLocker lock(&m_mutex);
            m_lastMissed = r.missed;
        }
        setBadge(r.badge.value_or(QString()));
    }
    result.badge = badge();
    qCInfo(lcApp) << "journal import for profile" << profile << ":" << result.imported << "calls";
    return result;
}

bool CallListSync::isBusy() const
{
    QMutexLocker lock(&m_mutex);
    return m_pending > 0;
}

void CallListSync::waitForDone()
{
    m_worker.waitForDone();
}

QString CallListSync::badge() const
{
    QMutexLocker lock(&m_mutex);
    return m_badge;
}

void CallListSync::refreshBadge()
{
    const auto prefs = m_manager.currentPreferences();
    qint64 fresh = 0;
    if (prefs && !prefs->isDummy() && prefs->activeProfileInt > 0)
        fresh = m_calls.getNewCallsCounterFromListForProfile(prefs->activeProfileInt);
    int missed = 0;
    {
        QMutexLocker lock(&m_mutex);
        // Seen calls are no longer news, missed or not.
        if (fresh == 0)
            m_lastMissed = 0;
        missed = m_lastMissed;
    }
    // Nothing new: no badge, whatever the settings say.
    setBadge(fresh > 0 ? JournalBadge::title(m_settings, fresh, missed).value_or(QString()) : QString());
}

void CallListSync::setBadge(const QString& badge)
{
    {
        QMutexLocker lock(&m_mutex);
        if (m_badge == badge)
            return;
        m_badge = badge;
    }
    emit badgeChanged(badge);
}
