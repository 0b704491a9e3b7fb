#include "box/RouterSession.h"

#include "box/TNSessionManager.h"

RouterSession::RouterSession(NotificationCenter& notifications, Clock& clock, TNPreferencesManager* manager)
    : m_notifications(notifications), m_clock(clock), m_manager(manager),
      m_sessionManager(std::make_unique<TNSessionManager>(*this))
{
}

RouterSession::~RouterSession() = default;
