#include "monitor/CallMonitorReconnector.h"

#include "base/Logging.h"
#include "monitor/StreamListener.h"

CallMonitorReconnector::CallMonitorReconnector(StreamListener& listener, ReconnectBackoff backoff,
                                               QObject* parent)
    : QObject(parent), m_listener(listener), m_backoff(backoff)
{
    m_timer.setSingleShot(true);
    connect(&m_timer, &QTimer::timeout, this, [this] {
        if (m_active && !m_listener.isConnected() && !m_listener.isConnecting())
            m_listener.connectToHost(m_host, m_port);
    });
    connect(&m_listener, &StreamListener::connectionLost, this, &CallMonitorReconnector::onLost);
    connect(&m_listener, &StreamListener::connectedChanged, this, [this](bool connected) {
        if (connected)
            m_backoff.reset();
    });
}

void CallMonitorReconnector::start(const QString& host, quint16 port)
{
    m_host = host;
    m_port = port;
    m_active = true;
    m_timer.stop();
    m_backoff.reset();
    m_listener.connectToHost(host, port);
}

void CallMonitorReconnector::stop()
{
    m_active = false;
    m_timer.stop();
}

void CallMonitorReconnector::onLost(const QString& reason)
{
    if (!m_active || m_timer.isActive())
        return;
    m_lastDelay = m_backoff.nextDelayMs();
    qCInfo(lcApp) << "Call monitor: next attempt in" << m_lastDelay / 1000.0 << "s";
    m_timer.start(m_lastDelay);
    emit retryScheduled(m_lastDelay, reason);
}
