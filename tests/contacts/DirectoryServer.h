#pragma once

#include <QByteArray>
#include <QHash>
#include <QList>
#include <QMutex>
#include <QSemaphore>
#include <QTcpServer>
#include <QTcpSocket>
#include <QThread>

// A web directory on loopback, on a thread of its own so that blocking clients on the test
// thread can talk to it. Pages by path; a "hang" path accepts and never answers.
class DirectoryServer : public QThread
{
public:
    struct Request
    {
        QByteArray method;
        QByteArray target;                     // path with query
        QHash<QByteArray, QByteArray> headers; // names in lower case
        QByteArray body;
    };

    ~DirectoryServer() override { stop(); }

    void setPage(const QByteArray& path, const QByteArray& body, int status = 200)
    {
        QMutexLocker lock(&m_mutex);
        m_pages.insert(path, {status, body});
    }
    void setHanging(const QByteArray& path)
    {
        QMutexLocker lock(&m_mutex);
        m_hanging.append(path);
    }
    quint16 startServing()
    {
        start();
        m_ready.acquire();
        return m_port;
    }
    QString url(const char* path) const
    {
        return QStringLiteral("http://127.0.0.1:%1%2").arg(m_port).arg(QString::fromLatin1(path));
    }
    QList<Request> requests() const
    {
        QMutexLocker lock(&m_mutex);
        return m_requests;
    }
    void stop()
    {
        if (isRunning()) {
            quit();
            wait();
        }
    }

protected:
    void run() override
    {
        QTcpServer server;
        server.listen(QHostAddress::LocalHost, 0);
        m_port = server.serverPort();
        QObject::connect(&server, &QTcpServer::newConnection, &server, [this, &server] {
            while (QTcpSocket* socket = server.nextPendingConnection()) {
                auto buffer = std::make_shared<QByteArray>();
                QObject::connect(socket, &QTcpSocket::readyRead, socket, [this, socket, buffer] {
                    *buffer += socket->readAll();
                    handle(socket, *buffer);
                });
            }
        });
        m_ready.release();
        exec();
    }

private:
    void handle(QTcpSocket* socket, const QByteArray& data)
    {
        const qsizetype end = data.indexOf("\r\n\r\n");
        if (end < 0)
            return;
        Request request;
        const QList<QByteArray> lines = data.left(end).split('\n');
        const QList<QByteArray> first = lines.value(0).trimmed().split(' ');
        request.method = first.value(0);
        request.target = first.value(1);
        for (qsizetype i = 1; i < lines.size(); ++i) {
            const qsizetype colon = lines.at(i).indexOf(':');
            if (colon > 0)
                request.headers.insert(lines.at(i).left(colon).trimmed().toLower(),
                                       lines.at(i).mid(colon + 1).trimmed());
        }
        const qsizetype length = request.headers.value("content-length", "0").toLongLong();
        if (data.size() < end + 4 + length)
            return;
        request.body = data.mid(end + 4, length);
        const QByteArray path = request.target.left(
            request.target.indexOf('?') < 0 ? request.target.size() : request.target.indexOf('?'));
        QMutexLocker lock(&m_mutex);
        m_requests.append(request);
        if (m_hanging.contains(path))
            return;
        const auto page = m_pages.value(path, {404, QByteArray("not here")});
        socket->write("HTTP/1.1 " + QByteArray::number(page.first) +
                      " X\r\nContent-Type: text/html; charset=utf-8\r\n"
                      "Connection: close\r\nContent-Length: " +
                      QByteArray::number(page.second.size()) + "\r\n\r\n" + page.second);
        socket->disconnectFromHost();
    }

    mutable QMutex m_mutex;
    QHash<QByteArray, std::pair<int, QByteArray>> m_pages;
    QList<QByteArray> m_hanging;
    QList<Request> m_requests;
    QSemaphore m_ready;
    quint16 m_port = 0;
};
