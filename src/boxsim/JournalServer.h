#pragma once

#include <QDateTime>
#include <QJsonObject>
#include <QMutex>
#include <QString>

#include <functional>

namespace httplib {
class Server;
struct Request;
struct Response;
} // namespace httplib
class RouterState;

// The router's call journal as its web interface hands it out. Current (Lua) firmware:
// "/fon_num/foncalls_list.lua" refreshes (a page) and "?csv=" exports; older firmware: posts to
// "/cgi-bin/webcm" with "var:pagename=foncalls" answer with a page naming the .csv file, which
// "getpage=../html/<lang>/FRITZ!Box_Anrufliste.csv" (or ..._Calllist.csv) then delivers.
//
// Scenario: "journal" (newest first), each row an object {"type","date" (dd.MM.yy HH:mm),
// "name","number","extension","line","duration" (h:mm)} or a raw line; "journalEncoding"
// ("utf-8", default, or "latin1"); "journalChunkDelayMs" (pause between rows, so that a client
// that stops reading early is seen doing so).
//
// Both need a session, as every page of the router does.
//
// Control:
//   POST /_sim/journal/add    a row object        -> puts it at the head of the journal
//   GET  /_sim/journal/stats  -> {"exports","bytesSent","bytesTotal","closedEarly","refreshes"}
class JournalServer
{
public:
    explicit JournalServer(RouterState& state) : m_state(state) {}

    void installRoutes(httplib::Server& server);
    // The journal requests among those to /cgi-bin/webcm (older firmware); false for others.
    bool handleWebcm(const httplib::Request& req, httplib::Response& res);
    void installControlRoutes(httplib::Server& server);

    // A finished call as the router writes it into its journal.
    struct EndedCall
    {
        bool outgoing = false;
        bool connected = false;
        QDateTime start;
        QString number, extension, line;
        qint64 seconds = 0;
    };
    void addEndedCall(const EndedCall& call);

    // The journal text as the router exports it (with "sep=;" and the header).
    QByteArray exportText() const;

private:
    bool loggedIn(const httplib::Request& req);
    void sendExport(httplib::Response& res);
    void addRow(const QJsonObject& row);

    RouterState& m_state;
    mutable QMutex m_mutex;
    int m_exports = 0;
    int m_refreshes = 0;
    qint64 m_bytesSent = 0;
    qint64 m_bytesTotal = 0;
    bool m_closedEarly = false;
};
