#include "box/RouterSessions.h"

#include "base/TNPreferences.h"
#include "box/RouterSession.h"

namespace {
// Everything a login depends on; a change means another router or another user.
QString credentialsOf(const TNPreferences& p)
{
    return QStringList{p.hostName,       QString::number(p.webPort),       p.userName,       p.passWord,
                       p.remoteHostName, QString::number(p.remotesslPort), p.remoteUserName, p.remotePassWord}
        .join(QChar(0));
}
} // namespace

RouterSessions::RouterSessions(NotificationCenter& notifications, Clock& clock, TNPreferencesManager* manager)
    : m_notifications(notifications), m_clock(clock), m_manager(manager)
{
}

RouterSessions::~RouterSessions() = default;

std::shared_ptr<RouterSession> RouterSessions::forLocation(const TNPreferences& prefs)
{
    const QString credentials = credentialsOf(prefs);
    QMutexLocker lock(&m_mutex);
    Entry& entry = m_sessions[prefs.uid];
    if (!entry.session || entry.credentials != credentials) {
        entry.session = std::make_shared<RouterSession>(m_notifications, m_clock, m_manager);
        entry.credentials = credentials;
    }
    return entry.session;
}

std::shared_ptr<RouterSession> RouterSessions::detached()
{
    return std::make_shared<RouterSession>(m_notifications, m_clock, nullptr);
}

void RouterSessions::drop(const QString& uid)
{
    QMutexLocker lock(&m_mutex);
    m_sessions.remove(uid);
}
