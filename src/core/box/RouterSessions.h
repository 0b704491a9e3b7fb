#pragma once

#include <QHash>
#include <QMutex>
#include <QString>

#include <memory>

class Clock;
class NotificationCenter;
class RouterSession;
class TNPreferences;
class TNPreferencesManager;

// One router session per location, made on first use. A location whose host, port, user or
// password changed since its session was made gets a fresh session: a SID or a refused login
// of the old router must not carry over. Work still running keeps the old one alive.
class RouterSessions
{
public:
    RouterSessions(NotificationCenter& notifications, Clock& clock, TNPreferencesManager* manager = nullptr);
    ~RouterSessions();

    std::shared_ptr<RouterSession> forLocation(const TNPreferences& prefs);
    // A session of no location (a router being set up).
    std::shared_ptr<RouterSession> detached();
    // Forgets the location's session (e.g. the location was removed).
    void drop(const QString& uid);

private:
    struct Entry
    {
        QString credentials;
        std::shared_ptr<RouterSession> session;
    };

    NotificationCenter& m_notifications;
    Clock& m_clock;
    TNPreferencesManager* m_manager;
    QMutex m_mutex;
    QHash<QString, Entry> m_sessions;
};
