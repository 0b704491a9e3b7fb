// tondrel-cli setup against the simulator: the new location takes its dialling context, dial
// port and remote host from the router; a user without the settings right or a wrong password
// writes nothing.
#include "TestSupport.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {
QString writeScenario(const TempEnv& env, const QByteArray& json)
{
    const QString path = env.root.filePath(u"scenario.json"_s);
    QFile f(path);
    f.open(QIODevice::WriteOnly);
    f.write(json);
    return path;
}

CliResult setup(const TempEnv& env, SimulatorProcess& sim, const QByteArray& password)
{
    return runCli(env,
                  {u"--json"_s, u"setup"_s, u"--host"_s, u"127.0.0.1"_s, u"--web-port"_s,
                   QString::number(sim.port(u"web"_s)), u"--user"_s, u"anna"_s, u"--name"_s, u"Zurich"_s,
                   u"--password-stdin"_s},
                  password + "\n");
}

const QByteArray kUsers = R"("users":[{"name":"anna","password":"pw"},{"name":"boxuser98","password":"x"}])";
} // namespace

class TestSetupCli : public QObject
{
    Q_OBJECT
private slots:
    void locationComesFromTheRouter_data();
    void locationComesFromTheRouter();
    void nothingIsWrittenOnFailure_data();
    void nothingIsWrittenOnFailure();
};

void TestSetupCli::locationComesFromTheRouter_data()
{
    QTest::addColumn<QByteArray>("variables");
    QTest::addColumn<QString>("remoteHost");
    QTest::addColumn<int>("remotePort");
    QTest::addColumn<QString>("remoteUser");

    const QByteArray base =
        R"("telcfg:settings/Location/LKZ":"41","telcfg:settings/Location/LKZPrefix":"00",)"
        R"("telcfg:settings/Location/OKZ":"44","telcfg:settings/Location/OKZPrefix":"0",)"
        R"("telcfg:settings/DialPort":"52","ddns:settings/account0/domain":"home.dyndns.org",)"
        R"("remoteman:settings/username":"remote")";
    QTest::newRow("MyFRITZ! registered")
        << base +
               R"(,"jasonii:settings/is_box_registered":"1","jasonii:settings/enabled":"1",)"
               R"("jasonii:settings/dyndnsname":"abc123.myfritz.net","jasonii:settings/user_email":"a@example.org")"
        << u"abc123.myfritz.net"_s << 443 << QString();
    QTest::newRow("dynamic DNS with its port and user")
        << base + R"(,"remoteman:settings/https_port":"4443")" << u"home.dyndns.org"_s << 4443 << u"remote"_s;
}

void TestSetupCli::locationComesFromTheRouter()
{
    QFETCH(QByteArray, variables);
    QFETCH(QString, remoteHost);
    QFETCH(int, remotePort);
    QFETCH(QString, remoteUser);
    TempEnv env;
    SimulatorProcess sim(
        {u"--scenario"_s, writeScenario(env, "{" + kUsers + ",\"variables\":{" + variables + "}}")});
    QVERIFY2(sim.isRunning(), qPrintable(sim.error()));

    const CliResult r = setup(env, sim, "pw");
    QVERIFY2(r.exitCode == 0, r.err.constData());
    const QJsonObject result = QJsonDocument::fromJson(r.out).object();
    QCOMPARE(result.value(u"users"_s).toArray(), QJsonArray{u"anna"_s});

    const CliResult shown = runCli(env, {u"--json"_s, u"location"_s, u"show"_s});
    QVERIFY2(shown.exitCode == 0, shown.err.constData());
    const QJsonObject loc = QJsonDocument::fromJson(shown.out).object();
    QCOMPARE(loc.value(u"uid"_s).toString(), result.value(u"uid"_s).toString());
    QCOMPARE(loc.value(u"Prefixis"_s).toArray(), (QJsonArray{u"00"_s, u"41"_s, u"0"_s, u"44"_s}));
    QCOMPARE(loc.value(u"dialport"_s).toInt(), 52);
    QCOMPARE(loc.value(u"RemoteHost"_s).toString(), remoteHost);
    QCOMPARE(loc.value(u"RemoteSSLPort"_s).toInt(), remotePort);
    QCOMPARE(loc.value(u"RemoteUser"_s).toString(), remoteUser);
    QVERIFY(!loc.value(u"RemoteAccess"_s).toBool());
    QVERIFY(loc.value(u"passwordSet"_s).toBool());
    // The router's own numbers came along.
    const QJsonArray lines = loc.value(u"Lines"_s).toArray();
    QVERIFY(!lines.isEmpty());
    QCOMPARE(lines.first().toObject().value(u"Line"_s).toString(), u"5551234"_s);

    // The location works: the router's book can be read with what setup stored.
    QCOMPARE(runCli(env, {u"phonebook"_s, u"show"_s}).exitCode, 0);
}

void TestSetupCli::nothingIsWrittenOnFailure_data()
{
    QTest::addColumn<QByteArray>("scenario");
    QTest::addColumn<QByteArray>("password");
    QTest::addColumn<QByteArray>("message");
    QTest::newRow("user without the settings right")
        << QByteArray(R"({"users":[{"name":"anna","password":"pw","rights":{"Dial":2,"Phone":2}}]})")
        << QByteArray("pw") << QByteArray("no right to change the router's settings");
    QTest::newRow("wrong password") << "{" + kUsers + "}" << QByteArray("nope")
                                    << QByteArray("tondrel-cli: ");
}

void TestSetupCli::nothingIsWrittenOnFailure()
{
    QFETCH(QByteArray, scenario);
    QFETCH(QByteArray, password);
    QFETCH(QByteArray, message);
    TempEnv env;
    SimulatorProcess sim({u"--scenario"_s, writeScenario(env, scenario)});
    QVERIFY2(sim.isRunning(), qPrintable(sim.error()));
    const CliResult r = setup(env, sim, password);
    QCOMPARE(r.exitCode, 1);
    QVERIFY2(r.err.contains(message), r.err.constData());
    QVERIFY(
        QJsonDocument::fromJson(runCli(env, {u"--json"_s, u"location"_s, u"list"_s}).out).array().isEmpty());
}

QTEST_GUILESS_MAIN(TestSetupCli)
#include "tst_setup_cli.moc"
