#include "JournalServer.h"

#include "RouterState.h"
#include "SimRequest.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QStringList>

#include <httplib.h>

#include <chrono>
#include <memory>
#include <thread>

namespace {

const char* const kRefreshedPageLua =
    "<!DOCTYPE html>\n<html><head><meta charset=\"utf-8\"><title>FRITZ!Box</title></head>\n"
    "<body><!-- pagename:/fon_num/foncalls_list.lua-->\n<form id=\"uiMainForm\" method=\"POST\" "
    "action=\"/fon_num/foncalls_list.lua\"><button type=\"submit\" name=\"csv\">Export</button></form>\n"
    "</body></html>\n";

// The older web interface names the export file in a hidden input.
std::string refreshedPageForm(const QString& language)
{
    const QString file =
        language == u"de" ? QStringLiteral("FRITZ!Box_Anrufliste") : QStringLiteral("FRITZ!Box_Calllist");
    return QStringLiteral("<html><head><title>FRITZ!Box</title></head><body>\n"
                          "<input type=\"hidden\" name=\"var:pagename\" value=\"foncalls\">\n"
                          "<input type=\"hidden\" name=\"var:csvfile\" value=\"../html/%1/%2.csv\">\n"
                          "</body></html>\n")
        .arg(language, file)
        .toStdString();
}

QString field(const QJsonObject& o, const char* key)
{
    const QJsonValue v = o.value(QLatin1String(key));
    return v.isDouble() ? QString::number(v.toInt()) : v.toString();
}

QString rowText(const QJsonValue& row)
{
    if (row.isString())
        return row.toString();
    const QJsonObject o = row.toObject();
    return QStringList{field(o, "type"),      field(o, "date"), field(o, "name"),    field(o, "number"),
                       field(o, "extension"), field(o, "line"), field(o, "duration")}
        .join(u';');
}

} // namespace

QByteArray JournalServer::exportText() const
{
    const bool german = m_state.scenario().value(QStringLiteral("language")).toString() != u"en";
    QString text = QStringLiteral("sep=;\n");
    text += german ? QStringLiteral("Typ;Datum;Name;Rufnummer;Nebenstelle;Eigene Rufnummer;Dauer\n")
                   : QStringLiteral("Type;Date;Name;Number;Extension;Outgoing Caller ID;Duration\n");
    for (const QJsonValue& row : m_state.scenario().value(QStringLiteral("journal")).toArray())
        text += rowText(row) + u'\n';
    if (m_state.scenario().value(QStringLiteral("journalEncoding")).toString() == u"latin1")
        return text.toLatin1();
    return text.toUtf8();
}

void JournalServer::addRow(const QJsonObject& row)
{
    QJsonArray journal = m_state.scenario().value(QStringLiteral("journal")).toArray();
    journal.prepend(row);
    m_state.scenario().setValue(QStringLiteral("journal"), journal);
}

void JournalServer::addEndedCall(const EndedCall& call)
{
    const bool lua = m_state.scenario().value(QStringLiteral("firmware")).toString() != u"form";
    // Current firmware writes 4 for outgoing calls; older firmware 3.
    const int type = call.outgoing ? (lua ? 4 : 3) : (call.connected ? 1 : 2);
    const qint64 minutes = (call.seconds + 59) / 60;
    addRow(
        QJsonObject{{QStringLiteral("type"), type},
                    {QStringLiteral("date"), call.start.toString(QStringLiteral("dd.MM.yy HH:mm"))},
                    {QStringLiteral("name"), QString()},
                    {QStringLiteral("number"), call.number},
                    {QStringLiteral("extension"), call.extension},
                    {QStringLiteral("line"), call.line},
                    {QStringLiteral("duration"),
                     QStringLiteral("%1:%2").arg(minutes / 60).arg(minutes % 60, 2, 10, QLatin1Char('0'))}});
}

void JournalServer::sendExport(httplib::Response& res)
{
    const QByteArray text = exportText();
    const int delayMs = m_state.scenario().value(QStringLiteral("journalChunkDelayMs")).toInt();
    {
        QMutexLocker lock(&m_mutex);
        ++m_exports;
        m_bytesSent = 0;
        m_bytesTotal = text.size();
        m_closedEarly = false;
    }
    auto body = std::make_shared<QByteArray>(text);
    // One line per write, as the router produces the list while it sends it.
    res.set_content_provider(
        size_t(body->size()), "text/csv; charset=utf-8",
        [this, body, delayMs](size_t offset, size_t, httplib::DataSink& sink) {
            if (delayMs > 0 && offset > 0)
                std::this_thread::sleep_for(std::chrono::milliseconds(delayMs));
            qsizetype end = body->indexOf('\n', qsizetype(offset));
            end = end < 0 ? body->size() : end + 1;
            const qsizetype length = end - qsizetype(offset);
            if (!sink.write(body->constData() + offset, size_t(length)))
                return false;
            QMutexLocker lock(&m_mutex);
            m_bytesSent += length;
            return true;
        },
        [this](bool success) {
            QMutexLocker lock(&m_mutex);
            m_closedEarly = !success || m_bytesSent < m_bytesTotal;
        });
}

bool JournalServer::loggedIn(const httplib::Request& req)
{
    const SimParams params = SimParams::fromRequest(req);
    if (m_state.firmware() == u"nologin")
        return params.value(QStringLiteral("login:command/password")) ==
               m_state.user(QString()).value(QStringLiteral("password")).toString();
    return m_state.validSession(params.value(QStringLiteral("sid")));
}

bool JournalServer::handleWebcm(const httplib::Request& req, httplib::Response& res)
{
    if (m_state.firmware() == u"lua")
        return false;
    const SimParams params = SimParams::fromRequest(req);
    const bool csv = params.value(QStringLiteral("getpage")).endsWith(QStringLiteral(".csv"));
    const bool refresh = params.has(QStringLiteral("telcfg:settings/RefreshJournal")) &&
                         params.value(QStringLiteral("var:pagename")) == u"foncalls";
    if (!csv && !refresh)
        return false;
    if (!loggedIn(req)) {
        res.set_content(simLoginPage(), "text/html; charset=utf-8");
        return true;
    }
    if (csv) {
        sendExport(res);
        return true;
    }
    {
        {
            QMutexLocker lock(&m_mutex);
            ++m_refreshes;
        }
        res.set_content(refreshedPageForm(m_state.scenario().value(QStringLiteral("language")).toString()),
                        "text/html; charset=iso-8859-1");
        return true;
    }
    return false;
}

void JournalServer::installRoutes(httplib::Server& server)
{
    auto lua = [this](const httplib::Request& req, httplib::Response& res) {
        m_state.recordRequest(QString::fromStdString(req.method),
                              QStringLiteral("/fon_num/foncalls_list.lua"));
        if (m_state.firmware() != u"lua") {
            res.status = 404;
            return;
        }
        if (!loggedIn(req)) {
            res.set_content(simLoginPage(), "text/html; charset=utf-8");
            return;
        }
        if (req.has_param("csv")) {
            sendExport(res);
            return;
        }
        {
            QMutexLocker lock(&m_mutex);
            ++m_refreshes;
        }
        res.set_content(kRefreshedPageLua, "text/html; charset=utf-8");
    };
    server.Get("/fon_num/foncalls_list.lua", lua);
    server.Post("/fon_num/foncalls_list.lua", lua);
}

void JournalServer::installControlRoutes(httplib::Server& server)
{
    server.Post("/_sim/journal/add", [this](const httplib::Request& req, httplib::Response& res) {
        const QJsonDocument doc = QJsonDocument::fromJson(QByteArray::fromStdString(req.body));
        if (!doc.isObject()) {
            res.status = 400;
            res.set_content("{\"error\":\"body is not a JSON object\"}", "application/json");
            return;
        }
        addRow(doc.object());
        res.set_content("{\"ok\":true}", "application/json");
    });
    server.Get("/_sim/journal/stats", [this](const httplib::Request&, httplib::Response& res) {
        QMutexLocker lock(&m_mutex);
        const QJsonObject o{{QStringLiteral("exports"), m_exports},
                            {QStringLiteral("refreshes"), m_refreshes},
                            {QStringLiteral("bytesSent"), m_bytesSent},
                            {QStringLiteral("bytesTotal"), m_bytesTotal},
                            {QStringLiteral("closedEarly"), m_closedEarly}};
        res.set_content(QJsonDocument(o).toJson(QJsonDocument::Compact).toStdString(), "application/json");
    });
}
