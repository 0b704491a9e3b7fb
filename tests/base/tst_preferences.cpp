#include "base/Defaults.h"
#include "base/LocationKeys.h"
#include "base/ProfileDataStore.h"
#include "base/SecretStore.h"
#include "base/SettingsStore.h"
#include "base/TNPreferencesManager.h"

#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>
#include <QTest>

namespace {

// Stands in for the call database, which answers these three questions for the settings.
class RecordingProfiles final : public ProfileDataStore
{
public:
    std::optional<int> max;
    QList<int> deleted;
    QList<int> smartLists;
    std::optional<int> maxProfileNumber() override { return max; }
    void deleteProfile(int profile) override { deleted << profile; }
    void createDefaultSmartList(int profile) override { smartLists << profile; }
};

void writeJson(const QString& path, const QVariantMap& map)
{
    QFile f(path);
    QVERIFY(f.open(QIODevice::WriteOnly));
    f.write(QJsonDocument(QJsonObject::fromVariantMap(map)).toJson());
}

struct Fixture
{
    QTemporaryDir dir;
    QString path = dir.filePath(QStringLiteral("settings.json"));
    SettingsStore store{path};
    MemorySecretStore secrets;
    RecordingProfiles profiles;
    std::unique_ptr<TNPreferencesManager> manager;

    TNPreferencesManager& start(bool withDatabase = true)
    {
        store.load();
        manager = std::make_unique<TNPreferencesManager>(store, secrets, withDatabase ? &profiles : nullptr);
        manager->start();
        return *manager;
    }
    QVariantMap storedLocation(const QString& uid) const
    {
        SettingsStore reread(path);
        reread.load();
        return reread.value(keys::Locations).toMap().value(uid).toMap();
    }
};

} // namespace

class TestPreferences : public QObject
{
    Q_OBJECT
private slots:
    void missingKeys_data();
    void missingKeys();
    void newLocationValues();
    void legacyKeys();
    void migrationOfNumberedProfiles();
    void migrationSkippedWhenLocationsExist();
    void profileNumbering_data();
    void profileNumbering();
    void removingLocations();
    void firstStartAndCorruptFile();
    void passwordsStayOutOfTheSettingsFile();
    void defaultsHelpers();
    void savingSeveralKeys_data();
    void savingSeveralKeys();
};

void TestPreferences::missingKeys_data()
{
    QTest::addColumn<QVariantMap>("stored");
    QTest::addColumn<QString>("key");
    QTest::addColumn<QVariant>("expected");

    const QVariantMap none;
    QTest::newRow("remote port 443 when missing") << none << keys::RemoteSSLPort << QVariant(443);
    QTest::newRow("remote port 0 reads 443")
        << QVariantMap{{keys::RemoteSSLPort, 0}} << keys::RemoteSSLPort << QVariant(443);
    QTest::newRow("remote port kept")
        << QVariantMap{{keys::RemoteSSLPort, 8443}} << keys::RemoteSSLPort << QVariant(8443);
    QTest::newRow("voicemail flags five ones")
        << none << keys::LoadVoicemails << QVariant(QVariantList{1, 1, 1, 1, 1});
    QTest::newRow("wake on lan stays absent") << none << keys::WakeOnLan << QVariant();
}

void TestPreferences::missingKeys()
{
    QFETCH(QVariantMap, stored);
    QFETCH(QString, key);
    QFETCH(QVariant, expected);

    Fixture f;
    writeJson(f.path, {{keys::Locations, QVariantMap{{QStringLiteral("U1"), stored}}},
                       {keys::CurrentLocation, QStringLiteral("U1")}});
    auto& mgr = f.start();
    auto prefs = mgr.currentPreferences();
    QVERIFY(prefs && !prefs->isDummy());
    // What the object holds is what it writes back.
    const QVariantMap dict = prefs->toLocationDictionary();
    if (!expected.isValid())
        QVERIFY(!dict.contains(key));
    else
        QCOMPARE(dict.value(key), expected);
}

void TestPreferences::newLocationValues()
{
    Fixture f;
    auto& mgr = f.start();
    f.profiles.max = 0;
    const QString uid = mgr.addNewLocation();
    const QVariantMap stored = f.storedLocation(uid);

    QCOMPARE(stored.value(keys::Profile).toInt(), 1);
    // The call kind of a new location goes under the lower-case key; loading reads 0 either way.
    QVERIFY(stored.contains(keys::DefaultCallArtNewLocation));
    QVERIFY(!stored.contains(keys::DefaultCallArt));
    QCOMPARE(mgr.locationPreferencesForUID(uid)->defaultCallArt, 0);
    for (const QString& notWritten : {keys::ContactFormat, keys::FaxID, keys::LoadVoicemails})
        QVERIFY2(!stored.contains(notWritten), qPrintable(notWritten));

    const QVariantList extensions = stored.value(keys::Extensions).toList();
    QCOMPARE(extensions.size(), 18);
    const auto ext = [&](int i, const char* field) {
        return extensions.at(i).toMap().value(QString::fromLatin1(field));
    };
    QCOMPARE(ext(17, "Intern").toString(), QStringLiteral("615"));
    QCOMPARE(f.store.value(keys::CurrentLocation).toString(), uid);
    QCOMPARE(f.profiles.smartLists, QList<int>{1});
    QVERIFY(mgr.isConfigured());
}

void TestPreferences::legacyKeys()
{
    const QVariantList oldLines{QVariantMap{{QStringLiteral("Line"), QStringLiteral("12345")}}};
    const QVariantList oldPorts{QVariantMap{{QStringLiteral("Intern"), QStringLiteral("1")}}};
    const QVariantList newLines{QVariantMap{{QStringLiteral("Line"), QStringLiteral("999")}}};

    Fixture f;
    writeJson(f.path, {{keys::Locations,
                        QVariantMap{{QStringLiteral("OLD"), QVariantMap{{keys::Profile, 1},
                                                                        {keys::CallMonitorFilter, oldLines},
                                                                        {keys::Ports, oldPorts}}},
                                    {QStringLiteral("BOTH"), QVariantMap{{keys::Profile, 2},
                                                                         {keys::CallMonitorFilter, oldLines},
                                                                         {keys::Lines, newLines}}}}},
                       {keys::CurrentLocation, QStringLiteral("OLD")}});
    auto& mgr = f.start();
    auto old = mgr.locationPreferencesForUID(QStringLiteral("OLD"));
    QCOMPARE(old->lines, oldLines);
    QCOMPARE(old->extensions, oldPorts);
    QCOMPARE(mgr.locationPreferencesForUID(QStringLiteral("BOTH"))->lines, newLines);

    // Saving writes the current names.
    QVERIFY(old->save());
    QCOMPARE(f.storedLocation(QStringLiteral("OLD")).value(keys::Lines).toList(), oldLines);
}

void TestPreferences::migrationOfNumberedProfiles()
{
    Fixture f;
    const QString account = SecretStore::keychainAccountForKey(keys::Pass);
    f.secrets.write(QStringLiteral("Tondrel.Profile.0"), account, QStringLiteral("first"));
    f.secrets.write(QStringLiteral("Tondrel.Profile.1"), account, QStringLiteral("second"));
    f.secrets.write(QStringLiteral("Tondrel.FTPPass.1"), account, QStringLiteral("ftp-second"));
    writeJson(f.path, {{keys::Profiles, QVariantList{QVariantMap{{keys::Name, QStringLiteral("Home")}},
                                                     QVariantMap{{keys::Name, QStringLiteral("Office")}}}},
                       {keys::ActiveProfile, 1}});
    auto& mgr = f.start();

    const auto locations = mgr.locations();
    QCOMPARE(int(locations.size()), 2);
    QCOMPARE(locations[0]->locationName, QStringLiteral("Home"));
    QCOMPARE(locations[0]->activeProfileInt, 0);
    QCOMPARE(locations[1]->activeProfileInt, 1);
    QCOMPARE(locations[0]->passWord, QStringLiteral("first"));
    QCOMPARE(locations[1]->FTPPassWord, QStringLiteral("ftp-second"));
    QCOMPARE(mgr.currentPreferences()->locationName, QStringLiteral("Office"));
    // Old items are gone: nothing is left under the numbered names.
    QVERIFY(!f.secrets.read(QStringLiteral("Tondrel.Profile.0"), account));
    QVERIFY(!f.secrets.read(QStringLiteral("Tondrel.FTPPass.1"), account));
    QCOMPARE(f.secrets.size(), 3);
}

void TestPreferences::migrationSkippedWhenLocationsExist()
{
    Fixture f;
    writeJson(f.path, {{keys::Profiles, QVariantList{QVariantMap{{keys::Name, QStringLiteral("Old")}}}},
                       {keys::Locations, QVariantMap{{QStringLiteral("U"), QVariantMap{{keys::Profile, 3}}}}},
                       {keys::CurrentLocation, QStringLiteral("U")}});
    auto& mgr = f.start();
    QCOMPARE(int(mgr.locations().size()), 1);
    QCOMPARE(mgr.currentUID(), QStringLiteral("U"));
}

void TestPreferences::profileNumbering_data()
{
    QTest::addColumn<int>("databaseMax"); // -1: no database
    QTest::addColumn<QList<int>>("existing");
    QTest::addColumn<int>("expected");

    QTest::newRow("no database, no locations") << -1 << QList<int>{} << 1;
    QTest::newRow("no database, highest location is taken") << -1 << QList<int>{1, 4} << 5;
    QTest::newRow("database one beyond its highest") << 7 << QList<int>{1, 2} << 8;
    QTest::newRow("empty database") << 0 << QList<int>{} << 1;
    QTest::newRow("database behind the locations") << 1 << QList<int>{2, 3} << 4;
    QTest::newRow("database candidate free between locations") << 2 << QList<int>{1, 5} << 3;
}

void TestPreferences::profileNumbering()
{
    QFETCH(int, databaseMax);
    QFETCH(QList<int>, existing);
    QFETCH(int, expected);

    Fixture f;
    QVariantMap locations;
    for (int p : existing)
        locations.insert(QStringLiteral("U%1").arg(p), QVariantMap{{keys::Profile, p}});
    writeJson(f.path, {{keys::Locations, locations}});
    auto& mgr = f.start(databaseMax >= 0);
    if (databaseMax >= 0)
        f.profiles.max = databaseMax;
    QCOMPARE(mgr.newProfileNumber(), expected);
}

void TestPreferences::removingLocations()
{
    Fixture f;
    auto& mgr = f.start();
    f.profiles.max = 0;
    const QString first = mgr.addNewLocation();
    f.profiles.max = 1;
    const QString second = mgr.addNewLocation();
    f.profiles.max = 2;
    const QString third = mgr.addNewLocation();
    mgr.activateCurrentLocationForID(third);
    for (const QString& uid : {first, second, third}) {
        auto p = mgr.locationPreferencesForUID(uid);
        p->passWord = QStringLiteral("pw");
        QVERIFY(p->save());
    }
    QCOMPARE(f.secrets.size(), 3);

    // The current one goes: the first remaining one takes over.
    mgr.removeLocationForID(third);
    QCOMPARE(mgr.currentUID(), first);
    QCOMPARE(f.store.value(keys::CurrentLocation).toString(), first);
    QCOMPARE(f.secrets.size(), 2);
    QVERIFY(f.profiles.deleted.isEmpty()); // calls go on the next turn of the event loop
    QTRY_COMPARE(f.profiles.deleted, QList<int>{3});

    // A location that is not current leaves the current one alone.
    mgr.removeLocationForID(second);
    QCOMPARE(mgr.currentUID(), first);

    // The last one goes: no current location, a working stand-in.
    mgr.removeLocationForID(first);
    QCOMPARE(f.store.value(keys::CurrentLocation).toString(), QString());
    QVERIFY(f.store.contains(keys::CurrentLocation));
    auto dummy = mgr.currentPreferences();
    QVERIFY(dummy && dummy->isDummy());
    QCOMPARE(dummy->hostName, QString());
    QCOMPARE(dummy->currentFTPUser(), QStringLiteral("ftpuser"));
    QVERIFY(!mgr.isConfigured());
    QCOMPARE(f.secrets.size(), 0);
    QTRY_COMPARE(f.profiles.deleted, (QList<int>{3, 2, 1}));
}

void TestPreferences::firstStartAndCorruptFile()
{
    {
        Fixture f;
        auto& mgr = f.start();
        QVERIFY(QFile::exists(f.path));
        QVERIFY(!mgr.isConfigured());
        QVERIFY(mgr.currentPreferences()->isDummy());
    }
    {
        Fixture f;
        const QByteArray truncated = R"({"Locations": {"U": {"Host": "fritz.b)";
        QFile file(f.path);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(truncated);
        file.close();

        QCOMPARE(f.store.load(), SettingsStore::LoadResult::Corrupt);
        QFile copy(f.store.corruptCopyPath());
        QVERIFY(copy.open(QIODevice::ReadOnly));
        QCOMPARE(copy.readAll(), truncated);
        // Nothing writes over the user's file until asked to start from defaults.
        f.store.setValue(keys::CurrentLocation, QStringLiteral("X"));
        QVERIFY(!f.store.sync());
        QVERIFY(file.open(QIODevice::ReadOnly));
        QCOMPARE(file.readAll(), truncated);
        file.close();

        f.store.resetAfterCorruption();
        QVERIFY(f.store.sync());
        QCOMPARE(f.store.load(), SettingsStore::LoadResult::Loaded);
    }
}

void TestPreferences::passwordsStayOutOfTheSettingsFile()
{
    Fixture f;
    auto& mgr = f.start();
    const QString uid = mgr.addNewLocation();
    auto prefs = mgr.locationPreferencesForUID(uid);
    prefs->passWord = QStringLiteral("router-secret");
    prefs->remotePassWord = QStringLiteral("remote-secret");
    prefs->FTPPassWord = QStringLiteral("ftp-secret");
    QVERIFY(prefs->save());

    QFile file(f.path);
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QByteArray content = file.readAll();
    QVERIFY(!content.contains("secret"));
    QVERIFY(!prefs->dump().contains(QStringLiteral("secret")));
    QCOMPARE(*f.secrets.read(QStringLiteral("Tondrel.RemotePass.") + uid, QStringLiteral("Fritz!Box Pass")),
             QStringLiteral("remote-secret"));
    QCOMPARE(f.secrets.size(), 3);

    // Storing the passwords alone: an emptied one removes its item.
    prefs->FTPPassWord.clear();
    QVERIFY(prefs->storePasswords());
    QCOMPARE(f.secrets.size(), 2);
    QVERIFY(!f.secrets.read(SecretStore::keychainServiceForKey(keys::FTPPass, uid),
                            SecretStore::keychainAccountForKey(keys::FTPPass)));
    // The stand-in of an unconfigured program has nowhere to put them.
    auto dummy = TNPreferences::initWithDummy(f.store, f.secrets);
    dummy->passWord = QStringLiteral("x");
    QVERIFY(!dummy->storePasswords());
    QCOMPARE(f.secrets.size(), 2);

    // The file store keeps them owner-only.
    QTemporaryDir dir;
    FileSecretStore store(dir.filePath(QStringLiteral("secrets.json")));
    QVERIFY(store.write(QStringLiteral("Tondrel.Profile.X"), QStringLiteral("Fritz!Box Pass"),
                        QStringLiteral("p")));
    QCOMPARE(QFile::permissions(dir.filePath(QStringLiteral("secrets.json"))) & 0x0077,
             QFileDevice::Permissions());
    QCOMPARE(*store.read(QStringLiteral("Tondrel.Profile.X"), QStringLiteral("Fritz!Box Pass")),
             QStringLiteral("p"));
    QVERIFY(store.remove(QStringLiteral("Tondrel.Profile.X"), QStringLiteral("Fritz!Box Pass")));
    QVERIFY(!store.read(QStringLiteral("Tondrel.Profile.X"), QStringLiteral("Fritz!Box Pass")));
}

void TestPreferences::defaultsHelpers()
{
    Fixture f;
    f.start();
    SettingsStore& s = f.store;
    QCOMPARE(methods::getDefaultsNumberForKey(QStringLiteral("SelCLGrp"), s), -1.0);
    methods::setDefaultsForNumber(0, QStringLiteral("SelCLGrp"), s);
    methods::setDefaultsForBool(true, QStringLiteral("ListAtStartup"), s);

    // Written through to disk.
    SettingsStore reread(f.path);
    reread.load();
    QCOMPARE(reread.value(QStringLiteral("SelCLGrp")).toInt(), 0);

    methods::resetUserDefaults(s);
    QVERIFY(!f.store.contains(QStringLiteral("ListAtStartup")));
}

void TestPreferences::savingSeveralKeys_data()
{
    QTest::addColumn<bool>("knownLocation");
    QTest::addColumn<QVariantMap>("values");
    QTest::newRow("two keys") << true
                              << QVariantMap{{keys::Host, QStringLiteral("box.example")},
                                             {keys::WebPort, 8080}};
    QTest::newRow("a key the location did not have")
        << true << QVariantMap{{keys::FaxID, QStringLiteral("+49 30 1")}};
    QTest::newRow("nothing") << true << QVariantMap();
    QTest::newRow("unknown location") << false << QVariantMap{{keys::Host, QStringLiteral("box.example")}};
}

void TestPreferences::savingSeveralKeys()
{
    QFETCH(bool, knownLocation);
    QFETCH(QVariantMap, values);
    Fixture f;
    auto& mgr = f.start();
    const QString other = mgr.addNewLocation();
    const QString uid = mgr.addNewLocation();
    // Written by someone else after the location was loaded: must survive.
    mgr.saveLocationValue(false, keys::CallMonitor, uid);
    const QVariantMap before = f.storedLocation(uid);
    const QVariantMap otherBefore = f.storedLocation(other);
    const QString target = knownLocation ? uid : QStringLiteral("NO-SUCH-UID");

    QCOMPARE(mgr.saveLocationValues(values, target), knownLocation);

    QVariantMap expected = before;
    if (knownLocation)
        for (auto it = values.cbegin(); it != values.cend(); ++it)
            expected.insert(it.key(), it.value());
    const QVariantMap after = f.storedLocation(uid);
    QCOMPARE(after.keys(), expected.keys());
    for (const QString& key : expected.keys())
        QVERIFY2(after.value(key) == expected.value(key), qPrintable(key));
    QCOMPARE(f.storedLocation(other), otherBefore);
    QVERIFY(!f.storedLocation(QStringLiteral("NO-SUCH-UID")).contains(keys::Host));
}

QTEST_GUILESS_MAIN(TestPreferences)
#include "tst_preferences.moc"
