#include "SingleInstance.h"

#include <QCryptographicHash>
#include <QDataStream>
#include <QDir>
#include <QLocalSocket>

#include <unistd.h>

SingleInstance::SingleInstance(QString name, QObject* parent) : QObject(parent), m_name(std::move(name))
{
    connect(&m_server, &QLocalServer::newConnection, this, [this] {
        while (QLocalSocket* socket = m_server.nextPendingConnection()) {
            connect(socket, &QLocalSocket::disconnected, socket, &QObject::deleteLater);
            connect(socket, &QLocalSocket::readyRead, socket, [this, socket] {
                // A length-prefixed string list; wait until it is complete.
                QDataStream in(socket);
                in.startTransaction();
                QStringList args;
                in >> args;
                if (!in.commitTransaction())
                    return;
                socket->write("ok");
                socket->flush();
                emit argumentsReceived(args);
            });
        }
    });
}

QString SingleInstance::nameForConfigDir(const QString& configDir)
{
    const QString folder = QString::fromLatin1(
        QCryptographicHash::hash(QDir::cleanPath(configDir).toUtf8(), QCryptographicHash::Sha1)
            .toHex()
            .left(10));
    // The user's runtime folder is private; the fallback in /tmp carries the user id.
    const QString runtime = qEnvironmentVariable("XDG_RUNTIME_DIR");
    if (!runtime.isEmpty())
        return runtime + QStringLiteral("/tondrel-%1.sock").arg(folder);
    return QStringLiteral("tondrel-%1-%2").arg(::getuid()).arg(folder);
}

bool SingleInstance::claim()
{
    // No socket options: with them Qt replaces a living instance's socket instead of failing.
    if (m_server.listen(m_name))
        return true;
    // A socket left by a crashed instance accepts no connection: take it over. A living one
    // accepts even while its event loop is busy.
    QLocalSocket probe;
    probe.connectToServer(m_name);
    if (probe.waitForConnected(1000))
        return false;
    QLocalServer::removeServer(m_name);
    return m_server.listen(m_name);
}

bool SingleInstance::forward(const QStringList& arguments, int timeoutMs) const
{
    QLocalSocket socket;
    socket.connectToServer(m_name);
    if (!socket.waitForConnected(timeoutMs))
        return false;
    QByteArray data;
    QDataStream out(&data, QIODevice::WriteOnly);
    out << arguments;
    socket.write(data);
    if (!socket.waitForBytesWritten(timeoutMs))
        return false;
    return socket.waitForReadyRead(timeoutMs) && socket.readAll() == "ok";
}
