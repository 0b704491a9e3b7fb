#include "app/AppConductor.h"
#include "base/Clock.h"
#include "base/DialURL.h"
#include "base/NotificationCenter.h"
#include "base/SecretStore.h"
#include "base/SettingsKeys.h"
#include "base/SettingsStore.h"
#include "base/TNPreferencesManager.h"
#include "monitor/NetworkReachability.h"
#include "monitor/ReconnectBackoff.h"
#include "monitor/SleepWatcher.h"
#include "monitor/StreamListener.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QProcess>
#include <QSignalSpy>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

// The network as the test wants it to be.
class SwitchableReachability final : public NetworkReachability
{
public:
    bool isReachable(const QString&) const override { return reachable; }
    void set(bool r)
    {
        reachable = r;
        emit reachabilityChanged();
    }
    bool reachable = true;
};

// A router's call monitor port: counts the connections made to it.
struct FakeRouterPort
{
    QTcpServer server;
    QList<QTcpSocket*> clients;
    FakeRouterPort()
    {
        server.listen(QHostAddress::LocalHost);
        QObject::connect(&server, &QTcpServer::newConnection, &server, [this] {
            while (auto* s = server.nextPendingConnection())
                clients << s;
        });
    }
};

struct Env
{
    QTemporaryDir dir;
    SettingsStore store{dir.filePath(u"settings.json"_s)};
    MemorySecretStore secrets;
    TNPreferencesManager manager{store, secrets};
    NotificationCenter center;
    StreamListener listener{{.preferences = [this] { return manager.currentPreferences(); },
                             .settings = store,
                             .center = center,
                             .clock = Clock::system(),
                             .memoDetails = {},
                             .openCallmonitorWindow = {},
                             .openURL = {},
                             .setStatusItemState = {}}};
    SwitchableReachability reachability;
    FakeRouterPort router;
    int statusChecks = 0;
    QString first, second;
    std::unique_ptr<AppConductor> conductor;

    Env()
    {
        first = manager.addNewLocation();
        second = manager.addNewLocation();
        for (const QString& uid : {first, second}) {
            manager.saveLocationValue(u"127.0.0.1"_s, keys::Host, uid);
            manager.saveLocationValue(int(router.server.serverPort()), keys::CallMonitorPort, uid);
        }
        store.setValue(keys::CurrentLocation, first);
        manager.activateCurrentLocation();
        AppConductor::Hooks hooks;
        hooks.checkRouterStatus = [this] { ++statusChecks; };
        conductor = std::make_unique<AppConductor>(manager, listener, center, &reachability, hooks);
    }
    bool storedCallMonitor(const QString& uid) const
    {
        return store.value(keys::Locations).toMap().value(uid).toMap().value(keys::CallMonitor).toBool();
    }
};

} // namespace

class TestAppConductor : public QObject
{
    Q_OBJECT
private slots:
    void dialURL_data()
    {
        QTest::addColumn<QString>("url");
        QTest::addColumn<bool>("ours");
        QTest::addColumn<QString>("number");
        QTest::newRow("callto with two slashes") << u"callto://0301234567"_s << true << u"0301234567"_s;
        QTest::newRow("dial without slashes") << u"dial:0301234567"_s << true << u"0301234567"_s;
        QTest::newRow("scheme in capitals") << u"CALLTO://+49301234567"_s << true << u"+49301234567"_s;
        QTest::newRow("encoded blanks and plus") << u"callto:%2B49%2030%20123"_s << true << u"+49 30 123"_s;
        QTest::newRow("slashes inside the number") << u"dial://030/123/45"_s << true << u"03012345"_s;
        QTest::newRow("tel goes to the system") << u"tel:0301234567"_s << false << QString();
        QTest::newRow("no scheme") << u"0301234567"_s << false << QString();
    }
    void dialURL()
    {
        QFETCH(QString, url);
        QFETCH(bool, ours);
        QFETCH(QString, number);
        const auto parsed = methods::numberFromDialURL(url);
        QCOMPARE(parsed.has_value(), ours);
        if (ours)
            QCOMPARE(*parsed, number);

        Env env;
        QSignalSpy newCall(env.conductor.get(), &AppConductor::newCallRequested);
        QSignalSpy external(env.conductor.get(), &AppConductor::openURLExternally);
        env.conductor->handleURL(url);
        QCOMPARE(newCall.count(), ours ? 1 : 0);
        QCOMPARE(external.count(), ours ? 0 : 1);
        if (ours)
            QCOMPARE(newCall.at(0).at(1).toStringList(), (QStringList{QString(), QString(), QString()}));
    }

    void activationConnectsAndStartsTheStatusTimer()
    {
        Env env;
        env.conductor->activateSettingsAndCallMonitor();
        QTRY_VERIFY(env.listener.isConnected());
        QCOMPARE(env.statusChecks, 1);
        env.conductor->setStatusIntervalMs(30);
        QTRY_VERIFY(env.statusChecks >= 3);
    }

    void toggleStoresForTheCurrentLocationOnly()
    {
        Env env;
        env.conductor->activateCallMonitor();
        QTRY_VERIFY(env.listener.isConnected());
        QVERIFY(env.storedCallMonitor(env.second));

        QCOMPARE(env.conductor->toggleCallMonitor(), false);
        QVERIFY(!env.listener.isConnected());
        QVERIFY(!env.storedCallMonitor(env.first));
        QVERIFY(env.storedCallMonitor(env.second));
        // Off means off: losing the router later does not bring it back.
        QTest::qWait(100);
        QVERIFY(!env.listener.isConnected());

        QCOMPARE(env.conductor->toggleCallMonitor(), true);
        QVERIFY(env.storedCallMonitor(env.first));
        QTRY_VERIFY(env.listener.isConnected());
    }

    void lostConnectionIsRetriedWithGrowingWaits()
    {
        Env env;
        env.conductor->reconnector().setBackoff(ReconnectBackoff(40, 200));
        QSignalSpy retries(&env.conductor->reconnector(), &CallMonitorReconnector::retryScheduled);
        env.conductor->activateCallMonitor();
        QTRY_VERIFY(env.listener.isConnected());
        QTRY_COMPARE(env.router.clients.size(), 1);

        const quint16 port = env.router.server.serverPort();
        env.router.server.close(); // the router goes away
        env.router.clients.at(0)->close();
        QTRY_VERIFY(!env.listener.isConnected());
        QTRY_VERIFY_WITH_TIMEOUT(retries.count() >= 5, 5000);
        QList<int> delays;
        for (const auto& r : retries)
            delays << r.at(0).toInt();
        QCOMPARE(delays.mid(0, 5), (QList<int>{40, 80, 160, 200, 200}));
        ReconnectBackoff backoff(40, 200);
        backoff.nextDelayMs();
        backoff.reset(); // a connection that came back starts from the shortest wait again
        QCOMPARE(backoff.nextDelayMs(), 40);

        QVERIFY(env.router.server.listen(QHostAddress::LocalHost, port));
        QTRY_VERIFY_WITH_TIMEOUT(env.listener.isConnected(), 5000);
    }

    void sleepAndWakeFromLogind()
    {
        QProcess daemon;
        daemon.start(u"dbus-daemon"_s, {u"--session"_s, u"--print-address"_s, u"--nofork"_s});
        QVERIFY(daemon.waitForStarted(5000) && daemon.waitForReadyRead(5000));
        const QString address = QString::fromUtf8(daemon.readLine()).trimmed();
        QDBusConnection login = QDBusConnection::connectToBus(address, u"logind"_s);
        QVERIFY(login.registerService(u"org.freedesktop.login1"_s));

        Env env;
        SleepWatcher watcher(QDBusConnection::connectToBus(address, u"system"_s));
        QVERIFY(watcher.isWatching());
        env.conductor->attachSleepWatcher(watcher);
        env.conductor->activateSettingsAndCallMonitor();
        QTRY_VERIFY(env.listener.isConnected());

        auto prepare = [&](bool start) {
            QDBusMessage m = QDBusMessage::createSignal(
                u"/org/freedesktop/login1"_s, u"org.freedesktop.login1.Manager"_s, u"PrepareForSleep"_s);
            m << start;
            QVERIFY(login.send(m));
        };
        prepare(true);
        QTRY_VERIFY(!env.listener.isConnected());
        QVERIFY(!env.conductor->isStatusTimerActive());
        prepare(false);
        QTRY_VERIFY(env.listener.isConnected());
        QVERIFY(env.conductor->isStatusTimerActive());

        // Waking without the network: no connection attempt until it is back.
        prepare(true);
        QTRY_VERIFY(!env.listener.isConnected());
        env.reachability.reachable = false;
        const int before = env.router.clients.size();
        prepare(false);
        QTRY_VERIFY(env.conductor->isStatusTimerActive());
        QTest::qWait(200);
        QVERIFY(!env.listener.isConnected());
        QCOMPARE(env.router.clients.size(), before);
        env.reachability.set(true);
        QTRY_VERIFY(env.listener.isConnected());

        QDBusConnection::disconnectFromBus(u"logind"_s);
        QDBusConnection::disconnectFromBus(u"system"_s);
        daemon.terminate();
        daemon.waitForFinished(5000);
    }
};

QTEST_GUILESS_MAIN(TestAppConductor)
#include "tst_appconductor.moc"
