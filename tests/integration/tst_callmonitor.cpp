#include "TestSupport.h"

#include "base/Clock.h"
#include "base/NotificationCenter.h"
#include "base/SecretStore.h"
#include "base/SettingsKeys.h"
#include "base/SettingsStore.h"
#include "base/TNPreferences.h"
#include "monitor/NotificationPresenter.h"
#include "monitor/StreamListener.h"

#include <QDir>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSignalSpy>
#include <QTcpServer>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

class RecordingPresenter final : public NotificationPresenter
{
public:
    bool isAvailable() const override { return true; }
    QVariant deliver(const CallNotification& note, const QVariant&) override
    {
        titles << note.title + u": "_s + note.subtitle;
        return note.uid;
    }
    void withdraw(const QVariant&) override {}
    QStringList titles;
};

// The in-process listener, connected to the simulator's call monitor port.
struct Client
{
    QTemporaryDir dir;
    SettingsStore store{dir.filePath(u"settings.json"_s)};
    MemorySecretStore secrets;
    std::shared_ptr<TNPreferences> prefs = std::make_shared<TNPreferences>(store, secrets);
    NotificationCenter center;
    RecordingPresenter presenter;
    std::unique_ptr<StreamListener> listener;

    Client()
    {
        prefs->useNotifications = true;
        store.setValue(keys::MonitorOpenExternCalls, true);
        listener = std::make_unique<StreamListener>(StreamListenerServices{
            .preferences = [p = prefs] { return p; },
            .settings = store,
            .center = center,
            .clock = Clock::system(),
            .presenter = &presenter,
            .memoDetails = {},
            .openCallmonitorWindow = {},
            .openURL = {},
            .setStatusItemState = {},
        });
    }
};

QString summary(const CallRecord& r)
{
    return u"%1/%2/%3/%4/%5/%6"_s.arg(r.cmd)
        .arg(r.calltype)
        .arg(r.connected ? u"c"_s : u"-"_s, r.number, r.line, r.extension);
}

QStringList summaries(const StreamListener& l)
{
    QStringList s;
    for (const auto& r : l.monitorCalls())
        s << summary(r);
    return s;
}

QString states(const StreamListener& l)
{
    QStringList parts;
    for (auto it = l.extensions().begin(); it != l.extensions().end(); ++it)
        parts << u"%1=%2"_s.arg(it.key()).arg(it.value());
    return parts.join(u',');
}

bool waitForClients(SimulatorProcess& sim, int n, int timeoutMs = 10000)
{
    QElapsedTimer t;
    t.start();
    const QByteArray want = "{\"clients\":" + QByteArray::number(n) + "}";
    while (t.elapsed() < timeoutMs) {
        if (sim.control("GET", u"/_sim/monitor/clients"_s) == want)
            return true;
        QTest::qWait(50);
    }
    return false;
}

// "ring {json}", "dial NUMBER EXT" (the program dials), ...
using Steps = QStringList;

// Ports nothing listens on, distinct: all probes are held until the end.
QStringList freePorts(int n)
{
    std::list<QTcpServer> probes(n);
    QStringList out;
    for (QTcpServer& p : probes)
        out << (p.listen(QHostAddress::LocalHost) ? QString::number(p.serverPort()) : QString());
    return out;
}

// A location on 127.0.0.1 with the given ports; false when the command line refuses it.
bool addLocation(TempEnv& env, const QStringList& ports, const QByteArray& input = {})
{
    return runCli(env, QStringList{u"location"_s, u"add"_s, u"--host"_s, u"127.0.0.1"_s} + ports, input)
               .exitCode == 0;
}

// "tondrel-cli monitor" in the background.
void startMonitor(QProcess& cli, const TempEnv& env, const QStringList& arguments)
{
    cli.start(QStringLiteral(TONDREL_CLI_PATH),
              QStringList{u"--config-dir"_s, env.configDir(), u"--data-dir"_s, env.dataDir(), u"--secrets"_s,
                          u"file"_s} +
                  arguments);
}

} // namespace

class TestCallMonitor : public QObject
{
    Q_OBJECT
private slots:
    void sequences_data()
    {
        QTest::addColumn<Steps>("steps");
        QTest::addColumn<int>("lines");
        QTest::addColumn<QStringList>("records");
        QTest::addColumn<QString>("extensions");
        QTest::addColumn<QStringList>("notes");

        QTest::newRow("incoming answered")
            << Steps{u"ring {\"caller\":\"0301234567\",\"called\":\"5551234\"}"_s,
                     u"connect {\"connID\":0,\"extension\":\"11\"}"_s,
                     u"disconnect {\"connID\":0,\"duration\":42}"_s}
            << 3 << QStringList{u"DISCONNECT/1/c/0301234567/5551234/11"_s} << u"611=1"_s
            << QStringList{u"Incoming call: Unknown caller"_s, u"Call ended: Unknown caller"_s};
        QTest::newRow("outgoing from a telephone")
            << Steps{u"call {\"extension\":\"1\",\"caller\":\"5551234\",\"called\":\"0309876\"}"_s,
                     u"connect {\"connID\":0,\"extension\":\"1\"}"_s, u"disconnect {\"connID\":0}"_s}
            << 3 << QStringList{u"DISCONNECT/3/c/0309876/5551234/1"_s} << u"1=1"_s
            << QStringList{u"Call ended: Unknown caller"_s};
        QTest::newRow("outgoing from the program")
            << Steps{u"dial 0309876 2"_s,
                     u"call {\"extension\":\"2\",\"caller\":\"5551234\",\"called\":\"0309876\"}"_s,
                     u"disconnect {\"connID\":0}"_s}
            << 2 << QStringList{u"DISCONNECT/3/-/0309876/5551234/2"_s} << u"2=1"_s
            << QStringList{u"Please pick up the handset: Unknown caller"_s, u"No answer: Unknown caller"_s};
        QTest::newRow("internal call")
            << Steps{u"dial **612 11"_s} << 0 << QStringList{} << u"611=3,612=3"_s << QStringList{};
        QTest::newRow("withheld caller")
            << Steps{u"ring {\"caller\":\"\",\"called\":\"5551234\",\"trunk\":\"ISDN\"}"_s,
                     u"connect {\"connID\":0,\"extension\":\"4\"}"_s}
            << 2 << QStringList{u"CONNECT/1/c//5551234/4"_s}
            << u"50=3,51=3,52=3,53=3,54=3,55=3,56=3,57=3,58=3,59=3"_s
            << QStringList{u"Incoming call: Number withheld"_s};
    }
    void sequences()
    {
        QFETCH(Steps, steps);
        QFETCH(int, lines);
        QFETCH(QStringList, records);
        QFETCH(QString, extensions);
        QFETCH(QStringList, notes);

        SimulatorProcess sim;
        QVERIFY2(sim.isRunning(), qPrintable(sim.error()));
        Client client;
        QSignalSpy processed(client.listener.get(), &StreamListener::lineProcessed);
        client.listener->connectToHost(u"127.0.0.1"_s, quint16(sim.port(u"monitor"_s)));
        QTRY_VERIFY(client.listener->isConnected());
        QVERIFY(waitForClients(sim, 1));

        for (const QString& step : steps) {
            const QString verb = step.section(u' ', 0, 0);
            if (verb == u"dial") {
                client.listener->addNewCallForExtensionForContact(step.section(u' ', 1, 1),
                                                                  step.section(u' ', 2, 2), {});
                continue;
            }
            const QByteArray answer =
                sim.control("POST", u"/_sim/monitor/"_s + verb, step.section(u' ', 1).toUtf8());
            QVERIFY2(answer.contains("\"line\""), answer.constData());
        }
        QTRY_COMPARE(processed.count(), lines);
        QCOMPARE(summaries(*client.listener), records);
        QCOMPARE(states(*client.listener), extensions);
        QCOMPARE(client.presenter.titles, notes);
    }

    // Bytes one at a time, or all lines in one write, give the records of one line per write.
    void deliveryEquivalence()
    {
        const QByteArray stream = "21.11.26 10:00:00;RING;0;0301111111;5551234;SIP0;\r\n"
                                  "21.11.26 10:00:01;RING;1;;5551234;SIP1;\n"
                                  "21.11.26 10:00:03;CONNECT;1;11;;\n"
                                  "21.11.26 10:00:09;DISCONNECT;0;0\n"
                                  "21.11.26 10:00:20;DISCONNECT;1;17;\n";
        SimulatorProcess sim;
        QVERIFY2(sim.isRunning(), qPrintable(sim.error()));
        QStringList expected;
        QString expectedStates;
        for (int mode = 0; mode < 3; ++mode) {
            Client client;
            QSignalSpy processed(client.listener.get(), &StreamListener::lineProcessed);
            client.listener->connectToHost(u"127.0.0.1"_s, quint16(sim.port(u"monitor"_s)));
            QTRY_VERIFY(client.listener->isConnected());
            QVERIFY(waitForClients(sim, 1));
            if (mode == 0) {
                for (const QByteArray& line : stream.split('\n'))
                    if (!line.isEmpty())
                        sim.control("POST", u"/_sim/monitor/raw"_s, line + '\n');
            } else if (mode == 1) {
                for (char c : stream)
                    sim.control("POST", u"/_sim/monitor/raw"_s, QByteArray(1, c));
            } else {
                sim.control("POST", u"/_sim/monitor/raw"_s, stream);
            }
            QTRY_COMPARE(processed.count(), 5);
            if (mode == 0) {
                expected = summaries(*client.listener);
                expectedStates = states(*client.listener);
                QCOMPARE(expected, (QStringList{u"DISCONNECT/2/-/0301111111/5551234/"_s,
                                                u"DISCONNECT/1/c//5551234/11"_s}));
            } else {
                QCOMPARE(summaries(*client.listener), expected);
                QCOMPARE(states(*client.listener), expectedStates);
            }
            client.listener->disconnectFromHost();
            QVERIFY(waitForClients(sim, 0));
        }
    }

    void cliPrintsJsonLines()
    {
        SimulatorProcess sim;
        QVERIFY2(sim.isRunning(), qPrintable(sim.error()));
        TempEnv env;
        QVERIFY(addLocation(env, {u"--monitor-port"_s, QString::number(sim.port(u"monitor"_s))}));
        QProcess cli;
        startMonitor(cli, env, {u"--json"_s, u"monitor"_s, u"--count"_s, u"3"_s, u"--timeout"_s, u"60"_s});
        QVERIFY(waitForClients(sim, 1));
        sim.control("POST", u"/_sim/monitor/ring"_s,
                    "{\"caller\":\"0301234567#\",\"called\":\"5551234\",\"date\":\"21.11.26 10:00:00\"}");
        sim.control("POST", u"/_sim/monitor/connect"_s, "{\"connID\":0,\"extension\":\"1\"}");
        sim.control("POST", u"/_sim/monitor/disconnect"_s, "{\"connID\":0,\"duration\":75}");
        QVERIFY(cli.waitForFinished(20000));
        QCOMPARE(cli.exitCode(), 0);
        const QList<QByteArray> out = cli.readAllStandardOutput().trimmed().split('\n');
        QCOMPARE(out.size(), 3);
        QStringList events;
        for (const QByteArray& line : out) {
            const QJsonObject o = QJsonDocument::fromJson(line).object();
            QVERIFY2(!o.isEmpty(), line.constData());
            events << o.value(u"event"_s).toString();
            QCOMPARE(o.value(u"number"_s).toString(), u"0301234567"_s);
            QCOMPARE(o.value(u"calltime"_s).toString(), u"21.11.26 10:00:00"_s);
            QVERIFY(QDateTime::fromString(o.value(u"dateStart"_s).toString(), Qt::ISODate).isValid());
        }
        QCOMPARE(events, (QStringList{u"RING"_s, u"CONNECT"_s, u"DISCONNECT"_s}));
        const QJsonObject last = QJsonDocument::fromJson(out.at(2)).object();
        QCOMPARE(last.value(u"duration"_s).toString(), u"75"_s);
        QCOMPARE(last.value(u"calltype"_s).toInt(), 1);
        QVERIFY(QDateTime::fromString(last.value(u"dateEnd"_s).toString(), Qt::ISODate).isValid());
        QCOMPARE(last.value(u"notification"_s).toObject().value(u"body"_s).toString(),
                 u"0301234567\nDuration: 00:01:15"_s);
    }

    // With "ListAferCall" a call that ends brings the router's journal into the call list.
    void cliImportsTheJournalAfterACall_data()
    {
        QTest::addColumn<bool>("afterCall");
        QTest::newRow("setting on") << true;
        QTest::newRow("setting off") << false;
    }
    void cliImportsTheJournalAfterACall()
    {
        QFETCH(bool, afterCall);
        SimulatorProcess sim;
        QVERIFY2(sim.isRunning(), qPrintable(sim.error()));
        TempEnv env;
        QVERIFY(addLocation(env,
                            {u"--web-port"_s, QString::number(sim.port(u"web"_s)), u"--tr064-port"_s,
                             QString::number(sim.port(u"tr064"_s)), u"--monitor-port"_s,
                             QString::number(sim.port(u"monitor"_s)), u"--password-stdin"_s},
                            "secret\n"));
        QCOMPARE(runCli(env, {u"settings"_s, u"set"_s, u"ListAferCall"_s, afterCall ? u"true"_s : u"false"_s})
                     .exitCode,
                 0);

        QProcess cli;
        startMonitor(cli, env, {u"monitor"_s, u"--count"_s, u"2"_s, u"--timeout"_s, u"30"_s});
        QVERIFY(waitForClients(sim, 1));
        sim.control("POST", u"/_sim/monitor/ring"_s, R"({"caller":"0301234567","called":"5551234"})");
        sim.control("POST", u"/_sim/monitor/disconnect"_s, R"({"connID":0})");
        QVERIFY(cli.waitForFinished(20000));
        QCOMPARE(cli.exitCode(), 0);

        const QJsonArray rows =
            QJsonDocument::fromJson(runCli(env, {u"--json"_s, u"calls"_s, u"list"_s}).out).array();
        QCOMPARE(rows.size(), afterCall ? 1 : 0);
        if (afterCall)
            QCOMPARE(rows[0].toObject().value(u"phonenumber"_s).toString(), u"0301234567"_s);
    }

    void cliFailsWhenNothingListens()
    {
        TempEnv env;
        QVERIFY(addLocation(env, {u"--monitor-port"_s, freePorts(1).constFirst()}));
        const CliResult r = runCli(env, {u"monitor"_s, u"--timeout"_s, u"2"_s});
        QCOMPARE(r.exitCode, 1);
        QVERIFY2(r.err.contains("tondrel-cli: cannot connect to the call monitor"), r.err.constData());
    }

    // A ringing call is named from the user's address book, and the name is cached for the next call.
    void cliNamesTheCallerFromTheAddressBook()
    {
        SimulatorProcess sim;
        QVERIFY2(sim.isRunning(), qPrintable(sim.error()));
        TempEnv env;
        QVERIFY(QDir().mkpath(env.dataDir()));
        const QString book = QDir(env.dataDir()).filePath(u"contacts.vcf"_s);
        QFile vcf(book);
        QVERIFY(vcf.open(QIODevice::WriteOnly));
        vcf.write("BEGIN:VCARD\r\nVERSION:3.0\r\nUID:abc-1\r\nN:O'Brien;Anna;;;\r\nFN:Anna O'Brien\r\n"
                  "TEL;TYPE=WORK:+49 30 1234567\r\nEND:VCARD\r\n");
        vcf.close();
        QVERIFY(addLocation(env, {u"--monitor-port"_s, QString::number(sim.port(u"monitor"_s)),
                                  u"--prefixes"_s, u"00,49,0,30"_s}));
        QCOMPARE(runCli(env, {u"settings"_s, u"set"_s, u"AddressBook"_s, book}).exitCode, 0);

        QProcess cli;
        startMonitor(cli, env, {u"--json"_s, u"monitor"_s, u"--count"_s, u"1"_s, u"--timeout"_s, u"30"_s});
        QVERIFY(waitForClients(sim, 1));
        sim.control("POST", u"/_sim/monitor/ring"_s, R"({"caller":"0301234567","called":"5551234"})");
        QVERIFY(cli.waitForFinished(20000));
        QCOMPARE(cli.exitCode(), 0);
        const QJsonObject ring = QJsonDocument::fromJson(cli.readAllStandardOutput().trimmed()).object();
        const QJsonArray contact = ring.value(u"contact"_s).toArray();
        QCOMPARE(contact.at(1).toString(), u"Anna O'Brien"_s);
        QCOMPARE(contact.at(2).toString(), u"work"_s);

        // The name went into the caller cache: found without the book now.
        QVERIFY(vcf.remove());
        const CliResult r = runCli(env, {u"--json"_s, u"lookup"_s, u"0301234567"_s});
        QCOMPARE(r.exitCode, 0);
        const QJsonObject found = QJsonDocument::fromJson(r.out).object();
        QCOMPARE(found.value(u"name"_s).toString(), u"Anna O'Brien"_s);
        QCOMPARE(found.value(u"source"_s).toString(), u"cache"_s);
    }

    // The router goes away and comes back on the same port: the monitor finds it again.
    void reconnectsAfterTheRouterRestarts()
    {
        const QStringList ports = freePorts(3);
        const QString monitorPort = ports[1];
        const QStringList fixed{u"--web-port"_s, ports[0],          u"--monitor-port"_s,
                                monitorPort,     u"--tr064-port"_s, ports[2]};
        auto sim = std::make_unique<SimulatorProcess>(fixed);
        QVERIFY2(sim->isRunning(), qPrintable(sim->error()));

        TempEnv env;
        QVERIFY(addLocation(env, {u"--monitor-port"_s, monitorPort}));
        QProcess cli;
        startMonitor(cli, env, {u"--json"_s, u"monitor"_s, u"--count"_s, u"2"_s, u"--timeout"_s, u"60"_s});
        QVERIFY(waitForClients(*sim, 1));
        sim->control("POST", u"/_sim/monitor/ring"_s, "{\"caller\":\"0301111111\",\"called\":\"5551234\"}");
        QTRY_VERIFY(cli.bytesAvailable() > 0 || cli.canReadLine());

        sim.reset();        // the router goes down
        QTest::qWait(2500); // the monitor tries at least once against a closed port
        QCOMPARE(cli.state(), QProcess::Running);
        sim = std::make_unique<SimulatorProcess>(fixed);
        QVERIFY2(sim->isRunning(), qPrintable(sim->error()));
        QVERIFY(waitForClients(*sim, 1, 20000)); // within the back-off (1, 2, 4, 8 s)
        sim->control("POST", u"/_sim/monitor/ring"_s, "{\"caller\":\"0302222222\",\"called\":\"5551234\"}");
        QVERIFY(cli.waitForFinished(20000));
        QCOMPARE(cli.exitCode(), 0);
        const QList<QByteArray> out = cli.readAllStandardOutput().trimmed().split('\n');
        QCOMPARE(out.size(), 2);
        QCOMPARE(QJsonDocument::fromJson(out.at(1)).object().value(u"number"_s).toString(), u"0302222222"_s);
        const QByteArray err = cli.readAllStandardError();
        QVERIFY2(err.contains("trying again in"), err.constData());
    }
};

QTEST_GUILESS_MAIN(TestCallMonitor)
#include "tst_callmonitor.moc"
