// The journal end to end: tondrel-cli importing journal files and exporting the list, and the
// simulator handing out its journal in both firmware flavours.
#include "TestSupport.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTcpSocket>
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

// Reads the export like a client that stops once it has seen `until`; the bytes read.
QByteArray readUntil(int port, const QByteArray& until)
{
    QTcpSocket socket;
    socket.connectToHost(u"127.0.0.1"_s, quint16(port));
    if (!socket.waitForConnected(5000))
        return {};
    socket.write("GET /fon_num/foncalls_list.lua?csv= HTTP/1.1\r\nHost: 127.0.0.1\r\n\r\n");
    QByteArray got;
    while (!got.contains(until) && socket.waitForReadyRead(5000))
        got += socket.readAll();
    socket.abort();
    return got;
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
        CliResult r = runCli(m_env, {u"calls"_s, u"import"_s, u"--file"_s,
                                     dataFile(u"libfritzpp_fw74.04.86_foncalls.csv"_s)});
        QVERIFY2(r.exitCode == 0, r.err.constData());
        QCOMPARE(r.out.trimmed(), QByteArray("14"));

        r = runCli(m_env, {u"calls"_s, u"list"_s, u"--json"_s, u"--state"_s, u"out"_s});
        const QJsonArray out = QJsonDocument::fromJson(r.out).array();
        QCOMPARE(out.size(), 5);
        QCOMPARE(out.first().toObject().value(u"phonenumber"_s).toString(), u"030**799"_s);
        QCOMPARE(out.first().toObject().value(u"name"_s).toString(), u"AVM Ansage (HD)"_s);

        r = runCli(m_env, {u"calls"_s, u"export"_s, u"--format"_s, u"csv"_s, u"--state"_s, u"missed"_s,
                           u"--fields"_s, u"number,duration,callstate"_s, u"--delimiter"_s, u","_s});
        QVERIFY2(r.exitCode == 0, r.err.constData());
        const QList<QByteArray> lines = r.out.trimmed().split('\n');
        QCOMPARE(lines.size(), 4); // titles and three missed calls, oldest first
        QCOMPARE(lines[0], QByteArray("\"Number\",\"Duration\",\"Call type\""));
        QCOMPARE(lines[1], QByteArray("\"0304712\",\"0:00\",\"2\""));

        const QString js = m_env.root.filePath(u"data.js"_s);
        r = runCli(m_env, {u"calls"_s, u"export"_s, u"--format"_s, u"web"_s, u"--out"_s, js});
        QVERIFY2(r.exitCode == 0, r.err.constData());
        QFile file(js);
        QVERIFY(file.open(QIODevice::ReadOnly));
        const QList<QByteArray> web = file.readAll().split('\n');
        QVERIFY(web[0].startsWith("var refreshData = \""));
        QCOMPARE(web[1], QByteArray("var calldata = new Array();"));
        QVERIFY(web[2].startsWith("calldata[0] = new Object();calldata[0] = [{ date:\"19.12.2010 12:55\", name:\"\", "
                                  "number:\"\", extension:\"DECT extern\", line:\"Internet: 111\", duration:\"0:04\", "
                                  "state:\"1\"}, { date:"));
        QVERIFY(web[2].contains("calldata[3] = new Object();calldata[3] = [{ date:\"19.12.2010 14:23\", "
                                "name:\"AVM Ansage (HD)\""));
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

    void simulatorServesBothFlavours_data()
    {
        QTest::addColumn<QString>("firmware");
        QTest::addColumn<QString>("language");
        QTest::addColumn<QString>("refresh");
        QTest::addColumn<QString>("csv");
        QTest::addColumn<QByteArray>("header");
        QTest::newRow("lua") << u"lua"_s << u"de"_s
                             << u"/fon_num/foncalls_list.lua?usejournal=on&refresh=&callstab=all"_s
                             << u"/fon_num/foncalls_list.lua?csv="_s
                             << QByteArray("Typ;Datum;Name;Rufnummer;Nebenstelle;Eigene Rufnummer;Dauer");
        QTest::newRow("form, english")
            << u"form"_s << u"en"_s
            << u"/cgi-bin/webcm?telcfg:settings/RefreshJournal=:-)&var%3Apagename=foncalls"_s
            << u"/cgi-bin/webcm?getpage=..%2Fhtml%2Fen%2FFRITZ%21Box_Calllist.csv&telcfg:settings/UseJournal=1"_s
            << QByteArray("Type;Date;Name;Number;Extension;Outgoing Caller ID;Duration");
    }
    void simulatorServesBothFlavours()
    {
        QFETCH(QString, firmware);
        QFETCH(QString, language);
        QFETCH(QString, refresh);
        QFETCH(QString, csv);
        QFETCH(QByteArray, header);
        const QString scenario = m_env.root.filePath(u"scenario-%1.json"_s.arg(firmware));
        QFile f(scenario);
        QVERIFY(f.open(QIODevice::WriteOnly));
        f.write(QJsonDocument(QJsonObject{{u"firmware"_s, firmware},
                                          {u"language"_s, language},
                                          {u"journal"_s, QJsonArray{u"1;14.03.26 09:05;;0301234;Küche;5550001;0:12"_s}}})
                    .toJson());
        f.close();
        SimulatorProcess sim({u"--scenario"_s, scenario});
        QVERIFY2(sim.isRunning(), qPrintable(sim.error()));

        // The refreshed page tells the client the flavour: only the old one names a .csv file.
        const QByteArray page = sim.control("GET", refresh);
        QCOMPARE(page.contains(".csv\""), firmware == u"form");

        // A call that ends on the call monitor is written at the head of the journal.
        QVERIFY(!sim.control("POST", u"/_sim/monitor/ring"_s, R"({"caller":"0170111","called":"5550001"})").isNull());
        QVERIFY(!sim.control("POST", u"/_sim/monitor/disconnect"_s, R"({"connID":0})").isNull());

        const QList<QByteArray> lines = sim.control("GET", csv).split('\n');
        QCOMPARE(lines.value(0), QByteArray("sep=;"));
        QCOMPARE(lines.value(1), header);
        QVERIFY2(lines.value(2).startsWith("2;") && lines.value(2).contains(";0170111;;5550001;0:00"), lines.value(2));
        QCOMPARE(lines.value(3), "1;14.03.26 09:05;;0301234;Küche;5550001;0:12"_ba);
    }

    void simulatorSeesClientStopEarly()
    {
        QJsonArray journal;
        for (int i = 0; i < 40; ++i)
            journal.append(u"1;%1.02.26 10:00;;0301%2;;5550001;0:01"_s.arg(28 - i % 28, 2, 10, QChar(u'0')).arg(i));
        const QString scenario = m_env.root.filePath(u"scenario-slow.json"_s);
        QFile f(scenario);
        QVERIFY(f.open(QIODevice::WriteOnly));
        f.write(QJsonDocument(QJsonObject{{u"journal"_s, journal}, {u"journalChunkDelayMs"_s, 20}}).toJson());
        f.close();
        SimulatorProcess sim({u"--scenario"_s, scenario});
        QVERIFY2(sim.isRunning(), qPrintable(sim.error()));

        QVERIFY(readUntil(sim.port(u"web"_s), ";03013;").contains(";03013;"));
        QJsonObject stats;
        QTRY_VERIFY((stats = object(sim.control("GET", u"/_sim/journal/stats"_s))).value(u"closedEarly"_s).toBool());
        QVERIFY(stats.value(u"bytesSent"_s).toInt() < stats.value(u"bytesTotal"_s).toInt());

        // A client that reads everything is not counted as stopping early.
        QVERIFY(sim.control("GET", u"/fon_num/foncalls_list.lua?csv="_s).contains(";030139;"));
        stats = object(sim.control("GET", u"/_sim/journal/stats"_s));
        QVERIFY(!stats.value(u"closedEarly"_s).toBool());
        QCOMPARE(stats.value(u"bytesSent"_s).toInt(), stats.value(u"bytesTotal"_s).toInt());
        QCOMPARE(stats.value(u"exports"_s).toInt(), 2);
    }

private:
    TempEnv m_env;
};

QTEST_GUILESS_MAIN(TestJournalCli)
#include "tst_journal_cli.moc"
