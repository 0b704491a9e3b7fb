// discover against the simulator's SSDP answers.
#include "TestSupport.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTest>

class TestCliDiscover : public QObject
{
    Q_OBJECT
private slots:
    void findsTheSimulatedRouter();
};

void TestCliDiscover::findsTheSimulatedRouter()
{
    SimulatorProcess sim({QStringLiteral("--ssdp-port"), QStringLiteral("0")});
    QVERIFY2(sim.isRunning(), qPrintable(sim.error()));
    TempEnv env;
    const QString target = QStringLiteral("127.0.0.1:%1").arg(sim.port(QStringLiteral("ssdp")));
    CliResult r = runCli(env, {QStringLiteral("discover"), QStringLiteral("--timeout"), QStringLiteral("1"),
                               QStringLiteral("--ssdp-target"), target, QStringLiteral("--json")});
    QCOMPARE(r.exitCode, 0);
    const QJsonArray devices = QJsonDocument::fromJson(r.out).array();
    QCOMPARE(devices.size(), 1); // the router answers twice, listed once
    QCOMPARE(devices.at(0).toObject().value(QStringLiteral("host")).toString(), QStringLiteral("127.0.0.1"));
    QVERIFY(devices.at(0).toObject().value(QStringLiteral("model")).toString().startsWith(u"FRITZ!Box 7590"));

    r = runCli(env, {QStringLiteral("discover"), QStringLiteral("--ssdp-target"), QStringLiteral("nonsense")});
    QCOMPARE(r.exitCode, 2);
}

QTEST_GUILESS_MAIN(TestCliDiscover)
#include "tst_cli_discover.moc"
