#pragma once

#include "JournalServer.h"

#include <QByteArray>
#include <QDateTime>
#include <QJsonObject>
#include <QMap>
#include <QMutex>
#include <QString>

#include <functional>

namespace httplib {
class Server;
}
class CallMonitorServer;

// The control endpoint that makes calls happen on the call monitor port: ring, call, connect
// and disconnect write the lines a real router writes for them.
//   POST /_sim/monitor/ring        {"caller","called","trunk"}              -> {"connID","line"}
//   POST /_sim/monitor/call        {"extension","caller","called","trunk"}  -> {"connID","line"}
//   POST /_sim/monitor/connect     {"connID","extension"}
//   POST /_sim/monitor/disconnect  {"connID"[,"duration"]}
// Optional in every body: "connID" (else the lowest free one), "date" ("dd.MM.yy HH:mm:ss").
class CallMonitorControl
{
public:
    explicit CallMonitorControl(CallMonitorServer& server) : m_server(server) {}
    void installRoutes(httplib::Server& server);
    // Told about every call that ends (DISCONNECT), e.g. for the journal.
    void setCallEndedHandler(std::function<void(const JournalServer::EndedCall&)> h)
    {
        m_callEnded = std::move(h);
    }

    // The line for a request, or an error text; public for the simulator's own tests.
    QByteArray ring(const QJsonObject& request, QString* error, int* connID);
    QByteArray call(const QJsonObject& request, QString* error, int* connID);
    QByteArray connectCall(const QJsonObject& request, QString* error, int* connID);
    QByteArray disconnect(const QJsonObject& request, QString* error, int* connID);

private:
    struct OpenCall
    {
        QString number;
        QDateTime connectedAt; // invalid until CONNECT
        bool outgoing = false;
        QString extension;
        QString ownNumber;
        QDateTime start;
    };

    using Handler = QByteArray (CallMonitorControl::*)(const QJsonObject&, QString*, int*);
    void installRoute(httplib::Server& server, const char* path, Handler handler);
    int takeConnID(const QJsonObject& request, QString* error);
    static QString timeStamp(const QJsonObject& request);
    static QDateTime startTime(const QJsonObject& request);

    CallMonitorServer& m_server;
    QMutex m_mutex;
    QMap<int, OpenCall> m_open;
    std::function<void(const JournalServer::EndedCall&)> m_callEnded;
};
