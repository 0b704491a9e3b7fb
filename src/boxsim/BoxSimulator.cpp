#include "BoxSimulator.h"

#include "SelfSignedCertificate.h"

#include <QJsonDocument>
#include <QMetaObject>

#include <httplib.h>

#include <QJsonArray>

BoxSimulator::BoxSimulator(Scenario& scenario, QObject* parent)
    : QObject(parent), m_scenario(scenario), m_state(scenario), m_login(m_state),
      m_webInterface(m_state, m_login), m_tr064Service(m_state), m_ssdp(scenario),
      m_phonebook(scenario, [this](const QString& sid) { return m_state.validSession(sid); })
{
    m_webInterface.setJournal(&m_journal);
    // The router writes every finished call into its journal.
    m_monitorControl.setCallEndedHandler(
        [this](const JournalServer::EndedCall& call) { m_journal.addEndedCall(call); });
}

BoxSimulator::~BoxSimulator()
{
    stop();
}

bool BoxSimulator::bindServer(httplib::Server& server, int wanted, int* bound, QString* error,
                              const char* what)
{
    if (wanted == 0) {
        *bound = server.bind_to_any_port("127.0.0.1");
    } else {
        *bound = server.bind_to_port("127.0.0.1", wanted) ? wanted : -1;
    }
    if (*bound <= 0) {
        *error = QStringLiteral("cannot bind the %1 port %2").arg(QString::fromLatin1(what)).arg(wanted);
        return false;
    }
    return true;
}

void BoxSimulator::runServer(httplib::Server& server)
{
    m_threads.emplace_back([&server] { server.listen_after_bind(); });
}

bool BoxSimulator::start(const SimulatorPorts& wanted, QString* error)
{
    m_web = std::make_unique<httplib::Server>();
    m_web->set_pre_routing_handler([](const httplib::Request& req, httplib::Response&) {
        SimPhonebook::keepFormBodyRaw(req);
        return httplib::Server::HandlerResponse::Unhandled;
    });
    installWebRoutes(*m_web);
    installControlRoutes(*m_web);
    if (!bindServer(*m_web, wanted.web, &m_ports.web, error, "web"))
        return false;

    m_tr064 = std::make_unique<httplib::Server>();
    m_tr064Service.install(*m_tr064, "");
    if (!bindServer(*m_tr064, wanted.tr064, &m_ports.tr064, error, "TR-064"))
        return false;
    m_scenario.setValue(QStringLiteral("tr064Port"), m_ports.tr064); // for the SSDP description URLs

    if (!m_monitor.listen(quint16(wanted.monitor))) {
        *error = QStringLiteral("cannot bind the call monitor port %1").arg(wanted.monitor);
        return false;
    }
    m_ports.monitor = m_monitor.port();

    if (wanted.ssdp >= 0) {
        if (!m_ssdp.bind(quint16(wanted.ssdp))) {
            *error = QStringLiteral("cannot bind the SSDP port %1").arg(wanted.ssdp);
            return false;
        }
        m_ports.ssdp = m_ssdp.port();
    }

    if (wanted.https >= 0) {
        const QString cert = m_tlsDir.filePath(QStringLiteral("cert.pem"));
        const QString key = m_tlsDir.filePath(QStringLiteral("key.pem"));
        if (!m_tlsDir.isValid() || !writeSelfSignedCertificate(cert, key, QStringLiteral("fritz.box"))) {
            *error = QStringLiteral("cannot make the simulator's certificate");
            return false;
        }
        auto https = std::make_unique<httplib::SSLServer>(cert.toLocal8Bit().constData(),
                                                          key.toLocal8Bit().constData());
        if (!https->is_valid()) {
            *error = QStringLiteral("cannot start the HTTPS server");
            return false;
        }
        installRemoteAccessCheck(*https);
        installWebRoutes(*https);
        m_tr064Service.install(*https, "/tr064");
        m_https = std::move(https);
        if (!bindServer(*m_https, wanted.https, &m_ports.https, error, "HTTPS"))
            return false;
        runServer(*m_https);
    }

    runServer(*m_web);
    runServer(*m_tr064);
    return true;
}

void BoxSimulator::stop()
{
    for (auto* server : {m_web.get(), m_tr064.get(), m_https.get()})
        if (server)
            server->stop();
    for (auto& t : m_threads)
        if (t.joinable())
            t.join();
    m_threads.clear();
}

QJsonObject BoxSimulator::portsJson() const
{
    QJsonObject o{{QStringLiteral("web"), m_ports.web},
                  {QStringLiteral("monitor"), m_ports.monitor},
                  {QStringLiteral("tr064"), m_ports.tr064}};
    o.insert(QStringLiteral("ssdp"), m_ports.ssdp >= 0 ? QJsonValue(m_ports.ssdp) : QJsonValue());
    o.insert(QStringLiteral("https"), m_ports.https >= 0 ? QJsonValue(m_ports.https) : QJsonValue());
    return o;
}

void BoxSimulator::installWebRoutes(httplib::Server& server)
{
    m_login.install(server);
    m_webInterface.install(server);
    m_phonebook.install(server);
    m_journal.installRoutes(server);
}

void BoxSimulator::installRemoteAccessCheck(httplib::Server& server)
{
    // Remote access asks for a router user before any page: by basic authentication, or by
    // digest as older firmware does (scenario "remoteAuth": "digest").
    server.set_pre_routing_handler([this](const httplib::Request& req, httplib::Response& res) {
        SimPhonebook::keepFormBodyRaw(req);
        if (req.path.rfind("/tr064/", 0) == 0)
            return httplib::Server::HandlerResponse::Unhandled;
        const bool digest = m_state.scenario().value(QStringLiteral("remoteAuth")).toString() == u"digest";
        const QByteArray header = QByteArray::fromStdString(req.get_header_value("Authorization"));
        if (digest) {
            if (!m_tr064Service.authenticate(req).isNull())
                return httplib::Server::HandlerResponse::Unhandled;
            m_state.recordRequest(QString::fromStdString(req.method), QString::fromStdString(req.path));
            res.status = 401;
            res.set_header("WWW-Authenticate", m_tr064Service.digestChallenge());
            res.set_content("<html><body>401 Unauthorized</body></html>", "text/html");
            return httplib::Server::HandlerResponse::Handled;
        }
        if (header.startsWith("Basic ")) {
            const QString pair = QString::fromLatin1(QByteArray::fromBase64(header.mid(6)));
            const QString name = pair.section(u':', 0, 0);
            const QJsonObject user = m_state.user(name);
            if (!user.isEmpty() && user.value(QStringLiteral("password")).toString() == pair.section(u':', 1))
                return httplib::Server::HandlerResponse::Unhandled;
        }
        m_state.recordRequest(QString::fromStdString(req.method), QString::fromStdString(req.path));
        res.status = 401;
        res.set_header("WWW-Authenticate", "Basic realm=\"HTTPS Access\"");
        res.set_content("<html><body>401 Unauthorized</body></html>", "text/html");
        return httplib::Server::HandlerResponse::Handled;
    });
}

void BoxSimulator::installControlRoutes(httplib::Server& server)
{
    // Raw call monitor bytes, exactly as given (tests use this for split and joined lines).
    server.Post("/_sim/monitor/raw", [this](const httplib::Request& req, httplib::Response& res) {
        const QByteArray data = QByteArray::fromStdString(req.body);
        QMetaObject::invokeMethod(
            &m_monitor, [this, data] { m_monitor.send(data); }, Qt::QueuedConnection);
        res.set_content("{\"ok\":true}", "application/json");
    });
    server.Post("/_sim/monitor/drop", [this](const httplib::Request&, httplib::Response& res) {
        QMetaObject::invokeMethod(
            &m_monitor, [this] { m_monitor.dropClients(); }, Qt::QueuedConnection);
        res.set_content("{\"ok\":true}", "application/json");
    });
    server.Get("/_sim/monitor/clients", [this](const httplib::Request&, httplib::Response& res) {
        int count = 0;
        QMetaObject::invokeMethod(
            &m_monitor, [this] { return m_monitor.clientCount(); }, Qt::BlockingQueuedConnection, &count);
        res.set_content(QStringLiteral("{\"clients\":%1}").arg(count).toStdString(), "application/json");
    });
    m_monitorControl.installRoutes(server);
    m_phonebook.installControl(server);
    m_journal.installControlRoutes(server);
    // What the router was asked to do, and every request it got (control requests excepted).
    server.Get("/_sim/actions", [this](const httplib::Request&, httplib::Response& res) {
        res.set_content(QJsonDocument(m_state.actions()).toJson(QJsonDocument::Compact).toStdString(),
                        "application/json");
    });
    server.Get("/_sim/requests", [this](const httplib::Request&, httplib::Response& res) {
        res.set_content(QJsonDocument(m_state.requests()).toJson(QJsonDocument::Compact).toStdString(),
                        "application/json");
    });
    server.Post("/_sim/clear", [this](const httplib::Request&, httplib::Response& res) {
        m_state.clearRecords();
        res.set_content("{\"ok\":true}", "application/json");
    });
    server.Get("/_sim/variable", [this](const httplib::Request& req, httplib::Response& res) {
        const QString name = QString::fromStdString(req.get_param_value("name"));
        res.set_content(QJsonDocument(QJsonObject{{name, m_state.variable(name)}})
                            .toJson(QJsonDocument::Compact)
                            .toStdString(),
                        "application/json");
    });
    server.Get("/_sim/scenario", [this](const httplib::Request&, httplib::Response& res) {
        res.set_content(QJsonDocument(m_scenario.data()).toJson(QJsonDocument::Compact).toStdString(),
                        "application/json");
    });
}
