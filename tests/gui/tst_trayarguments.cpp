// The tray application's command line: requests handed over in order, folders and password
// store taken, bad input refused before anything is opened.
#include "TrayArguments.h"

#include <QCoreApplication>
#include <QTest>

using namespace Qt::StringLiterals;

class TestTrayArguments : public QObject
{
    Q_OBJECT
private slots:
    void parse_data();
    void parse();
};

void TestTrayArguments::parse_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<int>("exitCode"); // -1: starts
    QTest::addColumn<QStringList>("requests");
    QTest::addColumn<QString>("messageContains");

    QTest::newRow("a tel: link") << QStringList{u"tel:+4930123456"_s} << -1
                                 << QStringList{u"tel:+4930123456"_s} << QString();
    QTest::newRow("windows and a link")
        << QStringList{u"callto://0301234"_s, u"--voicemail"_s, u"--calllist"_s, u"--new-call"_s} << -1
        << QStringList{u"--new-call"_s, u"--calllist"_s, u"--voicemail"_s, u"callto://0301234"_s}
        << QString();
    QTest::newRow("folders are not requests")
        << QStringList{u"--config-dir"_s, u"/tmp/c"_s, u"--data-dir=/tmp/d"_s, u"--secrets"_s, u"file"_s}
        << -1 << QStringList{} << QString();
    QTest::newRow("help") << QStringList{u"--help"_s} << 0 << QStringList{} << u"--calllist"_s;
    QTest::newRow("version") << QStringList{u"--version"_s} << 0 << QStringList{} << u"tondrel "_s;
    QTest::newRow("unknown option") << QStringList{u"--frobnicate"_s} << 2 << QStringList{}
                                    << u"frobnicate"_s;
    QTest::newRow("unknown password store")
        << QStringList{u"--secrets"_s, u"vault"_s} << 2 << QStringList{} << u"vault"_s;
}

void TestTrayArguments::parse()
{
    QFETCH(QStringList, arguments);
    QFETCH(int, exitCode);
    QFETCH(QStringList, requests);
    QFETCH(QString, messageContains);
    const TrayArguments a = TrayArguments::parse(arguments);
    QCOMPARE(a.exitNow, exitCode >= 0);
    if (exitCode >= 0) {
        QCOMPARE(a.exitCode, exitCode);
        QVERIFY2(a.message.contains(messageContains), qPrintable(a.message));
        return;
    }
    QCOMPARE(a.requests, requests);
    if (arguments.contains(u"--secrets"_s)) {
        QCOMPARE(a.configDir, u"/tmp/c"_s);
        QCOMPARE(a.dataDir, u"/tmp/d"_s);
        QCOMPARE(a.secrets, u"file"_s);
    }
}

QTEST_GUILESS_MAIN(TestTrayArguments)
#include "tst_trayarguments.moc"
