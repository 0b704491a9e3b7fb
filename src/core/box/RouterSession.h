#pragma once

#include <QRecursiveMutex>
#include <QString>

#include <memory>

class Clock;
class NotificationCenter;
class TNPreferencesManager;
class TNSessionManager;

// The live session with one location's router: the SID and its age, what the login found out
// about the firmware, and the WLAN and DECT state last read. Lives as long as the location's
// host and credentials stay the same (see RouterSessions); never stored.
class RouterSession
{
public:
    // manager may be null (nowhere to keep a newly seen certificate key).
    RouterSession(NotificationCenter& notifications, Clock& clock, TNPreferencesManager* manager = nullptr);
    ~RouterSession();
    RouterSession(const RouterSession&) = delete;
    RouterSession& operator=(const RouterSession&) = delete;

    TNSessionManager& sessionManager() { return *m_sessionManager; }
    NotificationCenter& notifications() const { return m_notifications; }
    Clock& clock() const { return m_clock; }
    TNPreferencesManager* preferencesManager() const { return m_manager; }

    // Guards the fields below, and the location's credentials while a request reads them,
    // against concurrent background work.
    QRecursiveMutex& mutex() const { return m_mutex; }

    double updateTime = 0;
    QString sessionID;
    double remoteUpdateTime = 0;
    QString remoteSessionID;
    // Set by the first 401 so the wrong password is reported once until a login succeeds.
    bool loginError = false;
    int WLANStatus = 4;
    int DECTStatus = 4;
    bool errorMessageShown = false;
    // The login found a Lua firmware although the location did not say so.
    bool switchedLUA = false;
    QString wlanSSID;
    QString wlanSSID_scnd;
    bool useLUA = false;

private:
    NotificationCenter& m_notifications;
    Clock& m_clock;
    TNPreferencesManager* m_manager;
    mutable QRecursiveMutex m_mutex;
    std::unique_ptr<TNSessionManager> m_sessionManager;
};
