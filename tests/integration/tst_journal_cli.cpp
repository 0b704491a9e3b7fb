// The journal end to end: tondrel-cli importing journal files and exporting the list, and
// downloading the simulator's journal in both firmware flavours.
#include "TestSupport.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QtTest>

using namespace Qt::Literals::StringLiterals;

namespace {

QString dataFile(const QString& name)
{
    return QStringLiteral(TONDREL_TEST_DATA_DIR "/calllist/") + name;
}

QJsonObject object(const QByteArray& bytes)
{
    return QJsonDocument::fromJson(bytes).object();
}

QString writeScenario(const TempEnv& env, const QJsonObject& scenario)
{
    const QString path = env.root.filePath(u"scenario.json"_s);
    QFile f(path);
    f.open(QIODevice::WriteOnly);
    f.write(QJsonDocument(scenario).toJson());
    return path;
}

// The simulator's router as the current location (its default user has the password "secret").
bool addLocation(const TempEnv& env, SimulatorProcess& sim, const QByteArray& password = "secret")
{
    return runCli(env,
                  {u"location"_s, u"add"_s, u"--name"_s, u"sim"_s, u"--host"_s, u"127.0.0.1"_s,
                   u"--web-port"_s, QString::number(sim.port(u"web"_s)), u"--tr064-port"_s,
                   QString::number(sim.port(u"tr064"_s)), u"--monitor-port"_s,
                   QString::number(sim.port(u"monitor"_s)), u"--prefixes"_s, u"00,49,0,30"_s,
                   u"--password-stdin"_s},
                  password + "\n")
               .exitCode == 0;
}

} // namespace

class TestJournalCli : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase()
    {
        const CliResult r = runCli(m_env, {u"location"_s, u"add"_s, u"--name"_s, u"Home"_s, u"--host"_s,
                                           u"127.0.0.1"_s, u"--prefixes"_s, u"00,49,0,30"_s});
        QVERIFY2(r.exitCode == 0, r.err.constData());
    }

    void importFileThenListAndExport()
    {
        CliResult r =
            runCli(m_env, {u"calls"_s, u"import"_s, u"--file"_s, dataFile(u"journal_without_type4.csv"_s)});
        QVERIFY2(r.exitCode == 0, r.err.constData());
        QCOMPARE(r.out.trimmed(), QByteArray("14"));

        r = runCli(m_env, {u"calls"_s, u"export"_s, u"--format"_s, u"csv"_s, u"--state"_s, u"missed"_s,
                           u"--fields"_s, u"number,duration,callstate"_s, u"--delimiter"_s, u","_s});
        QVERIFY2(r.exitCode == 0, r.err.constData());
        const QList<QByteArray> lines = r.out.trimmed().split('\n');
        QCOMPARE(lines.size(), 4); // titles and three missed calls, oldest first
        QCOMPARE(lines[0], QByteArray("\"Number\",\"Duration\",\"Call type\""));
        QCOMPARE(lines[1], QByteArray("\"0305550187\",\"0:00\",\"2\""));

        const QString js = m_env.root.filePath(u"data.js"_s);
        r = runCli(m_env, {u"calls"_s, u"export"_s, u"--format"_s, u"web"_s, u"--out"_s, js});
        QVERIFY2(r.exitCode == 0, r.err.constData());
        QFile file(js);
        QVERIFY(file.open(QIODevice::ReadOnly));
        const QList<QByteArray> web = file.readAll().split('\n');
        QCOMPARE(web[1], QByteArray("var calldata = new Array();"));
        QVERIFY(web[2].contains("calldata[3] = new Object();calldata[3] = [{ date:\"27.11.2011 09:41\", "
                                "name:\"Zeitansage\""));
    }

    void importRefusesWhatIsNoJournal_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<QString>("error");
        QTest::newRow("login page") << QByteArray("<!DOCTYPE html>\n<html><body>Anmeldung</body></html>\n")
                                    << u"is not a call journal"_s;
        QTest::newRow("missing file") << QByteArray() << u"no journal file"_s;
    }
    void importRefusesWhatIsNoJournal()
    {
        QFETCH(QByteArray, content);
        QFETCH(QString, error);
        const QString path = m_env.root.filePath(u"page.html"_s);
        QFile::remove(path);
        if (!content.isEmpty()) {
            QFile f(path);
            QVERIFY(f.open(QIODevice::WriteOnly));
            f.write(content);
        }
        const CliResult r = runCli(m_env, {u"calls"_s, u"import"_s, u"--file"_s, path});
        QCOMPARE(r.exitCode, 1);
        QVERIFY2(r.err.contains(error.toUtf8()), r.err.constData());
    }

    void downloadInBothFlavours_data()
    {
        QTest::addColumn<QString>("firmware");
        QTest::addColumn<QString>("language");
        QTest::addColumn<QString>("path");
        QTest::newRow("lua") << u"lua"_s << u"de"_s << u"/fon_num/foncalls_list.lua"_s;
        QTest::newRow("form, german") << u"form"_s << u"de"_s << u"/cgi-bin/webcm"_s;
        QTest::newRow("form, english") << u"form"_s << u"en"_s << u"/cgi-bin/webcm"_s;
    }
    void downloadInBothFlavours()
    {
        QFETCH(QString, firmware);
        QFETCH(QString, language);
        QFETCH(QString, path);
        TempEnv env;
        SimulatorProcess sim(
            {u"--scenario"_s,
             writeScenario(
                 env,
                 QJsonObject{{u"firmware"_s, firmware},
                             {u"language"_s, language},
                             {u"journal"_s, QJsonArray{u"1;14.03.26 09:05;;0301234;Küche;5550001;0:12"_s,
                                                       u"4;13.03.26 19:00;;089777;Küche;5550001;0:02"_s}}})});
        QVERIFY2(sim.isRunning(), qPrintable(sim.error()));
        QVERIFY(addLocation(env, sim));

        CliResult r = runCli(env, {u"--json"_s, u"calls"_s, u"import"_s});
        QVERIFY2(r.exitCode == 0, r.err.constData());
        QCOMPARE(object(r.out).value(u"imported"_s).toInt(), 2);
        QVERIFY(sim.control("GET", u"/_sim/requests"_s).contains(path.toUtf8()));

        // A call that ends on the call monitor is written at the head of the router's journal.
        QVERIFY(!sim.control("POST", u"/_sim/monitor/ring"_s, R"({"caller":"0170111","called":"5550001"})")
                     .isNull());
        QVERIFY(!sim.control("POST", u"/_sim/monitor/disconnect"_s, R"({"connID":0})").isNull());
        r = runCli(env, {u"--json"_s, u"calls"_s, u"import"_s});
        QVERIFY2(r.exitCode == 0, r.err.constData());
        QCOMPARE(object(r.out).value(u"imported"_s).toInt(), 1);
        QCOMPARE(object(r.out).value(u"missed"_s).toInt(), 1);

        r = runCli(env, {u"--json"_s, u"calls"_s, u"list"_s});
        const QJsonArray rows = QJsonDocument::fromJson(r.out).array();
        QCOMPARE(rows.size(), 3);
        QCOMPARE(rows[0].toObject().value(u"phonenumber"_s).toString(), u"0170111"_s);
        QCOMPARE(rows[0].toObject().value(u"callstate"_s).toInt(), 2);
        QCOMPARE(rows[2].toObject().value(u"callstate"_s).toInt(), 3); // type 4: outgoing
    }

    void wrongPasswordIsAnError()
    {
        TempEnv env;
        SimulatorProcess sim;
        QVERIFY2(sim.isRunning(), qPrintable(sim.error()));
        QVERIFY(addLocation(env, sim, "wrong"));
        const CliResult r = runCli(env, {u"calls"_s, u"import"_s});
        QCOMPARE(r.exitCode, 1);
        QVERIFY(r.err.startsWith("tondrel-cli: "));
    }

    void secondDownloadStopsEarly()
    {
        QJsonArray journal;
        for (int i = 0; i < 60; ++i)
            journal.append(u"1;%1.02.26 10:%2;;0301%3;;5550001;0:01"_s.arg(28 - i / 3, 2, 10, QChar(u'0'))
                               .arg(50 - i % 3 * 10)
                               .arg(i));
        TempEnv env;
        SimulatorProcess sim(
            {u"--scenario"_s,
             writeScenario(env, QJsonObject{{u"journal"_s, journal}, {u"journalChunkDelayMs"_s, 10}})});
        QVERIFY2(sim.isRunning(), qPrintable(sim.error()));
        QVERIFY(addLocation(env, sim));
        CliResult r = runCli(env, {u"--json"_s, u"calls"_s, u"import"_s});
        QCOMPARE(object(r.out).value(u"imported"_s).toInt(), 60);
        QVERIFY(!object(sim.control("GET", u"/_sim/journal/stats"_s)).value(u"closedEarly"_s).toBool());

        QVERIFY(
            !sim.control(
                    "POST", u"/_sim/journal/add"_s,
                    R"({"type":3,"date":"01.03.26 08:00","number":"0401","extension":"Büro","line":"5550001","duration":"0:03"})")
                 .isNull());
        r = runCli(env, {u"--json"_s, u"calls"_s, u"import"_s});
        QCOMPARE(object(r.out).value(u"imported"_s).toInt(), 1);
        // The client stopped reading once the newest stored call went by.
        QJsonObject stats;
        QTRY_VERIFY(
            (stats = object(sim.control("GET", u"/_sim/journal/stats"_s))).value(u"closedEarly"_s).toBool());
        QVERIFY(stats.value(u"bytesSent"_s).toInt() < stats.value(u"bytesTotal"_s).toInt() / 2);
    }

private:
    TempEnv m_env;
};

QTEST_GUILESS_MAIN(TestJournalCli)
#include "tst_journal_cli.moc"
