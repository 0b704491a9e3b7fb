#pragma once

#include "box/RouterFailure.h"

#include <QMetaType>
#include <QMutex>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QThreadPool>

#include <functional>
#include <memory>

class AddressBook;
class Clock;
class SettingsStore;
class TNCallinglist;
class TNPreferences;
class TNPreferencesManager;

// What one journal import did.
struct CallListSyncResult
{
    bool download = false;
    int imported = 0;    // -1: the journal could not be read
    qint64 newCalls = 0; // the profile's new calls afterwards
    int missed = 0;      // imported calls stored as missed
    int badLines = 0;
    int duplicates = 0;
    bool stoppedEarly = false;
    QString error;         // empty on success
    RouterFailure failure; // why a download failed, when the router said
    QString badge;         // the status item's title after this import
};
Q_DECLARE_METATYPE(CallListSyncResult)

// Every journal import (router download or file) goes through here: one at a time on a worker
// thread of its own, with progress, a result, and the status item's badge decided from the
// badge settings and the database's new calls.
class CallListSync : public QObject
{
    Q_OBJECT
public:
    // Fetches the journal of a location; the router may stop once the cancel string went by.
    using Download = std::function<QString(const std::shared_ptr<TNPreferences>& prefs,
                                           const QString& cancelString, RouterFailure* failure)>;
    // The address book to name new callers; may return null.
    using BookSource = std::function<const AddressBook*()>;

    CallListSync(TNCallinglist& calls, TNPreferencesManager& manager, SettingsStore& settings,
                 BookSource book, Clock* clock = nullptr, QObject* parent = nullptr);
    // Waits for queued imports.
    ~CallListSync() override;

    // How the router's journal is fetched (the environment gives the box commands over the
    // location's session); without one, router imports fail.
    void setDownload(Download download);

    // Queued on the worker. A router request while one for the same location still waits to
    // start is dropped: the waiting one brings its calls as well.
    void importFromRouter();
    void importFromRouter(std::shared_ptr<TNPreferences> prefs);
    // The current location's active profile, or the given location's.
    void importFile(const QString& path, std::shared_ptr<TNPreferences> prefs = nullptr);
    // The same by path: empty downloads from the router.
    void loadCSVListDatainBackground(const QString& path);
    // On the calling thread for the current location; the imported calls.
    int loadCSVListData(const QString& path);

    // The same on the calling thread, after any import that is running (the command line).
    CallListSyncResult runRouterImport(const std::shared_ptr<TNPreferences>& prefs);
    CallListSyncResult runFileImport(const QString& path, const std::shared_ptr<TNPreferences>& prefs);

    bool isBusy() const;
    void waitForDone();

    // The status item's title; "" for none.
    QString badge() const;
    // After the badge settings or the new-calls mark changed.
    void refreshBadge();

signals:
    void progress(qint64 done, qint64 total);
    void finished(const CallListSyncResult& result);
    void badgeChanged(const QString& badge);

private:
    struct Request
    {
        QString path; // empty: download
        std::shared_ptr<TNPreferences> prefs;
    };
    void enqueue(Request request);
    CallListSyncResult run(const Request& request);
    void setBadge(const QString& badge);

    TNCallinglist& m_calls;
    TNPreferencesManager& m_manager;
    SettingsStore& m_settings;
    BookSource m_book;
    Clock* m_clock;
    Download m_download;

    QThreadPool m_worker;
    QMutex m_runLock; // one import at a time, whichever thread asks
    mutable QMutex m_mutex;
    QStringList m_waitingDownloads; // location uids
    int m_pending = 0;
    int m_lastMissed = 0;
    QString m_badge;
};
