// The simulator passes call monitor bytes through as given and refuses a broken scenario.
#include "TestSupport.h"

#include <QTcpSocket>
#include <QTest>

using namespace Qt::StringLiterals;

class TestBoxsim : public QObject
{
    Q_OBJECT
private slots:
    void monitorBytesPassUnchanged();
    void badScenarioIsAnError();
};

void TestBoxsim::monitorBytesPassUnchanged()
{
    SimulatorProcess sim;
    QVERIFY2(sim.isRunning(), qPrintable(sim.error()));
    QTcpSocket client;
    client.connectToHost(u"127.0.0.1"_s, quint16(sim.port(u"monitor"_s)));
    QVERIFY(client.waitForConnected(5000));
    QTRY_VERIFY(sim.control("GET", u"/_sim/monitor/clients"_s).contains("\"clients\":1"));

    const QByteArray line = "21.11.26 10:00:00;RING;0;0301234567;5551234;SIP0;\r\n";
    QVERIFY(!sim.control("POST", u"/_sim/monitor/raw"_s, line.left(10)).isNull());
    QVERIFY(!sim.control("POST", u"/_sim/monitor/raw"_s, line.mid(10)).isNull());
    QByteArray received;
    QTRY_VERIFY((received += client.readAll()).size() >= line.size());
    QCOMPARE(received, line);

    sim.control("POST", u"/_sim/monitor/drop"_s);
    QTRY_COMPARE(client.state(), QAbstractSocket::UnconnectedState);
}

void TestBoxsim::badScenarioIsAnError()
{
    QTemporaryDir dir;
    const QString path = dir.filePath(u"broken.json"_s);
    QFile f(path);
    QVERIFY(f.open(QIODevice::WriteOnly));
    f.write("{ not json");
    f.close();
    QProcess p;
    p.start(QStringLiteral(TONDREL_BOXSIM_PATH), {u"--scenario"_s, path, u"--web-port"_s, u"0"_s});
    QVERIFY(p.waitForFinished(10000));
    QCOMPARE(p.exitCode(), 1);
    QVERIFY(p.readAllStandardError().startsWith("tondrel-boxsim: "));
}

QTEST_GUILESS_MAIN(TestBoxsim)
#include "tst_boxsim.moc"
