// A ringing call is named from the user's address book, and the name is cached for the next call.
#include "TestSupport.h"

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTest>

class TestCallerNames : public QObject
{
    Q_OBJECT
private slots:
    void ringShowsTheAddressBookName();
};

namespace {
bool waitForClients(SimulatorProcess& sim, int n)
{
    const QByteArray want = "\"clients\":" + QByteArray::number(n);
    for (int i = 0; i < 100; ++i) {
        if (sim.control("GET", QStringLiteral("/_sim/monitor/clients")).contains(want))
            return true;
        QTest::qWait(50);
    }
    return false;
}
} // namespace

void TestCallerNames::ringShowsTheAddressBookName()
{
    SimulatorProcess sim;
    QVERIFY2(sim.isRunning(), qPrintable(sim.error()));
    TempEnv env;
    QVERIFY(QDir().mkpath(env.dataDir()));
    const QString book = QDir(env.dataDir()).filePath(QStringLiteral("contacts.vcf"));
    QFile vcf(book);
    QVERIFY(vcf.open(QIODevice::WriteOnly));
    vcf.write("BEGIN:VCARD\r\nVERSION:3.0\r\nUID:abc-1\r\nN:O'Brien;Anna;;;\r\nFN:Anna O'Brien\r\n"
              "TEL;TYPE=WORK:+49 30 1234567\r\nEND:VCARD\r\n");
    vcf.close();

    QCOMPARE(runCli(env, {QStringLiteral("location"), QStringLiteral("add"), QStringLiteral("--name"),
                          QStringLiteral("Box"), QStringLiteral("--host"), QStringLiteral("127.0.0.1"),
                          QStringLiteral("--monitor-port"), QString::number(sim.port(QStringLiteral("monitor"))),
                          QStringLiteral("--prefixes"), QStringLiteral("00,49,0,30")})
                 .exitCode,
             0);
    QCOMPARE(runCli(env, {QStringLiteral("settings"), QStringLiteral("set"), QStringLiteral("AddressBook"), book})
                 .exitCode,
             0);

    QProcess cli;
    cli.start(QStringLiteral(TONDREL_CLI_PATH),
              {QStringLiteral("--config-dir"), env.configDir(), QStringLiteral("--data-dir"), env.dataDir(),
               QStringLiteral("--secrets"), QStringLiteral("file"), QStringLiteral("--json"), QStringLiteral("monitor"),
               QStringLiteral("--count"), QStringLiteral("1"), QStringLiteral("--timeout"), QStringLiteral("30")});
    QVERIFY(waitForClients(sim, 1));
    sim.control("POST", QStringLiteral("/_sim/monitor/ring"), "{\"caller\":\"0301234567\",\"called\":\"5551234\"}");
    QVERIFY(cli.waitForFinished(20000));
    QCOMPARE(cli.exitCode(), 0);
    const QJsonObject ring = QJsonDocument::fromJson(cli.readAllStandardOutput().trimmed()).object();
    const QJsonArray contact = ring.value(QStringLiteral("contact")).toArray();
    QCOMPARE(contact.at(1).toString(), QStringLiteral("Anna O'Brien"));
    QCOMPARE(contact.at(2).toString(), QStringLiteral("work"));
    QVERIFY(ring.value(QStringLiteral("notification")).toObject().value(QStringLiteral("subtitle")).toString().contains(
        QStringLiteral("Anna O'Brien")));

    // The name went into the caller cache: found without the book now.
    QVERIFY(vcf.remove());
    const CliResult r = runCli(env, {QStringLiteral("--json"), QStringLiteral("lookup"), QStringLiteral("0301234567")});
    QCOMPARE(r.exitCode, 0);
    const QJsonObject found = QJsonDocument::fromJson(r.out).object();
    QCOMPARE(found.value(QStringLiteral("name")).toString(), QStringLiteral("Anna O'Brien"));
    QCOMPARE(found.value(QStringLiteral("source")).toString(), QStringLiteral("cache"));
}

QTEST_GUILESS_MAIN(TestCallerNames)
#include "tst_caller_names.moc"
