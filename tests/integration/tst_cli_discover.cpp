// discover against the simulator's SSDP answers.
#include "TestSupport.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTest>

using namespace Qt::StringLiterals;

class TestCliDiscover : public QObject
{
    Q_OBJECT
private slots:
    void findsTheSimulatedRouter();
};

void TestCliDiscover::findsTheSimulatedRouter()
{
    SimulatorProcess sim({u"--ssdp-port"_s, u"0"_s});
    QVERIFY2(sim.isRunning(), qPrintable(sim.error()));
    TempEnv env;
    const QString target = u"127.0.0.1:%1"_s.arg(sim.port(u"ssdp"_s));
    CliResult r =
        runCli(env, {u"discover"_s, u"--timeout"_s, u"1"_s, u"--ssdp-target"_s, target, u"--json"_s});
    QCOMPARE(r.exitCode, 0);
    const QJsonArray devices = QJsonDocument::fromJson(r.out).array();
    QCOMPARE(devices.size(), 1); // the router answers twice, listed once
    QCOMPARE(devices.at(0).toObject().value(u"host"_s).toString(), u"127.0.0.1"_s);
    QVERIFY(devices.at(0).toObject().value(u"model"_s).toString().startsWith(u"FRITZ!Box 7590"));

    r = runCli(env, {u"discover"_s, u"--ssdp-target"_s, u"nonsense"_s});
    QCOMPARE(r.exitCode, 2);
}

QTEST_GUILESS_MAIN(TestCliDiscover)
#include "tst_cli_discover.moc"
