#include "BoxSimulator.h"
#include "Scenario.h"

#include <CLI/CLI.hpp>

#include <QCoreApplication>
#include <QJsonDocument>
#include <QSocketNotifier>

#include <csignal>
#include <cstdio>
#include <iostream>
#include <sys/socket.h>
#include <unistd.h>

namespace {
int g_signalPipe[2] = {-1, -1};

void onSignal(int)
{
    const char c = 1;
    [[maybe_unused]] const auto n = ::write(g_signalPipe[1], &c, 1);
}
} // namespace

int main(int argc, char** argv)
{
    CLI::App cli{"Simulated FRITZ!Box on 127.0.0.1 for the demo and the tests", "tondrel-boxsim"};
    std::string scenarioPath;
    SimulatorPorts wanted;
    cli.add_option("--scenario", scenarioPath, "Scenario file (JSON): firmware, users, journal, radios, ...");
    cli.add_option("--web-port", wanted.web, "Web interface port (0: any free port)")
        ->check(CLI::Range(0, 65535));
    cli.add_option("--monitor-port", wanted.monitor, "Call monitor port (0: any)")
        ->check(CLI::Range(0, 65535));
    cli.add_option("--tr064-port", wanted.tr064, "TR-064 port (0: any)")->check(CLI::Range(0, 65535));
    cli.add_option("--ssdp-port", wanted.ssdp, "SSDP answer port (0: any; not served unless given)")
        ->check(CLI::Range(0, 65535));
    cli.add_option("--https-port", wanted.https, "HTTPS remote-access port (0: any; not served unless given)")
        ->check(CLI::Range(0, 65535));
    try {
        cli.parse(argc, argv);
    } catch (const CLI::Success& e) {
        return cli.exit(e);
    } catch (const CLI::ParseError& e) {
        std::cerr << "tondrel-boxsim: " << e.what() << "\n";
        return 2;
    }

    QCoreApplication app(argc, argv);
    Scenario scenario;
    if (!scenarioPath.empty()) {
        QString error;
        if (!scenario.loadFile(QString::fromStdString(scenarioPath), &error)) {
            std::cerr << "tondrel-boxsim: " << error.toStdString() << "\n";
            return 1;
        }
    }

    BoxSimulator sim(scenario);
    QString error;
    if (!sim.start(wanted, &error)) {
        std::cerr << "tondrel-boxsim: " << error.toStdString() << "\n";
        return 1;
    }
    std::cout << QJsonDocument(sim.portsJson()).toJson(QJsonDocument::Compact).toStdString() << std::endl;

    // Stop cleanly on SIGINT and SIGTERM so the server threads are joined.
    if (::socketpair(AF_UNIX, SOCK_STREAM, 0, g_signalPipe) == 0) {
        std::signal(SIGINT, onSignal);
        std::signal(SIGTERM, onSignal);
        auto* notifier = new QSocketNotifier(g_signalPipe[0], QSocketNotifier::Read, &app);
        QObject::connect(notifier, &QSocketNotifier::activated, &app, [] { QCoreApplication::quit(); });
    }
    const int rc = app.exec();
    sim.stop();
    return rc;
}
