// The router commands of tondrel-cli against the simulator: both firmware flavours, the box
// without login, wrong passwords, rights, TR-064 faults, remote access with a pinned
// certificate, and a router that is switched off.
#include "TestSupport.h"

#include <QElapsedTimer>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTcpServer>
#include <QTest>

namespace {
QString writeScenario(const TempEnv& env, const QByteArray& json)
{
    const QString path = env.root.filePath(QStringLiteral("scenario.json"));
    QFile f(path);
    f.open(QIODevice::WriteOnly);
    f.write(json);
    return path;
}

bool addLocation(const TempEnv& env, int webPort, int tr064Port, const QString& user = {},
                 const QByteArray& password = "secret")
{
    QStringList args{QStringLiteral("location"),        QStringLiteral("add"),
                     QStringLiteral("--name"),          QStringLiteral("sim"),
                     QStringLiteral("--host"),          QStringLiteral("127.0.0.1"),
                     QStringLiteral("--web-port"),      QString::number(webPort),
                     QStringLiteral("--tr064-port"),    QString::number(tr064Port),
                     QStringLiteral("--password-stdin")};
    if (!user.isEmpty())
        args << QStringLiteral("--user") << user;
    return runCli(env, args, password + "\n").exitCode == 0;
}

QJsonArray actionsOf(SimulatorProcess& sim, const QString& kind)
{
    QJsonArray out;
    for (const QJsonValue& v :
         QJsonDocument::fromJson(sim.control("GET", QStringLiteral("/_sim/actions"))).array())
        if (kind.isEmpty() || v.toObject().value(QStringLiteral("action")).toString() == kind)
            out.append(v);
    return out;
}

// A location setting by the command line.
bool setKey(const TempEnv& env, const char* key, const QString& value)
{
    return runCli(env, {QStringLiteral("location"), QStringLiteral("set"), QLatin1String(key), value})
               .exitCode == 0;
}

bool setRemotePassword(const TempEnv& env, const QByteArray& password)
{
    return runCli(env,
                  {QStringLiteral("location"), QStringLiteral("password"), QStringLiteral("--remote"),
                   QStringLiteral("--password-stdin")},
                  password + "\n")
               .exitCode == 0;
}

int closedPort()
{
    QTcpServer server;
    server.listen(QHostAddress::LocalHost, 0);
    return server.serverPort(); // closed again when the server goes
}
} // namespace

class TestBoxCli : public QObject
{
    Q_OBJECT
private slots:
    void loginInEveryFlavour_data()
    {
        QTest::addColumn<QByteArray>("scenario");
        QTest::addColumn<QString>("firmware");
        QTest::addColumn<QString>("session");
        QTest::addColumn<QString>("scheme");
        QTest::newRow("current firmware, PBKDF2 challenge")
            << QByteArray("{\"firmware\":\"lua\"}") << QStringLiteral("lua") << QStringLiteral("sid")
            << QStringLiteral("pbkdf2");
        QTest::newRow("current firmware offering MD5 only")
            << QByteArray("{\"firmware\":\"lua\",\"pbkdf2\":false}") << QStringLiteral("lua")
            << QStringLiteral("sid") << QStringLiteral("md5");
        QTest::newRow("older firmware with the form login")
            << QByteArray("{\"firmware\":\"form\"}") << QStringLiteral("form") << QStringLiteral("sid")
            << QStringLiteral("form");
        QTest::newRow("router without login")
            << QByteArray("{\"firmware\":\"nologin\"}") << QStringLiteral("form") << QStringLiteral("none")
            << QString();
    }
    void loginInEveryFlavour()
    {
        QFETCH(QByteArray, scenario);
        QFETCH(QString, firmware);
        QFETCH(QString, session);
        QFETCH(QString, scheme);
        TempEnv env;
        SimulatorProcess sim({QStringLiteral("--scenario"), writeScenario(env, scenario)});
        QVERIFY2(sim.isRunning(), qPrintable(sim.error()));
        QVERIFY(addLocation(env, sim.port(QStringLiteral("web")), sim.port(QStringLiteral("tr064"))));

        const CliResult r = runCli(env, {QStringLiteral("--json"), QStringLiteral("login")});
        QVERIFY2(r.exitCode == 0, r.err.constData());
        const QJsonObject o = QJsonDocument::fromJson(r.out).object();
        QCOMPARE(o.value(QStringLiteral("resultCode")).toInt(), 5);
        QCOMPARE(o.value(QStringLiteral("firmware")).toString(), firmware);
        QCOMPARE(o.value(QStringLiteral("session")).toString(), session);
        const QJsonArray logins = actionsOf(sim, QStringLiteral("login"));
        QCOMPARE(logins.size(), scheme.isEmpty() ? 0 : 1);
        if (!scheme.isEmpty())
            QCOMPARE(logins[0].toObject().value(QStringLiteral("scheme")).toString(), scheme);

        // The session carries a query in the firmware's own form.
        const CliResult q = runCli(env, {QStringLiteral("query"), QStringLiteral("telcfg:settings/DialPort"),
                                         QStringLiteral("no:such/variable")});
        QVERIFY2(q.exitCode == 0, q.err.constData());
        QCOMPARE(q.out, QByteArray("50\ner\n"));
    }

    void wrongPasswordThenRightPassword_data()
    {
        QTest::addColumn<QByteArray>("scenario");
        QTest::newRow("current firmware") << QByteArray("{\"firmware\":\"lua\"}");
        QTest::newRow("older firmware") << QByteArray("{\"firmware\":\"form\"}");
    }
    void wrongPasswordThenRightPassword()
    {
        QFETCH(QByteArray, scenario);
        TempEnv env;
        SimulatorProcess sim({QStringLiteral("--scenario"), writeScenario(env, scenario)});
        QVERIFY(sim.isRunning());
        QVERIFY(addLocation(env, sim.port(QStringLiteral("web")), sim.port(QStringLiteral("tr064")), {},
                            "wrong"));
        const CliResult bad = runCli(env, {QStringLiteral("login")});
        QCOMPARE(bad.exitCode, 1);
        QCOMPARE(bad.err, QByteArray("tondrel-cli: The password for the router is wrong.\n"));
        QCOMPARE(actionsOf(sim, QStringLiteral("loginFailed")).size(), 1);

        QCOMPARE(runCli(env,
                        {QStringLiteral("location"), QStringLiteral("password"),
                         QStringLiteral("--password-stdin")},
                        "secret\n")
                     .exitCode,
                 0);
        const CliResult good = runCli(env, {QStringLiteral("login")});
        QVERIFY2(good.exitCode == 0, good.err.constData());
        QVERIFY(good.out.contains("result: TNSessionResultLoggedIn"));
        QCOMPARE(actionsOf(sim, QStringLiteral("login")).size(), 1);
    }

    void commandsArriveAsSent_data()
    {
        QTest::addColumn<QByteArray>("scenario");
        QTest::addColumn<QStringList>("args");
        QTest::addColumn<QString>("kind");
        QTest::addColumn<QByteArray>("expected"); // the actions of that kind, as JSON
        // Older firmware knows no users: the location's user name stands for full rights.
        const QByteArray lua = "{\"firmware\":\"lua\"}";
        const QByteArray form = "{\"firmware\":\"form\"}";
        const QStringList dial{QStringLiteral("dial"), QStringLiteral("0301234"), QStringLiteral("--port"),
                               QStringLiteral("61")};
        QTest::newRow("dial by TR-064, port 61 becomes 6")
            << lua << dial << QStringLiteral("dial")
            << QByteArray("[{\"action\":\"dial\",\"number\":\"0301234\",\"port\":\"6\",\"user\":\"\",\"via\":"
                          "\"tr064\"}]");
        QTest::newRow("dial by web form, port 61 becomes 6")
            << form << dial << QStringLiteral("dial")
            << QByteArray("[{\"action\":\"dial\",\"number\":\"0301234\",\"port\":\"6\",\"via\":\"webcm\"}]");
        QTest::newRow("hang up by TR-064")
            << lua << QStringList{QStringLiteral("hangup")} << QStringLiteral("hangup")
            << QByteArray("[{\"action\":\"hangup\",\"user\":\"\",\"via\":\"tr064\"}]");
        QTest::newRow("hang up by web form")
            << form << QStringList{QStringLiteral("hangup")} << QStringLiteral("hangup")
            << QByteArray("[{\"action\":\"hangup\",\"via\":\"webcm\"}]");
        QTest::newRow("WLAN off by TR-064 switches both radios")
            << lua << QStringList{QStringLiteral("wlan"), QStringLiteral("off")} << QStringLiteral("set")
            << QByteArray("[{\"action\":\"set\",\"name\":\"wlan:settings/"
                          "ap_enabled\",\"user\":\"\",\"value\":\"0\",\"via\":\"tr064\"},"
                          "{\"action\":\"set\",\"name\":\"wlan:settings/"
                          "ap_enabled_scnd\",\"user\":\"\",\"value\":\"0\",\"via\":\"tr064\"}]");
        QTest::newRow("5 GHz off by web form")
            << form << QStringList{QStringLiteral("wlan"), QStringLiteral("5off")} << QStringLiteral("set")
            << QByteArray("[{\"action\":\"set\",\"name\":\"wlan:settings/"
                          "ap_enabled_scnd\",\"value\":\"0\",\"via\":\"webcm\"}]");
        QTest::newRow("DECT off on the Lua page")
            << lua << QStringList{QStringLiteral("dect"), QStringLiteral("off")} << QStringLiteral("setDECT")
            << QByteArray("[{\"action\":\"setDECT\",\"value\":\"0\",\"via\":\"/dect/dect_settings.lua\"}]");
        QTest::newRow("DECT on by web form")
            << form << QStringList{QStringLiteral("dect"), QStringLiteral("on")} << QStringLiteral("set")
            << QByteArray("[{\"action\":\"set\",\"name\":\"dect:settings/"
                          "enabled\",\"value\":\"1\",\"via\":\"webcm\"}]");
        QTest::newRow("diversion on dials the router code")
            << form << QStringList{QStringLiteral("diversion"), QStringLiteral("on")}
            << QStringLiteral("dial")
            << QByteArray("[{\"action\":\"dial\",\"number\":\"#96*5*\",\"port\":\"50\",\"via\":\"webcm\"}]");
    }
    void commandsArriveAsSent()
    {
        QFETCH(QByteArray, scenario);
        QFETCH(QStringList, args);
        QFETCH(QString, kind);
        QFETCH(QByteArray, expected);
        TempEnv env;
        SimulatorProcess sim({QStringLiteral("--scenario"), writeScenario(env, scenario)});
        QVERIFY(sim.isRunning());
        const QString user = scenario.contains("form") ? QStringLiteral("admin") : QString();
        QVERIFY(addLocation(env, sim.port(QStringLiteral("web")), sim.port(QStringLiteral("tr064")), user));
        const CliResult r = runCli(env, args);
        QVERIFY2(r.exitCode == 0, r.err.constData());
        QCOMPARE(QJsonDocument(actionsOf(sim, kind)).toJson(QJsonDocument::Compact), expected);
    }

    void statusAndPhoneLists_data()
    {
        QTest::addColumn<QByteArray>("scenario");
        QTest::addColumn<QString>("model");
        QTest::newRow("current firmware: information page")
            << QByteArray("{\"firmware\":\"lua\",\"language\":\"en\"}") << QStringLiteral("FRITZ!Box 7590");
        QTest::newRow("older firmware: configuration definition")
            << QByteArray("{\"firmware\":\"form\",\"language\":\"en\",\"model\":\"FRITZ!Box Fon WLAN "
                          "7170\",\"firmwareVersion\":\"29.04.87\"}")
            << QStringLiteral("FRITZ!Box Fon WLAN 7170");
    }
    void statusAndPhoneLists()
    {
        QFETCH(QByteArray, scenario);
        QFETCH(QString, model);
        TempEnv env;
        SimulatorProcess sim({QStringLiteral("--scenario"), writeScenario(env, scenario)});
        QVERIFY(sim.isRunning());
        const QString user = scenario.contains("form") ? QStringLiteral("admin") : QString();
        QVERIFY(addLocation(env, sim.port(QStringLiteral("web")), sim.port(QStringLiteral("tr064")), user));
        const CliResult status = runCli(env, {QStringLiteral("--json"), QStringLiteral("status")});
        QVERIFY2(status.exitCode == 0, status.err.constData());
        const QJsonObject o = QJsonDocument::fromJson(status.out).object();
        QCOMPARE(o.value(QStringLiteral("WLANStatus")).toInt(), 144);
        QCOMPARE(o.value(QStringLiteral("DECTStatus")).toInt(), 16);
        QCOMPARE(o.value(QStringLiteral("wlanSSID_scnd")).toString(),
                 QStringLiteral("FRITZ!Box 7590 XY 5GHz"));
        QCOMPARE(o.value(QStringLiteral("model")).toString(), model);
        QCOMPARE(o.value(QStringLiteral("language")).toString(), QStringLiteral("en"));

        const CliResult ext = runCli(env, {QStringLiteral("extensions"), QStringLiteral("refresh")});
        QVERIFY2(ext.exitCode == 0, ext.err.constData());
        QCOMPARE(QString::fromUtf8(ext.out),
                 QStringLiteral(
                     "1\tFON\tTelefon Küche\n2\tFON\tFax\n50\tS0\tISDN devices\n610\tDECT\tMobilteil 1\n"));
        QCOMPARE(runCli(env, {QStringLiteral("extensions"), QStringLiteral("list")}).out, ext.out);

        // A line the user hides stays hidden after the next refresh.
        QCOMPARE(runCli(env, {QStringLiteral("lines"), QStringLiteral("refresh")}).exitCode, 0);
        QCOMPARE(
            runCli(env, {QStringLiteral("location"), QStringLiteral("set"), QStringLiteral("Lines"),
                         QStringLiteral("[{\"Line\":\"5559876\",\"Title\":\"Mine\",\"HideList\":true}]")})
                .exitCode,
            0);
        const CliResult lines = runCli(env, {QStringLiteral("lines"), QStringLiteral("refresh")});
        QCOMPARE(QString::fromUtf8(lines.out),
                 QStringLiteral("5559876\tSIP1 (hidden in list)\n5551234\t5551234\n"));
        const CliResult fax = runCli(env, {QStringLiteral("faxlines"), QStringLiteral("refresh")});
        QCOMPARE(fax.out, QByteArray("5551235\t5551235\n"));
    }

    void refusedBeforeAnythingIsSent_data()
    {
        QTest::addColumn<QByteArray>("rights");
        QTest::addColumn<QStringList>("args");
        QTest::addColumn<QString>("message");
        QTest::addColumn<bool>("tr064Reached");
        QTest::newRow("no dial right") << QByteArray("{\"BoxAdmin\":2,\"Phone\":2,\"NAS\":2,\"App\":2}")
                                       << QStringList{QStringLiteral("dial"), QStringLiteral("123")}
                                       << QStringLiteral("lacks the right") << false;
        QTest::newRow("router refuses TR-064 for the user (606)")
            << QByteArray("{\"BoxAdmin\":2,\"Phone\":2,\"NAS\":2,\"Dial\":2}")
            << QStringList{QStringLiteral("dial"), QStringLiteral("123")}
            << QStringLiteral("TR-064 error 606") << true;
    }
    void refusedBeforeAnythingIsSent()
    {
        QFETCH(QByteArray, rights);
        QFETCH(QStringList, args);
        QFETCH(QString, message);
        QFETCH(bool, tr064Reached);
        TempEnv env;
        SimulatorProcess sim(
            {QStringLiteral("--scenario"),
             writeScenario(
                 env, "{\"firmware\":\"lua\",\"users\":[{\"name\":\"anna\",\"password\":\"pw\",\"rights\":" +
                          rights + "}]}")});
        QVERIFY(sim.isRunning());
        QVERIFY(addLocation(env, sim.port(QStringLiteral("web")), sim.port(QStringLiteral("tr064")),
                            QStringLiteral("anna"), "pw"));
        const CliResult r = runCli(env, args);
        QCOMPARE(r.exitCode, 1);
        QVERIFY2(r.err.startsWith("tondrel-cli: ") && r.err.count('\n') == 1, r.err.constData());
        QVERIFY2(QString::fromUtf8(r.err).contains(message), r.err.constData());
        QVERIFY(actionsOf(sim, QStringLiteral("dial")).isEmpty());
        bool reached = false;
        for (const QJsonValue& v :
             QJsonDocument::fromJson(sim.control("GET", QStringLiteral("/_sim/requests"))).array()) {
            const QString path = v.toObject().value(QStringLiteral("path")).toString();
            reached = reached || path.startsWith(QStringLiteral("/upnp/control/"));
            QVERIFY(path != u"/fon_num/dial_foncalls.lua");
        }
        QCOMPARE(reached, tr064Reached);
    }

    void remoteAccessAnswersADigestChallenge()
    {
        // Older firmware asks for HTTP digest on the remote-access port before any page.
        TempEnv env;
        SimulatorProcess sim({QStringLiteral("--https-port"), QStringLiteral("0"),
                              QStringLiteral("--scenario"),
                              writeScenario(env, "{\"remoteAuth\":\"digest\",\"users\":[{\"name\":\"anna\","
                                                 "\"password\":\"pw\"}]}")});
        QVERIFY(sim.isRunning());
        QVERIFY(addLocation(env, closedPort(), closedPort(), QStringLiteral("anna"), "pw"));
        QVERIFY(setKey(env, "RemoteHost", QStringLiteral("127.0.0.1")));
        QVERIFY(setKey(env, "RemoteSSLPort", QString::number(sim.port(QStringLiteral("https")))));
        QVERIFY(setKey(env, "RemoteAccess", QStringLiteral("true")));
        QVERIFY(setKey(env, "RemoteUser", QStringLiteral("anna")));
        QVERIFY(setRemotePassword(env, "pw"));
        const CliResult dial = runCli(env, {QStringLiteral("dial"), QStringLiteral("0301234")});
        QVERIFY2(dial.exitCode == 0, dial.err.constData());
        QCOMPARE(actionsOf(sim, QStringLiteral("dial")).size(), 1);

        // A wrong remote password is still refused, with one line.
        QVERIFY(setRemotePassword(env, "nope"));
        const CliResult refused = runCli(env, {QStringLiteral("dial"), QStringLiteral("0301234")});
        QCOMPARE(refused.exitCode, 1);
        QCOMPARE(actionsOf(sim, QStringLiteral("dial")).size(), 1);
    }

    void remoteAccessPinsTheCertificate()
    {
        TempEnv env;
        SimulatorProcess first({QStringLiteral("--https-port"), QStringLiteral("0")});
        QVERIFY(first.isRunning());
        QVERIFY(addLocation(env, closedPort(), closedPort()));
        QVERIFY(setKey(env, "RemoteHost", QStringLiteral("127.0.0.1")));
        QVERIFY(setKey(env, "RemoteSSLPort", QString::number(first.port(QStringLiteral("https")))));
        QVERIFY(setKey(env, "RemoteAccess", QStringLiteral("true")));
        QVERIFY(setKey(env, "RemoteUser", QString()));
        QVERIFY(setRemotePassword(env, "secret"));

        const CliResult login = runCli(env, {QStringLiteral("login")});
        QVERIFY2(login.exitCode == 0, login.err.constData());
        QVERIFY(login.out.contains("TNSessionRightDialRemote"));
        const CliResult shown = runCli(env, {QStringLiteral("location"), QStringLiteral("show")});
        QVERIFY2(shown.out.contains("RemoteCertificateKey = sha256//"), shown.out.constData());
        QVERIFY(runCli(env, {QStringLiteral("dial"), QStringLiteral("0301234")}).exitCode == 0);
        QCOMPARE(actionsOf(first, QStringLiteral("dial")).size(), 1);

        // A second router makes its own certificate: the pinned key no longer fits.
        SimulatorProcess second({QStringLiteral("--https-port"), QStringLiteral("0")});
        QVERIFY(second.isRunning());
        QVERIFY(setKey(env, "RemoteSSLPort", QString::number(second.port(QStringLiteral("https")))));
        const CliResult refused = runCli(env, {QStringLiteral("login")});
        QCOMPARE(refused.exitCode, 1);
        QVERIFY2(refused.err.contains("certificate"), refused.err.constData());
        QVERIFY(QJsonDocument::fromJson(second.control("GET", QStringLiteral("/_sim/requests")))
                    .array()
                    .isEmpty());

        // Accepting the new certificate: the key is cleared and pinned again at the next login.
        QVERIFY(setKey(env, "RemoteCertificateKey", QString()));
        QCOMPARE(runCli(env, {QStringLiteral("login")}).exitCode, 0);
        const CliResult again = runCli(env, {QStringLiteral("location"), QStringLiteral("show")});
        const auto keyLine = [](const QByteArray& out) {
            for (const QByteArray& line : out.split('\n'))
                if (line.startsWith("RemoteCertificateKey = sha256//"))
                    return line;
            return QByteArray();
        };
        QVERIFY(!keyLine(again.out).isEmpty());
        QVERIFY(keyLine(again.out) != keyLine(shown.out));
    }

    void switchedOffRouterGivesOneLine_data()
    {
        QTest::addColumn<QStringList>("args");
        const auto row = [](const char* name, QStringList args) { QTest::newRow(name) << args; };
        row("login", {QStringLiteral("login")});
        row("dial", {QStringLiteral("dial"), QStringLiteral("123")});
        row("status", {QStringLiteral("status")});
        row("extensions", {QStringLiteral("extensions"), QStringLiteral("refresh")});
    }
    void switchedOffRouterGivesOneLine()
    {
        QFETCH(QStringList, args);
        TempEnv env;
        QVERIFY(addLocation(env, closedPort(), closedPort()));
        QElapsedTimer clock;
        clock.start();
        const CliResult r = runCli(env, args, {}, 30000);
        QCOMPARE(r.exitCode, 1);
        QVERIFY2(r.err.startsWith("tondrel-cli: The router cannot be reached at 127.0.0.1:") &&
                     r.err.count('\n') == 1,
                 r.err.constData());
        QVERIFY(r.out.isEmpty());
        QVERIFY(clock.elapsed() < 20000);
    }
};

QTEST_GUILESS_MAIN(TestBoxCli)
#include "tst_boxcli.moc"
