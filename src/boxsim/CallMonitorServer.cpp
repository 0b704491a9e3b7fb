#include "CallMonitorServer.h"

CallMonitorServer::CallMonitorServer(QObject* parent) : QObject(parent)
{
    connect(&m_server, &QTcpServer::newConnection, this, [this] {
        while (QTcpSocket* socket = m_server.nextPendingConnection()) {
            m_clients.append(socket);
            connect(socket, &QTcpSocket::disconnected, socket, &QObject::deleteLater);
            // The router never reads from the client; drain anything sent.
            connect(socket, &QTcpSocket::readyRead, socket, [socket] { socket->readAll(); });
        }
    });
}

bool CallMonitorServer::listen(quint16 port)
{
    return m_server.listen(QHostAddress::LocalHost, port);
}

quint16 CallMonitorServer::port() const
{
    return m_server.serverPort();
}

int CallMonitorServer::clientCount() const
{
    int n = 0;
    for (const auto& c : m_clients)
        if (c && c->state() == QAbstractSocket::ConnectedState)
            ++n;
    return n;
}

void CallMonitorServer::send(const QByteArray& data)
{
    m_clients.removeAll(nullptr);
    for (const auto& c : m_clients)
        if (c && c->state() == QAbstractSocket::ConnectedState)
            c->write(data);
}

void CallMonitorServer::dropClients()
{
    for (const auto& c : m_clients)
        if (c)
            c->disconnectFromHost();
    m_clients.clear();
}
