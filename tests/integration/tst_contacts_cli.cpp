#include "TestSupport.h"

#include "../contacts/DirectoryServer.h"

#include <QtTest>

using namespace Qt::StringLiterals;

namespace {
const QString appleBook = QStringLiteral(TONDREL_TEST_DATA_DIR "/contacts/apple_export.vcf");

QJsonObject json(const CliResult& r)
{
    return QJsonDocument::fromJson(r.out).object();
}

QString addLocation(const TempEnv& env, const QString& prefixes)
{
    const CliResult r =
        runCli(env, {u"location"_s, u"add"_s, u"--name"_s, u"Home"_s, u"--prefixes"_s, prefixes});
    if (r.exitCode != 0)
        qWarning() << r.err;
    return QString::fromUtf8(r.out).trimmed();
}

bool setGlobalKey(const TempEnv& env, const QString& key, const QJsonValue& value)
{
    QFile f(QDir(env.configDir()).filePath(u"settings.json"_s));
    if (!f.open(QIODevice::ReadOnly))
        return false;
    QJsonObject root = QJsonDocument::fromJson(f.readAll()).object();
    f.close();
    root.insert(key, value);
    if (!f.open(QIODevice::WriteOnly | QIODevice::Truncate))
        return false;
    f.write(QJsonDocument(root).toJson());
    return true;
}

// A located environment whose reverse look-up asks the given address.
bool writeDefinitions(const TempEnv& env, const QString& url)
{
    if (addLocation(env, u"00,49,0,30"_s).isEmpty() || !QDir().mkpath(env.dataDir()))
        return false;
    QFile defs(QDir(env.dataDir()).filePath(u"reverseSearch.plist"_s));
    return defs.open(QIODevice::WriteOnly) &&
           defs.write(
               u"<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<plist "
               u"version=\"1.0\"><dict><key>ReverseSearch</key><dict>"
               u"<key>0049</key><dict><key>prefix</key><string>0</string><key>url</key><string>%1</string>"
               u"<key>data</key><string>ph=##NUMBER##</string>"
               u"<key>match</key><string>&lt;h1&gt;(.*?)&lt;/h1&gt;</string></dict></dict></dict></plist>\n"_s
                   .arg(url)
                   .toUtf8()) > 0;
}
} // namespace

class TestContactsCli : public QObject
{
    Q_OBJECT
private slots:
    void numberForms_data();
    void numberForms();
    void numberFormsUseTheLocation();
    void badPrefixesAreAUsageError();
    void lookupInAddressBook_data();
    void lookupInAddressBook();
    void lookupInConfiguredBook();
    void missingBookFails();
    void reverseLookupAgainstLocalDirectory();
    void reverseLookupThatTimesOut();
};

void TestContactsCli::numberForms_data()
{
    QTest::addColumn<QString>("form");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("expected");
    QTest::newRow("clean") << u"clean"_s << u"+49 (30) 123-45"_s << u"03012345"_s;
    QTest::newRow("standard") << u"standard"_s << u"+49 30 1234"_s << u"0301234"_s;
    QTest::newRow("unified") << u"unified"_s << u"Call 1-800-FLOWERS"_s << u"18003569377"_s;
}

void TestContactsCli::numberForms()
{
    QFETCH(QString, form);
    QFETCH(QString, text);
    QFETCH(QString, expected);
    TempEnv env;
    const CliResult r = runCli(env, {u"number"_s, form, text, u"--prefixes"_s, u"00,49,0,30"_s});
    QCOMPARE(r.exitCode, 0);
    QCOMPARE(QString::fromUtf8(r.out), expected + u'\n');
}

void TestContactsCli::numberFormsUseTheLocation()
{
    TempEnv env;
    QVERIFY(!addLocation(env, u"00,43,0,1"_s).isEmpty());
    const CliResult r = runCli(env, {u"--json"_s, u"number"_s, u"clean"_s, u"+43 1 5550"_s});
    QCOMPARE(r.exitCode, 0);
    QCOMPARE(json(r).value(u"clean"_s).toString(), u"015550"_s);
}

void TestContactsCli::badPrefixesAreAUsageError()
{
    TempEnv env;
    const CliResult r = runCli(env, {u"number"_s, u"clean"_s, u"030"_s, u"--prefixes"_s, u"00,49"_s});
    QCOMPARE(r.exitCode, 2);
    QVERIFY(r.err.startsWith("tondrel-cli: --prefixes"));
}

void TestContactsCli::lookupInAddressBook_data()
{
    QTest::addColumn<QString>("number");
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("label");
    QTest::addColumn<QString>("source");
    const QString mueller = u"Jürgen Müller - Bäckerei Müller GmbH"_s;
    QTest::newRow("mobile typed internationally")
        << u"+49 171 5550111"_s << mueller << u"iPhone"_s << u"addressbook"_s;
    QTest::newRow("unknown") << u"0309999"_s << QString() << QString() << QString();
}

void TestContactsCli::lookupInAddressBook()
{
    QFETCH(QString, number);
    QFETCH(QString, name);
    QFETCH(QString, label);
    QFETCH(QString, source);
    TempEnv env;
    QVERIFY(!addLocation(env, u"00,49,0,30"_s).isEmpty());
    const CliResult r = runCli(env, {u"--json"_s, u"lookup"_s, number, u"--address-book"_s, appleBook});
    QCOMPARE(r.exitCode, 0);
    const QJsonObject o = json(r);
    QCOMPARE(o.value(u"name"_s).toString(), name);
    QCOMPARE(o.value(u"label"_s).toString(), label);
    QCOMPARE(o.value(u"source"_s).toString(), source);
    QCOMPARE(o.value(u"abid"_s).toString().isEmpty(), name.isEmpty());
}

void TestContactsCli::lookupInConfiguredBook()
{
    TempEnv env;
    QVERIFY(!addLocation(env, u"00,49,0,30"_s).isEmpty());
    QVERIFY(setGlobalKey(env, u"AddressBook"_s, QFileInfo(appleBook).absolutePath()));
    const CliResult r = runCli(env, {u"lookup"_s, u"0301234567"_s});
    QCOMPARE(r.exitCode, 0);
    QCOMPARE(QString::fromUtf8(r.out), u"Jürgen Müller - Bäckerei Müller GmbH (other)\n"_s);
}

void TestContactsCli::missingBookFails()
{
    TempEnv env;
    const CliResult r =
        runCli(env, {u"lookup"_s, u"030"_s, u"--address-book"_s, env.root.filePath(u"none.vcf"_s)});
    QCOMPARE(r.exitCode, 1);
    QVERIFY(r.err.startsWith("tondrel-cli: the address book"));
}

void TestContactsCli::reverseLookupAgainstLocalDirectory()
{
    DirectoryServer server;
    server.startServing();
    server.setPage("/inverse", "<html><h1>Familie Wei&szlig;</h1></html>");
    TempEnv env;
    QVERIFY(writeDefinitions(env, server.url("/inverse")));

    // Without --reverse the web is not asked.
    CliResult r = runCli(env, {u"--json"_s, u"lookup"_s, u"1234"_s, u"--address-book"_s, appleBook});
    QCOMPARE(json(r).value(u"name"_s).toString(), QString());
    QVERIFY(server.requests().isEmpty());

    r = runCli(env, {u"--json"_s, u"lookup"_s, u"1234"_s, u"--reverse"_s, u"--address-book"_s, appleBook});
    QCOMPARE(r.exitCode, 0);
    const QJsonObject o = json(r);
    QCOMPARE(o.value(u"name"_s).toString(), u"Familie Weiß"_s);
    QCOMPARE(o.value(u"source"_s).toString(), u"reverse"_s);
    QCOMPARE(o.value(u"abid"_s).toString(), QString());
    QCOMPARE(server.requests().size(), 1);
    QCOMPARE(server.requests().at(0).body, QByteArray("ph=0301234"));
}

void TestContactsCli::reverseLookupThatTimesOut()
{
    DirectoryServer server;
    server.startServing();
    server.setHanging("/inverse");
    TempEnv env;
    QVERIFY(writeDefinitions(env, server.url("/inverse")));
    const CliResult r =
        runCli(env, {u"lookup"_s, u"0301234"_s, u"--reverse"_s, u"--timeout"_s, u"0.5"_s}, {}, 20000);
    QCOMPARE(r.exitCode, 0);
    QCOMPARE(QString::fromUtf8(r.out), u"No name found for 0301234.\n"_s);
}

QTEST_GUILESS_MAIN(TestContactsCli)
#include "tst_contacts_cli.moc"
