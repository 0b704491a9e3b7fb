#include "CallMonitorControl.h"

#include "CallMonitorServer.h"

#include <QJsonDocument>
#include <QMetaObject>

#include <httplib.h>

namespace {
QString str(const QJsonObject& o, const char* key)
{
    const QJsonValue v = o.value(QLatin1String(key));
    return v.isDouble() ? QString::number(v.toInt()) : v.toString();
}
} // namespace

QString CallMonitorControl::timeStamp(const QJsonObject& request)
{
    const QString date = str(request, "date");
    return date.isEmpty() ? QDateTime::currentDateTime().toString(QStringLiteral("dd.MM.yy HH:mm:ss")) : date;
}

QDateTime CallMonitorControl::startTime(const QJsonObject& request)
{
    const QString date = str(request, "date");
    if (date.isEmpty())
        return QDateTime::currentDateTime();
    QDateTime t = QDateTime::fromString(date, QStringLiteral("dd.MM.yy HH:mm:ss"));
    return t.isValid() && t.date().year() < 2000 ? t.addYears(100) : t;
}

int CallMonitorControl::takeConnID(const QJsonObject& request, QString* error)
{
    if (request.contains(QStringLiteral("connID"))) {
        const int id = str(request, "connID").toInt();
        if (m_open.contains(id)) {
            *error = QStringLiteral("connection %1 is already open").arg(id);
            return -1;
        }
        return id;
    }
    int id = 0;
    while (m_open.contains(id))
        ++id;
    return id;
}

QByteArray CallMonitorControl::ring(const QJsonObject& r, QString* error, int* connID)
{
    const int id = takeConnID(r, error);
    if (id < 0)
        return {};
    const QString caller = str(r, "caller"); // "" when withheld
    const QString called = str(r, "called");
    const QString trunk = r.contains(QStringLiteral("trunk")) ? str(r, "trunk") : QStringLiteral("SIP0");
    if (called.isEmpty()) {
        *error = QStringLiteral("ring needs \"called\"");
        return {};
    }
    m_open.insert(id, {caller, {}, false, QString(), called, startTime(r)});
    *connID = id;
    return QStringLiteral("%1;RING;%2;%3;%4;%5;\n")
        .arg(timeStamp(r))
        .arg(id)
        .arg(caller, called, trunk)
        .toLatin1();
}

QByteArray CallMonitorControl::call(const QJsonObject& r, QString* error, int* connID)
{
    const int id = takeConnID(r, error);
    if (id < 0)
        return {};
    const QString extension = str(r, "extension");
    const QString caller = str(r, "caller");
    const QString called = str(r, "called");
    const QString trunk = r.contains(QStringLiteral("trunk")) ? str(r, "trunk") : QStringLiteral("SIP0");
    if (extension.isEmpty() || called.isEmpty()) {
        *error = QStringLiteral("call needs \"extension\" and \"called\"");
        return {};
    }
    m_open.insert(id, {called, {}, true, extension, caller, startTime(r)});
    *connID = id;
    return QStringLiteral("%1;CALL;%2;%3;%4;%5;%6;\n")
        .arg(timeStamp(r))
        .arg(id)
        .arg(extension, caller, called, trunk)
        .toLatin1();
}

QByteArray CallMonitorControl::connectCall(const QJsonObject& r, QString* error, int* connID)
{
    const int id = str(r, "connID").toInt();
    const QString extension = str(r, "extension");
    if (!m_open.contains(id) || extension.isEmpty()) {
        *error = QStringLiteral("connect needs an open \"connID\" and \"extension\"");
        return {};
    }
    OpenCall& open = m_open[id];
    open.connectedAt = QDateTime::currentDateTime();
    open.extension = extension;
    *connID = id;
    return QStringLiteral("%1;CONNECT;%2;%3;%4;\n")
        .arg(timeStamp(r))
        .arg(id)
        .arg(extension, open.number)
        .toLatin1();
}

QByteArray CallMonitorControl::disconnect(const QJsonObject& r, QString* error, int* connID)
{
    const int id = str(r, "connID").toInt();
    if (!m_open.contains(id)) {
        *error = QStringLiteral("connection %1 is not open").arg(id);
        return {};
    }
    const OpenCall open = m_open.take(id);
    // The router reports 0 s for a call that never connected.
    qint64 duration = open.connectedAt.isValid() ? open.connectedAt.secsTo(QDateTime::currentDateTime()) : 0;
    if (r.contains(QStringLiteral("duration")))
        duration = str(r, "duration").toLongLong();
    *connID = id;
    if (m_callEnded)
        m_callEnded({open.outgoing, open.connectedAt.isValid() || (open.outgoing && duration > 0), open.start,
                     open.number, open.extension, open.ownNumber, duration});
    return QStringLiteral("%1;DISCONNECT;%2;%3;\n").arg(timeStamp(r)).arg(id).arg(duration).toLatin1();
}

void CallMonitorControl::installRoute(httplib::Server& server, const char* path, Handler handler)
{
    server.Post(path, [this, handler](const httplib::Request& req, httplib::Response& res) {
        QJsonParseError parseError;
        const QJsonDocument doc = QJsonDocument::fromJson(QByteArray::fromStdString(req.body), &parseError);
        QString error;
        int connID = -1;
        QByteArray line;
        if (!req.body.empty() && !doc.isObject()) {
            error = QStringLiteral("body is not a JSON object");
        } else {
            QMutexLocker lock(&m_mutex);
            line = (this->*handler)(doc.object(), &error, &connID);
        }
        if (line.isEmpty()) {
            res.status = 400;
            res.set_content(QJsonDocument(QJsonObject{{QStringLiteral("error"), error}})
                                .toJson(QJsonDocument::Compact)
                                .toStdString(),
                            "application/json");
            return;
        }
        CallMonitorServer* monitor = &m_server;
        QMetaObject::invokeMethod(
            monitor, [monitor, line] { monitor->send(line); }, Qt::QueuedConnection);
        const QJsonObject answer{{QStringLiteral("connID"), connID},
                                 {QStringLiteral("line"), QString::fromLatin1(line.trimmed())}};
        res.set_content(QJsonDocument(answer).toJson(QJsonDocument::Compact).toStdString(),
                        "application/json");
    });
}

void CallMonitorControl::installRoutes(httplib::Server& server)
{
    installRoute(server, "/_sim/monitor/ring", &CallMonitorControl::ring);
    installRoute(server, "/_sim/monitor/call", &CallMonitorControl::call);
    installRoute(server, "/_sim/monitor/connect", &CallMonitorControl::connectCall);
    installRoute(server, "/_sim/monitor/disconnect", &CallMonitorControl::disconnect);
}
