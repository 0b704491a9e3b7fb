#pragma once

#include <QList>
#include <QObject>
#include <QPointer>
#include <QTcpServer>
#include <QTcpSocket>

// The router's call monitor port: every connected client receives the event lines.
class CallMonitorServer : public QObject
{
    Q_OBJECT
public:
    explicit CallMonitorServer(QObject* parent = nullptr);
    bool listen(quint16 port);
    quint16 port() const;
    int clientCount() const;

public slots:
    // Sends raw bytes (one or more lines, or a part of one) to every client.
    void send(const QByteArray& data);
    void dropClients();

private:
    QTcpServer m_server;
    QList<QPointer<QTcpSocket>> m_clients;
};
