#include "SimWebInterface.h"

#include "JournalServer.h"
#include "RouterState.h"
#include "SimLogin.h"
#include "SimRequest.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>

#include <httplib.h>

namespace {
const char* const kHtml = "text/html; charset=utf-8";

QString userListRight(int access)
{
    return access >= 2 ? QStringLiteral("5") : access == 1 ? QStringLiteral("3") : QStringLiteral("0");
}

std::string luaPage(const QString& path, const QString& title)
{
    return QStringLiteral("<!DOCTYPE html>\n<html><head><title>FRITZ!Box - %1</title></head><body>\n"
                          "<!-- pagename:%2-->\n<h1>%1</h1>\n</body></html>\n")
        .arg(title, path)
        .toStdString();
}
} // namespace

void SimWebInterface::install(httplib::Server& server)
{
    const auto webcmHandler = [this](const httplib::Request& req, httplib::Response& res) {
        m_state.recordRequest(QString::fromStdString(req.method), QString::fromStdString(req.path));
        if (m_journal && m_journal->handleWebcm(req, res))
            return;
        int status = 200;
        const std::string body = webcm(req, &status);
        res.status = status;
        res.set_content(body, kHtml);
    };
    server.Get("/cgi-bin/webcm", webcmHandler);
    server.Post("/cgi-bin/webcm", webcmHandler);

    server.Get("/query.lua", [this](const httplib::Request& req, httplib::Response& res) {
        m_state.recordRequest(QStringLiteral("GET"), QStringLiteral("/query.lua"));
        bool ok = false;
        const std::string body = queryLua(SimParams::fromRequest(req), &ok);
        if (!ok) {
            res.status = 403;
            res.set_content(simLoginPage(), kHtml);
            return;
        }
        res.set_content(body, "application/json; charset=utf-8");
    });

    const auto page = [this](const char* path, const char* title) {
        return [this, path, title](const httplib::Request& req, httplib::Response& res) {
            m_state.recordRequest(QString::fromStdString(req.method), QString::fromLatin1(path));
            const SimParams params = SimParams::fromRequest(req);
            if (m_state.firmware() != u"lua") {
                res.status = 404;
                return;
            }
            if (!luaSession(params)) {
                res.set_content(simLoginPage(), kHtml);
                return;
            }
            if (req.method == "POST")
                applySettings(params, QString::fromLatin1(path));
            res.set_content(luaPage(QString::fromLatin1(path), QString::fromLatin1(title)), kHtml);
        };
    };
    for (const auto& [path, title] : std::initializer_list<std::pair<const char*, const char*>>{
             {"/wlan/wlan_settings.lua", "WLAN"},
             {"/fon_num/callthrough.lua", "Call-through"},
             {"/system/update.lua", "Update"},
             {"/home/home.lua", "Overview"},
             {"/fon_num/dial_foncalls.lua", "Click to dial"},
             {"/dect/dect_settings.lua", "DECT"}}) {
        server.Get(path, page(path, title));
        server.Post(path, page(path, title));
    }

    server.Get("/jason_boxinfo.xml", [this](const httplib::Request&, httplib::Response& res) {
        m_state.recordRequest(QStringLiteral("GET"), QStringLiteral("/jason_boxinfo.xml"));
        if (m_state.firmware() != u"lua") {
            res.status = 404;
            return;
        }
        const Scenario& s = m_state.scenario();
        res.set_content(QStringLiteral("<j:BoxInfo xmlns:j=\"http://jason.avm.de/updatecheck/\">\n"
                                       "<j:Name>%1</j:Name>\n<j:HW>226</j:HW>\n<j:Version>%2</j:Version>\n"
                                       "<j:Revision>117407</j:Revision>\n<j:Serial>989BCB000000</j:Serial>\n"
                                       "<j:OEM>avm</j:OEM>\n<j:Lang>%3</j:Lang>\n<j:Annex>B</j:Annex>\n"
                                       "<j:Lab/>\n<j:Country>049</j:Country>\n<j:Flag>mesh_master</j:Flag>\n"
                                       "</j:BoxInfo>\n")
                            .arg(s.value(QStringLiteral("model")).toString(),
                                 s.value(QStringLiteral("firmwareVersion")).toString(),
                                 s.value(QStringLiteral("language")).toString())
                            .toStdString(),
                        "text/xml");
    });

    // The start page names the language in its menu paths.
    server.Get("/", [this](const httplib::Request&, httplib::Response& res) {
        m_state.recordRequest(QStringLiteral("GET"), QStringLiteral("/"));
        const QString lang =
            m_state.scenario().value(QStringLiteral("language")).toString(QStringLiteral("de"));
        res.set_content(
            QStringLiteral("<!DOCTYPE html>\n<html><head><title>FRITZ!Box</title>\n"
                           "<link rel=\"stylesheet\" href=\"/html/%1/menus/menu2.css\">\n</head>\n"
                           "<body><input type=\"password\" name=\"password\"></body></html>\n")
                .arg(lang)
                .toStdString(),
            kHtml);
    });
}

bool SimWebInterface::luaSession(const SimParams& params, QString* user)
{
    return m_state.validSession(params.value(QStringLiteral("sid")), user);
}

void SimWebInterface::applySettings(const SimParams& params, const QString& via)
{
    if (via == u"/fon_num/dial_foncalls.lua" && params.has(QStringLiteral("port"))) {
        m_state.setVariable(QStringLiteral("telcfg:settings/DialPort"), params.value(QStringLiteral("port")));
        m_state.recordAction({{QStringLiteral("action"), QStringLiteral("setDialPort")},
                              {QStringLiteral("port"), params.value(QStringLiteral("port"))},
                              {QStringLiteral("via"), via}});
    } else if (via == u"/dect/dect_settings.lua") {
        const QString on =
            params.value(QStringLiteral("dect_activ")) == u"on" ? QStringLiteral("1") : QStringLiteral("0");
        m_state.setVariable(QStringLiteral("dect:settings/enabled"), on);
        m_state.recordAction({{QStringLiteral("action"), QStringLiteral("setDECT")},
                              {QStringLiteral("value"), on},
                              {QStringLiteral("via"), via}});
    }
}

std::string SimWebInterface::queryLua(const SimParams& params, bool* ok)
{
    QString user;
    *ok = m_state.firmware() == u"lua" && luaSession(params, &user);
    if (!*ok)
        return {};
    QJsonObject answer;
    for (const auto& [name, value] : params.items) {
        if (name == u"sid" || name.startsWith(QStringLiteral("var:")))
            continue;
        if (value.startsWith(QStringLiteral("boxusers:settings/user/list("))) {
            QJsonArray list;
            int uid = 10;
            for (const QJsonValue& v : m_state.users()) {
                const QJsonObject u = v.toObject();
                const QJsonObject rights = u.value(QStringLiteral("rights")).toObject();
                const auto right = [&](const char* area) {
                    return userListRight(rights.isEmpty() ? 2 : rights.value(QLatin1String(area)).toInt(0));
                };
                const QString uname = u.value(QStringLiteral("name")).toString();
                list.append(QJsonObject{
                    {QStringLiteral("UID"), QStringLiteral("boxuser%1").arg(uid)},
                    {QStringLiteral("id"), QString::number(uid++)},
                    {QStringLiteral("enabled"), QStringLiteral("1")},
                    {QStringLiteral("is_myself"), uname == user ? QStringLiteral("1") : QStringLiteral("0")},
                    {QStringLiteral("name"), uname},
                    {QStringLiteral("email"), QString()},
                    {QStringLiteral("password"), QStringLiteral("****")},
                    {QStringLiteral("box_admin_rights"), right("BoxAdmin")},
                    {QStringLiteral("nas_rights"), right("NAS")},
                    {QStringLiteral("phone_rights"), right("Phone")},
                    {QStringLiteral("dial_rights"), right("Dial")}});
            }
            answer.insert(name, list);
            continue;
        }
        answer.insert(name, m_state.variable(value));
    }
    return QJsonDocument(answer).toJson(QJsonDocument::Indented).toStdString();
}

std::string SimWebInterface::webcm(const httplib::Request& req, int* status)
{
    const SimParams params = SimParams::fromRequest(req);
    const QString getpage = params.value(QStringLiteral("getpage"));
    // Current firmware has no webcm at all, its old login page included.
    const QString fw = m_state.firmware();
    if (fw == u"lua") {
        *status = 404;
        return "<html><body>404 Not Found</body></html>";
    }
    if (getpage.contains(QStringLiteral("login_sid.xml")))
        return m_login.formLoginAnswer(params);
    const QString password = m_state.user(QString()).value(QStringLiteral("password")).toString();
    const bool allowed = fw == u"nologin" ? params.value(QStringLiteral("login:command/password")) == password
                                          : m_state.validSession(params.value(QStringLiteral("sid")));
    if (!allowed)
        return simLoginPage();

    for (const auto& [name, value] : params.items) {
        if (!name.contains(u':') || name.startsWith(QStringLiteral("var:")) ||
            name.startsWith(QStringLiteral("login:")))
            continue;
        if (name == u"telcfg:command/Dial") {
            if (!value.isEmpty())
                m_state.recordAction(
                    {{QStringLiteral("action"), QStringLiteral("dial")},
                     {QStringLiteral("number"), value},
                     {QStringLiteral("port"), m_state.variable(QStringLiteral("telcfg:settings/DialPort"))},
                     {QStringLiteral("via"), QStringLiteral("webcm")}});
        } else if (name == u"telcfg:command/Hangup") {
            m_state.recordAction({{QStringLiteral("action"), QStringLiteral("hangup")},
                                  {QStringLiteral("via"), QStringLiteral("webcm")}});
        } else if (name.startsWith(QStringLiteral("telcfg:command/"))) {
            m_state.recordAction(
                {{QStringLiteral("action"), name.mid(15)}, {QStringLiteral("via"), QStringLiteral("webcm")}});
        } else if (req.method == "POST") {
            m_state.setVariable(name, value);
            m_state.recordAction({{QStringLiteral("action"), QStringLiteral("set")},
                                  {QStringLiteral("name"), name},
                                  {QStringLiteral("value"), value},
                                  {QStringLiteral("via"), QStringLiteral("webcm")}});
        }
    }

    if (getpage == u"../html/query.txt") {
        static const QRegularExpression indexed(QStringLiteral("^var:n\\[(\\d+)\\]$"));
        QString lines;
        for (const auto& [name, value] : params.items)
            if (indexed.match(name).hasMatch())
                lines += m_state.variable(value) + u'\n';
        return lines.toStdString();
    }
    if (getpage.endsWith(QStringLiteral("config.def"))) {
        const Scenario& s = m_state.scenario();
        return QStringLiteral(
                   "<? setvariable var:ProduktName '%1' ?>\n<? setvariable var:FirmwareVersion '%2' ?>\n"
                   "<? setvariable var:showtcom '0' ?>\n")
            .arg(s.value(QStringLiteral("model")).toString(),
                 s.value(QStringLiteral("firmwareVersion")).toString())
            .toStdString();
    }
    if (params.has(QStringLiteral("var:pagename")))
        return QStringLiteral("<html><body><form><input type=\"hidden\" name=\"var:pagename\" value=\"%1\">"
                              "<input type=\"hidden\" name=\"var:menu\" value=\"%2\"></form></body></html>\n")
            .arg(params.value(QStringLiteral("var:pagename")), params.value(QStringLiteral("var:menu")))
            .toStdString();
    return "<html> </html>\n";
}
