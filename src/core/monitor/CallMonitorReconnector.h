#pragma once

#include "monitor/ReconnectBackoff.h"

#include <QObject>
#include <QPointer>
#include <QTimer>

class StreamListener;

// Keeps the call monitor connected to one router: after a loss, or a failed attempt, it tries
// again with back-off until stopped. Reachability and wake reconnect besides this.
class CallMonitorReconnector : public QObject
{
    Q_OBJECT
public:
    CallMonitorReconnector(StreamListener& listener, ReconnectBackoff backoff = ReconnectBackoff(),
                           QObject* parent = nullptr);

    // Connects now and keeps the connection up.
    void start(const QString& host, quint16 port);
    // Forgets the router; a running wait is cancelled. Does not disconnect the listener.
    void stop();
    void setBackoff(ReconnectBackoff backoff) { m_backoff = backoff; }
    bool isActive() const { return m_active; }
    bool isWaiting() const { return m_timer.isActive(); }
    int pendingDelayMs() const { return m_lastDelay; }

signals:
    // A reconnect is scheduled in delayMs (for logs and the CLI).
    void retryScheduled(int delayMs, const QString& reason);

private:
    void onLost(const QString& reason);

    StreamListener& m_listener;
    ReconnectBackoff m_backoff;
    QTimer m_timer;
    QString m_host;
    quint16 m_port = 0;
    bool m_active = false;
    int m_lastDelay = 0;
};
