// The location commands as a user or a script runs them: the real binary on a temporary folder.
#include "TestSupport.h"

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTest>

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
    const CliResult r = runCli(env, {QStringLiteral("location"), QStringLiteral("add"), QStringLiteral("--name"), name,
                                     QStringLiteral("--host"), QStringLiteral("127.0.0.1"),
                                     QStringLiteral("--password-stdin")},
                               password);
    if (r.exitCode != 0)
        qWarning() << r.err;
    return QString::fromUtf8(r.out).trimmed();
}

QJsonArray listLocations(const TempEnv& env)
{
    const CliResult r = runCli(env, {QStringLiteral("location"), QStringLiteral("list"), QStringLiteral("--json")});
    return QJsonDocument::fromJson(r.out).array();
}
} // namespace

void TestCliLocation::addListShowAndPasswords()
{
    TempEnv env;
    const QString uid = addLocation(env, QStringLiteral("Home"), "s3cr3t!\n");
    QVERIFY2(uid.size() == 36, qPrintable(uid));

    const QJsonArray list = listLocations(env);
    QCOMPARE(list.size(), 1);
    const QJsonObject home = list.at(0).toObject();
    QCOMPARE(home.value(QStringLiteral("uid")).toString(), uid);
    QCOMPARE(home.value(QStringLiteral("name")).toString(), QStringLiteral("Home"));
    QCOMPARE(home.value(QStringLiteral("host")).toString(), QStringLiteral("127.0.0.1"));
    QCOMPARE(home.value(QStringLiteral("profile")).toInt(), 1);
    QCOMPARE(home.value(QStringLiteral("current")).toBool(), true);

    QFile settings(QDir(env.configDir()).filePath(QStringLiteral("settings.json")));
    QVERIFY(settings.open(QIODevice::ReadOnly));
    const QByteArray settingsText = settings.readAll();
    QVERIFY(!settingsText.contains("s3cr3t"));
    const QJsonObject stored =
        QJsonDocument::fromJson(settingsText).object().value(QStringLiteral("Locations")).toObject().value(uid).toObject();
    for (const char* key : {"Profile", "Name", "Host", "userName", "CallMonitor", "Extensions", "Prefixis", "FTPSSL",
                            "RemoteSSLPort", "SaveDate"})
        QVERIFY2(stored.contains(QLatin1String(key)), key);

    const QString secretsPath = QDir(env.configDir()).filePath(QStringLiteral("secrets.json"));
    QCOMPARE(QFile::permissions(secretsPath) & 0x0077, QFileDevice::Permissions());
    QFile secrets(secretsPath);
    QVERIFY(secrets.open(QIODevice::ReadOnly));
    const QJsonObject items = QJsonDocument::fromJson(secrets.readAll()).object();
    QCOMPARE(items.value(QStringLiteral("Tondrel.Profile.") + uid).toObject().value(QStringLiteral("Fritz!Box Pass")).toString(),
             QStringLiteral("s3cr3t!"));

    // A typed key, and a password for remote access.
    CliResult r = runCli(env, {QStringLiteral("location"), QStringLiteral("set"), QStringLiteral("CallMonitorPort"),
                               QStringLiteral("2012")});
    QCOMPARE(r.exitCode, 0);
    r = runCli(env, {QStringLiteral("location"), QStringLiteral("password"), QStringLiteral("--remote"),
                     QStringLiteral("--password-stdin")},
               "far-away\n");
    QCOMPARE(r.exitCode, 0);
    r = runCli(env, {QStringLiteral("location"), QStringLiteral("show"), QStringLiteral("--json")});
    QCOMPARE(r.exitCode, 0);
    const QJsonObject shown = QJsonDocument::fromJson(r.out).object();
    QCOMPARE(shown.value(QStringLiteral("CallMonitorPort")).toInt(), 2012);
    QCOMPARE(shown.value(QStringLiteral("remotePasswordSet")).toBool(), true);
    QVERIFY(!r.out.contains("far-away"));
}

void TestCliLocation::removeMovesTheCurrentLocation()
{
    TempEnv env;
    const QString a = addLocation(env, QStringLiteral("A"));
    const QString b = addLocation(env, QStringLiteral("B"));
    const QString c = addLocation(env, QStringLiteral("C"));
    QVERIFY(!a.isEmpty() && !b.isEmpty() && !c.isEmpty());

    // The newest is current; removing it makes the first remaining one current.
    QCOMPARE(runCli(env, {QStringLiteral("location"), QStringLiteral("remove"), QStringLiteral("C")}).exitCode, 0);
    QJsonArray list = listLocations(env);
    QCOMPARE(list.size(), 2);
    QCOMPARE(list.at(0).toObject().value(QStringLiteral("uid")).toString(), a);
    QCOMPARE(list.at(0).toObject().value(QStringLiteral("current")).toBool(), true);

    QCOMPARE(runCli(env, {QStringLiteral("location"), QStringLiteral("remove"), a}).exitCode, 0);
    QCOMPARE(runCli(env, {QStringLiteral("location"), QStringLiteral("remove"), b}).exitCode, 0);
    QCOMPARE(listLocations(env).size(), 0);

    QFile settings(QDir(env.configDir()).filePath(QStringLiteral("settings.json")));
    QVERIFY(settings.open(QIODevice::ReadOnly));
    const QJsonObject root = QJsonDocument::fromJson(settings.readAll()).object();
    QVERIFY(root.contains(QStringLiteral("CurrentLocation")));
    QCOMPARE(root.value(QStringLiteral("CurrentLocation")).toString(), QString());

    // Commands that need a location say so.
    const CliResult r = runCli(env, {QStringLiteral("location"), QStringLiteral("show")});
    QCOMPARE(r.exitCode, 1);
    QVERIFY(r.err.startsWith("tondrel-cli: "));
}

void TestCliLocation::corruptSettingsAreKept()
{
    TempEnv env;
    QVERIFY(!addLocation(env, QStringLiteral("Home")).isEmpty());
    const QString path = QDir(env.configDir()).filePath(QStringLiteral("settings.json"));
    QFile file(path);
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QByteArray truncated = file.readAll().left(100);
    file.close();
    QVERIFY(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
    file.write(truncated);
    file.close();

    CliResult r = runCli(env, {QStringLiteral("location"), QStringLiteral("list")});
    QCOMPARE(r.exitCode, 1);
    QVERIFY2(r.err.contains("--reset-settings"), r.err.constData());
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(file.readAll(), truncated); // untouched
    file.close();
    const QStringList copies = QDir(env.configDir()).entryList({QStringLiteral("settings.json.corrupt-*")});
    QCOMPARE(copies.size(), 1);

    r = runCli(env, {QStringLiteral("--reset-settings"), QStringLiteral("location"), QStringLiteral("list")});
    QCOMPARE(r.exitCode, 0);
    QVERIFY(r.out.contains("No locations"));
}

void TestCliLocation::usageErrors_data()
{
    QTest::addColumn<QStringList>("args");
    QTest::addColumn<int>("exitCode");
    QTest::newRow("no command") << QStringList{} << 2;
    QTest::newRow("unknown command") << QStringList{QStringLiteral("frobnicate")} << 2;
    QTest::newRow("unknown key") << QStringList{QStringLiteral("location"), QStringLiteral("set"),
                                                QStringLiteral("NoSuchKey"), QStringLiteral("1")}
                                 << 2;
    QTest::newRow("not a boolean") << QStringList{QStringLiteral("location"), QStringLiteral("set"),
                                                  QStringLiteral("CallMonitor"), QStringLiteral("maybe")}
                                   << 2;
    QTest::newRow("three prefixes") << QStringList{QStringLiteral("location"), QStringLiteral("add"),
                                                   QStringLiteral("--prefixes"), QStringLiteral("00,49,0")}
                                    << 2;
    QTest::newRow("unknown location") << QStringList{QStringLiteral("location"), QStringLiteral("use"),
                                                     QStringLiteral("Nowhere")}
                                      << 1;
}

void TestCliLocation::usageErrors()
{
    QFETCH(QStringList, args);
    QFETCH(int, exitCode);
    TempEnv env;
    QVERIFY(!addLocation(env, QStringLiteral("Home")).isEmpty());
    const CliResult r = runCli(env, args);
    QCOMPARE(r.exitCode, exitCode);
    QVERIFY(r.err.startsWith("tondrel-cli: "));
    QCOMPARE(listLocations(env).size(), 1); // nothing half-written
}

QTEST_GUILESS_MAIN(TestCliLocation)
#include "tst_cli_location.moc"
