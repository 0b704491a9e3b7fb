#pragma once

#include "CallMonitorControl.h"
#include "CallMonitorServer.h"
#include "JournalServer.h"
#include "RouterState.h"
#include "Scenario.h"
#include "SimLogin.h"
#include "SimPhonebook.h"
#include "SimTr064.h"
#include "SimWebInterface.h"
#include "SsdpResponder.h"

#include <QJsonObject>
#include <QObject>
#include <QTemporaryDir>

#include <memory>
#include <thread>

namespace httplib {
class Server;
}

struct SimulatorPorts
{
    int web = 0;
    int monitor = 0;
    int tr064 = 0;
    int ssdp = -1;  // -1: not served
    int https = -1; // -1: not served
};

// The simulated router on 127.0.0.1: web interface, TR-064, call monitor, SSDP and the
// control endpoint (/_sim/...) through which tests make things happen.
class BoxSimulator : public QObject
{
    Q_OBJECT
public:
    explicit BoxSimulator(Scenario& scenario, QObject* parent = nullptr);
    ~BoxSimulator() override;

    // Port 0 picks a free port. False and an error text when a port cannot be bound.
    bool start(const SimulatorPorts& wanted, QString* error);
    void stop();
    SimulatorPorts ports() const { return m_ports; }
    QJsonObject portsJson() const;

    CallMonitorServer& callMonitor() { return m_monitor; }

private:
    void installWebRoutes(httplib::Server& server);
    void installControlRoutes(httplib::Server& server);
    void installRemoteAccessCheck(httplib::Server& server);
    bool bindServer(httplib::Server& server, int wanted, int* bound, QString* error, const char* what);
    void runServer(httplib::Server& server);

    Scenario& m_scenario;
    RouterState m_state;
    SimLogin m_login;
    SimWebInterface m_webInterface;
    SimTr064 m_tr064Service;
    SimulatorPorts m_ports;
    CallMonitorServer m_monitor;
    CallMonitorControl m_monitorControl{m_monitor};
    JournalServer m_journal{m_state};
    SsdpResponder m_ssdp;
    SimPhonebook m_phonebook;
    QTemporaryDir m_tlsDir;
    std::unique_ptr<httplib::Server> m_web;
    std::unique_ptr<httplib::Server> m_tr064;
    std::unique_ptr<httplib::Server> m_https;
    std::vector<std::thread> m_threads;
};
