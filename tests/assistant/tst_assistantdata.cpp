#include "assistant/AssistantRouterData.h"
#include "assistant/TNAssistantSaver.h"
#include "base/NotificationCenter.h"
#include "base/NotificationNames.h"
#include "base/SecretStore.h"
#include "base/SettingsKeys.h"
#include "base/SettingsStore.h"
#include "base/TNPreferencesManager.h"

#include <QTemporaryDir>
#include <QtTest>

using namespace Qt::StringLiterals;
using Outcome = AssistantRules::ReadOutcome;

Q_DECLARE_METATYPE(AssistantRules::ReadOutcome)

namespace {
constexpr int kLoggedIn = 5;
constexpr std::uint32_t kBase = 0x1;

// A router's answer with the given positions changed from a plain home router in Berlin.
QStringList answerWith(const QHash<int, QString>& changes)
{
    QStringList a{u"49"_s, u"00"_s,   u"30"_s,       u"0"_s, u"50"_s, u"1"_s,    QString(), u"0"_s, QString(),
                  u"0"_s,  QString(), u"boxuser3"_s, u"0"_s, u"0"_s,  QString(), QString(), u"0"_s};
    for (auto it = changes.begin(); it != changes.end(); ++it)
        a[it.key()] = it.value();
    return a;
}

// Refuses to keep passwords, like a locked keyring.
class LockedSecretStore final : public SecretStore
{
public:
    std::optional<QString> read(const QString&, const QString&) override { return std::nullopt; }
    bool write(const QString&, const QString&, const QString&) override { return false; }
    bool remove(const QString&, const QString&) override { return true; }
    QString lastError() const override { return u"locked"_s; }
};
} // namespace

class TestAssistantData : public QObject
{
    Q_OBJECT
private slots:
    void readingTheRouter_data();
    void readingTheRouter();
    void remoteAccess_data();
    void remoteAccess();
    void userAccounts();
    void savingWritesACurrentLocation();
    void failedSaveKeepsNothing();
};

void TestAssistantData::readingTheRouter_data()
{
    QTest::addColumn<QStringList>("answer");
    QTest::addColumn<int>("sessionResult");
    QTest::addColumn<quint32>("rights");
    QTest::addColumn<Outcome>("outcome");

    QTest::newRow("logged in with settings right")
        << answerWith({}) << kLoggedIn << quint32(kBase | 0x80000) << Outcome::Ok;
    QTest::newRow("wrong password") << answerWith({}) << 1 << kBase << Outcome::NotLoggedIn;
    QTest::newRow("router unreachable") << QStringList() << 2 << kBase << Outcome::NotLoggedIn;
    QTest::newRow("user without settings right")
        << answerWith({}) << kLoggedIn << quint32(kBase | 0x10000) << Outcome::MissingRights;
    QTest::newRow("answer cut short")
        << answerWith({}).mid(0, 16) << kLoggedIn << kBase << Outcome::InvalidAnswer;
}

void TestAssistantData::readingTheRouter()
{
    QFETCH(QStringList, answer);
    QFETCH(int, sessionResult);
    QFETCH(quint32, rights);
    QFETCH(Outcome, outcome);
    AssistantRouterData data;
    data.host = u"fritz.box"_s;
    QCOMPARE(AssistantRules::assistantDataFromAnswer(answer, sessionResult, rights, &data), outcome);
    QCOMPARE(data.host, u"fritz.box"_s);
    if (outcome == Outcome::Ok) {
        QCOMPARE(data.prefixis, (QStringList{u"00"_s, u"49"_s, u"0"_s, u"30"_s}));
        QCOMPARE(data.dialPort, u"50"_s);
        QVERIFY(data.readUsers);
        QCOMPARE(data.userSlots, 3);
    } else {
        QVERIFY(data.prefixis.isEmpty());
    }
}

void TestAssistantData::remoteAccess_data()
{
    QTest::addColumn<QStringList>("answer");
    QTest::addColumn<QString>("host");
    QTest::addColumn<QString>("port");
    QTest::addColumn<QString>("user");
    QTest::addColumn<bool>("askForHost");

    const QHash<int, QString> myFritz{{12, u"1"_s},
                                      {13, u"1"_s},
                                      {14, u"abc123.myfritz.net"_s},
                                      {15, u"me@example.org"_s},
                                      {6, u"home.dyndns.org"_s},
                                      {10, u"remote"_s}};
    QTest::newRow("MyFRITZ! registered, no port: 443")
        << answerWith(myFritz) << u"abc123.myfritz.net"_s << u"443"_s << QString() << false;
    auto withPort = myFritz;
    withPort.insert(8, u"8443"_s);
    QTest::newRow("MyFRITZ! registered with its port")
        << answerWith(withPort) << u"abc123.myfritz.net"_s << u"8443"_s << QString() << false;
    withPort.insert(8, u"99999"_s);
    QTest::newRow("MyFRITZ! port out of range reads as the default")
        << answerWith(withPort) << u"abc123.myfritz.net"_s << u"443"_s << QString() << false;
    auto noMail = myFritz;
    noMail.insert(15, QString());
    QTest::newRow("MyFRITZ! without e-mail falls back to dynamic DNS")
        << answerWith(noMail) << u"home.dyndns.org"_s << QString() << u"remote"_s << false;
    auto disabled = myFritz;
    disabled.insert(13, u"0"_s);
    disabled.insert(8, u"4430"_s);
    QTest::newRow("MyFRITZ! switched off")
        << answerWith(disabled) << u"home.dyndns.org"_s << u"4430"_s << u"remote"_s << false;
    QTest::newRow("nothing for remote access: ask the user")
        << answerWith({}) << QString() << QString() << QString() << true;
    QTest::newRow("unknown variables read as empty")
        << answerWith({{6, u"er"_s}, {10, u"er"_s}}) << QString() << QString() << QString() << true;
}

void TestAssistantData::remoteAccess()
{
    QFETCH(QStringList, answer);
    QFETCH(QString, host);
    QFETCH(QString, port);
    QFETCH(QString, user);
    QFETCH(bool, askForHost);
    AssistantRouterData data;
    QCOMPARE(AssistantRules::assistantDataFromAnswer(answer, kLoggedIn, kBase, &data), Outcome::Ok);
    QCOMPARE(data.remoteHost, host);
    QCOMPARE(data.remoteSSLPort, port);
    QCOMPARE(data.remoteUser, user);
    QCOMPARE(data.needsRemoteHost, askForHost);
}

void TestAssistantData::userAccounts()
{
    const QStringList answer{u"anna"_s,     u"3"_s,         u"2"_s,    u"1"_s,       u"3"_s,    u"0"_s,
                             u"boxuser1"_s, u"boxuser98"_s, u"0"_s,    u"2"_s,       u"2"_s,    u"0"_s,
                             u"2"_s,        u"boxuser98"_s, QString(), QString(),    QString(), QString(),
                             QString(),     QString(),      QString(), u"ben"_s,     u"0"_s,    u"0"_s,
                             u"2"_s,        u"0"_s,         u"1"_s,    u"boxuser4"_s};
    const auto users = AssistantRules::usersFromAnswer(answer, 4);
    QCOMPARE(users.size(), 2);
    QCOMPARE(users[0].boxAdminRights, u"2"_s);
    QCOMPARE(users[0].dialRights, u"1"_s);
    QCOMPARE(users[1].phoneRights, u"1"_s);
    QCOMPARE(users[1].uid, u"boxuser4"_s);
    QCOMPARE(AssistantRules::usersFromAnswer(answer, 10).size(),
             2); // a short answer is read as far as it goes
}

void TestAssistantData::savingWritesACurrentLocation()
{
    QTemporaryDir dir;
    SettingsStore store(dir.filePath(u"settings.json"_s));
    MemorySecretStore secrets;
    TNPreferencesManager manager(store, secrets);
    NotificationCenter center;
    QStringList posted;
    QVector<int> progress;
    QObject context;
    for (const QString& name :
         {Notifications::UPDATESAVEPROGRESS, Notifications::FINISHSAVING, Notifications::ACTIVATESETTINGS})
        center.addObserver(&context, name, [&](const Notification& n) {
            posted << n.name;
            if (n.name == Notifications::UPDATESAVEPROGRESS)
                progress << n.userInfo.value(u"progress"_s).toInt();
        });
    const QString existing = manager.addNewLocation();

    AssistantRouterData data;
    data.host = u"192.168.178.1"_s;
    data.userName = u"anna"_s;
    data.pass = u"pw"_s;
    data.name = u"Home"_s;
    data.prefixis = {u"00"_s, u"49"_s, u"0"_s, u"30"_s};
    data.dialPort = u"51"_s;
    data.remoteHost = u"abc123.myfritz.net"_s;
    data.remoteSSLPort = u"8443"_s;
    TNAssistantSaver saver(manager, center);
    const QString uid = saver.savePreferences(data);
    QTRY_VERIFY(posted.contains(Notifications::ACTIVATESETTINGS));
    QCOMPARE(posted.mid(posted.size() - 2),
             (QStringList{Notifications::FINISHSAVING, Notifications::ACTIVATESETTINGS}));
    QVERIFY(std::is_sorted(progress.begin(), progress.end()));
    QCOMPARE(progress.last(), 100);

    QCOMPARE(store.value(keys::CurrentLocation).toString(), uid);
    SettingsStore reread(store.filePath());
    reread.load();
    auto prefs = TNPreferences::initWithLocationUID(uid, reread, secrets);
    QCOMPARE(prefs->hostName, u"192.168.178.1"_s);
    QCOMPARE(prefs->prefixis, data.prefixis);
    QCOMPARE(prefs->dialPortInt, 51);
    QCOMPARE(prefs->remoteHostName, u"abc123.myfritz.net"_s);
    QCOMPARE(prefs->remotesslPort, 8443);
    QCOMPARE(prefs->passWord, u"pw"_s);
    QVERIFY(manager.locationPreferencesForUID(existing) != nullptr); // other locations stay
}

void TestAssistantData::failedSaveKeepsNothing()
{
    QTemporaryDir dir;
    SettingsStore store(dir.filePath(u"settings.json"_s));
    LockedSecretStore secrets;
    TNPreferencesManager manager(store, secrets);
    NotificationCenter center;
    QVariantMap finish;
    bool activated = false;
    QObject context;
    center.addObserver(&context, Notifications::FINISHSAVING,
                       [&](const Notification& n) { finish = n.userInfo; });
    center.addObserver(&context, Notifications::ACTIVATESETTINGS,
                       [&](const Notification&) { activated = true; });
    AssistantRouterData data;
    data.host = u"fritz.box"_s;
    data.pass = u"pw"_s;
    TNAssistantSaver saver(manager, center);
    QVERIFY(saver.savePreferences(data).isEmpty());
    QVERIFY(!saver.errorMessage().isEmpty());
    QTRY_VERIFY(finish.contains(u"success"_s));
    QCOMPARE(finish.value(u"success"_s).toBool(), false);
    QVERIFY(manager.locations().empty());
    QTest::qWait(50);
    QVERIFY(!activated);
}

QTEST_GUILESS_MAIN(TestAssistantData)
#include "tst_assistantdata.moc"
