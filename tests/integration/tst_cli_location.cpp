// The location commands as a user or a script runs them: the real binary on a temporary folder.
#include "TestSupport.h"

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTest>

using namespace Qt::StringLiterals;

class TestCliLocation : public QObject
{
    Q_OBJECT
private slots:
    void addListShowAndPasswords();
    void removeMovesTheCurrentLocation();
    void corruptSettingsAreKept();
    void usageErrors_data();
    void usageErrors();
};

namespace {
QString addLocation(const TempEnv& env, const QString& name, const QByteArray& password = "pw\n")
{
    const CliResult r = runCli(
        env, {u"location"_s, u"add"_s, u"--name"_s, name, u"--host"_s, u"127.0.0.1"_s, u"--password-stdin"_s},
        password);
    if (r.exitCode != 0)
        qWarning() << r.err;
    return QString::fromUtf8(r.out).trimmed();
}

QJsonArray listLocations(const TempEnv& env)
{
    const CliResult r = runCli(env, {u"location"_s, u"list"_s, u"--json"_s});
    return QJsonDocument::fromJson(r.out).array();
}
} // namespace

void TestCliLocation::addListShowAndPasswords()
{
    TempEnv env;
    const QString uid = addLocation(env, u"Home"_s, "s3cr3t!\n");
    QVERIFY2(uid.size() == 36, qPrintable(uid));

    const QJsonArray list = listLocations(env);
    QCOMPARE(list.size(), 1);
    const QJsonObject home = list.at(0).toObject();
    QCOMPARE(home.value(u"uid"_s).toString(), uid);
    QCOMPARE(home.value(u"name"_s).toString(), u"Home"_s);
    QCOMPARE(home.value(u"host"_s).toString(), u"127.0.0.1"_s);
    QCOMPARE(home.value(u"profile"_s).toInt(), 1);
    QCOMPARE(home.value(u"current"_s).toBool(), true);

    QFile settings(QDir(env.configDir()).filePath(u"settings.json"_s));
    QVERIFY(settings.open(QIODevice::ReadOnly));
    const QByteArray settingsText = settings.readAll();
    QVERIFY(!settingsText.contains("s3cr3t"));
    const QJsonObject stored =
        QJsonDocument::fromJson(settingsText).object().value(u"Locations"_s).toObject().value(uid).toObject();
    for (const char* key : {"Profile", "Name", "Host", "userName", "CallMonitor", "Extensions", "Prefixis",
                            "FTPSSL", "RemoteSSLPort", "SaveDate"})
        QVERIFY2(stored.contains(QLatin1String(key)), key);

    const QString secretsPath = QDir(env.configDir()).filePath(u"secrets.json"_s);
    QCOMPARE(QFile::permissions(secretsPath) & 0x0077, QFileDevice::Permissions());
    QFile secrets(secretsPath);
    QVERIFY(secrets.open(QIODevice::ReadOnly));
    const QJsonObject items = QJsonDocument::fromJson(secrets.readAll()).object();
    QCOMPARE(items.value(u"Tondrel.Profile."_s + uid).toObject().value(u"Fritz!Box Pass"_s).toString(),
             u"s3cr3t!"_s);

    // A typed key, and a password for remote access.
    CliResult r = runCli(env, {u"location"_s, u"set"_s, u"CallMonitorPort"_s, u"2012"_s});
    QCOMPARE(r.exitCode, 0);
    r = runCli(env, {u"location"_s, u"password"_s, u"--remote"_s, u"--password-stdin"_s}, "far-away\n");
    QCOMPARE(r.exitCode, 0);
    r = runCli(env, {u"location"_s, u"show"_s, u"--json"_s});
    QCOMPARE(r.exitCode, 0);
    const QJsonObject shown = QJsonDocument::fromJson(r.out).object();
    QCOMPARE(shown.value(u"CallMonitorPort"_s).toInt(), 2012);
    QCOMPARE(shown.value(u"remotePasswordSet"_s).toBool(), true);
    QVERIFY(!r.out.contains("far-away"));
}

void TestCliLocation::removeMovesTheCurrentLocation()
{
    TempEnv env;
    const QString a = addLocation(env, u"A"_s);
    const QString b = addLocation(env, u"B"_s);
    const QString c = addLocation(env, u"C"_s);
    QVERIFY(!a.isEmpty() && !b.isEmpty() && !c.isEmpty());

    // The newest is current; removing it makes the first remaining one current.
    QCOMPARE(runCli(env, {u"location"_s, u"remove"_s, u"C"_s}).exitCode, 0);
    QJsonArray list = listLocations(env);
    QCOMPARE(list.size(), 2);
    QCOMPARE(list.at(0).toObject().value(u"uid"_s).toString(), a);
    QCOMPARE(list.at(0).toObject().value(u"current"_s).toBool(), true);

    QCOMPARE(runCli(env, {u"location"_s, u"remove"_s, a}).exitCode, 0);
    QCOMPARE(runCli(env, {u"location"_s, u"remove"_s, b}).exitCode, 0);
    QCOMPARE(listLocations(env).size(), 0);

    QFile settings(QDir(env.configDir()).filePath(u"settings.json"_s));
    QVERIFY(settings.open(QIODevice::ReadOnly));
    const QJsonObject root = QJsonDocument::fromJson(settings.readAll()).object();
    QVERIFY(root.contains(u"CurrentLocation"_s));
    QCOMPARE(root.value(u"CurrentLocation"_s).toString(), QString());

    // Commands that need a location say so.
    const CliResult r = runCli(env, {u"location"_s, u"show"_s});
    QCOMPARE(r.exitCode, 1);
    QVERIFY(r.err.startsWith("tondrel-cli: "));
}

void TestCliLocation::corruptSettingsAreKept()
{
    TempEnv env;
    QVERIFY(!addLocation(env, u"Home"_s).isEmpty());
    const QString path = QDir(env.configDir()).filePath(u"settings.json"_s);
    QFile file(path);
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QByteArray truncated = file.readAll().left(100);
    file.close();
    QVERIFY(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
    file.write(truncated);
    file.close();

    CliResult r = runCli(env, {u"location"_s, u"list"_s});
    QCOMPARE(r.exitCode, 1);
    QVERIFY2(r.err.contains("--reset-settings"), r.err.constData());
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(file.readAll(), truncated); // untouched
    file.close();
    const QStringList copies = QDir(env.configDir()).entryList({u"settings.json.corrupt-*"_s});
    QCOMPARE(copies.size(), 1);

    r = runCli(env, {u"--reset-settings"_s, u"location"_s, u"list"_s});
    QCOMPARE(r.exitCode, 0);
    QVERIFY(r.out.contains("No locations"));
}

void TestCliLocation::usageErrors_data()
{
    QTest::addColumn<QStringList>("args");
    QTest::addColumn<int>("exitCode");
    QTest::newRow("no command") << QStringList{} << 2;
    QTest::newRow("unknown command") << QStringList{u"frobnicate"_s} << 2;
    QTest::newRow("unknown key") << QStringList{u"location"_s, u"set"_s, u"NoSuchKey"_s, u"1"_s} << 2;
    QTest::newRow("not a boolean") << QStringList{u"location"_s, u"set"_s, u"CallMonitor"_s, u"maybe"_s} << 2;
    QTest::newRow("three prefixes") << QStringList{u"location"_s, u"add"_s, u"--prefixes"_s, u"00,49,0"_s}
                                    << 2;
    QTest::newRow("unknown location") << QStringList{u"location"_s, u"use"_s, u"Nowhere"_s} << 1;
}

void TestCliLocation::usageErrors()
{
    QFETCH(QStringList, args);
    QFETCH(int, exitCode);
    TempEnv env;
    QVERIFY(!addLocation(env, u"Home"_s).isEmpty());
    const CliResult r = runCli(env, args);
    QCOMPARE(r.exitCode, exitCode);
    QVERIFY(r.err.startsWith("tondrel-cli: "));
    QCOMPARE(listLocations(env).size(), 1); // nothing half-written
}

QTEST_GUILESS_MAIN(TestCliLocation)
#include "tst_cli_location.moc"
