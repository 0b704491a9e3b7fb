// The session manager in process against the simulator: block time, the 550-second reuse, the
// markers of an unreachable router, the rights that decide before anything is sent, and the
// failures each login hands back.
#include "TestSupport.h"

#include "base/Clock.h"
#include "base/NotificationCenter.h"
#include "base/NotificationNames.h"
#include "base/SecretStore.h"
#include "base/SettingsStore.h"
#include "base/TNPreferences.h"
#include "box/FBBoxConnectionHelper.h"
#include "box/FBConnection.h"
#include "box/RouterSession.h"
#include "box/TNSessionManager.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTcpServer>
#include <QTest>

namespace {
int loginRequests(SimulatorProcess& sim)
{
    int n = 0;
    for (const QJsonValue& v :
         QJsonDocument::fromJson(sim.control("GET", QStringLiteral("/_sim/requests"))).array())
        if (v.toObject().value(QStringLiteral("path")).toString() == u"/login_sid.lua")
            ++n;
    return n;
}
} // namespace

class TestSession : public QObject
{
    Q_OBJECT
private:
    TempEnv m_env;
    std::unique_ptr<SettingsStore> m_store;
    MemorySecretStore m_secrets;
    NotificationCenter m_center;

    struct Box
    {
        std::shared_ptr<TNPreferences> prefs;
        ManualClock clock{QDateTime::currentDateTime()};
        std::unique_ptr<RouterSession> router;
        TNSessionManager* session = nullptr;
    };

    std::unique_ptr<Box> box(int webPort, const QString& password, const QString& user = {})
    {
        auto b = std::make_unique<Box>();
        b->prefs = std::make_shared<TNPreferences>(*m_store, m_secrets);
        b->prefs->hostName = QStringLiteral("127.0.0.1");
        b->prefs->webPort = webPort;
        b->prefs->userName = user;
        b->prefs->passWord = password;
        b->router = std::make_unique<RouterSession>(m_center, b->clock);
        b->session = &b->router->sessionManager();
        return b;
    }

    QString scenario(const QByteArray& json)
    {
        const QString path = m_env.root.filePath(QStringLiteral("scenario%1.json").arg(qHash(json)));
        QFile f(path);
        f.open(QIODevice::WriteOnly);
        f.write(json);
        return path;
    }

private slots:
    void initTestCase()
    {
        m_store = std::make_unique<SettingsStore>(m_env.root.filePath(QStringLiteral("settings.json")));
    }

    void blockTimeIsRespectedWithoutARequest()
    {
        SimulatorProcess sim(
            {QStringLiteral("--scenario"), scenario("{\"blockAfterFailures\":1,\"blockTime\":60}")});
        QVERIFY(sim.isRunning());
        auto b = box(sim.port(QStringLiteral("web")), QStringLiteral("wrong"));
        QObject observer;
        int statusBar = 0;
        m_center.addObserver(&observer, Notifications::ADDSTATUSBAR,
                             [&](const Notification&) { ++statusBar; });

        const RouterFailure failure = b->session->currentSessionIDUsePreferences(b->prefs.get());
        QCOMPARE(b->session->sessionResult, int(TNSessionResultBlocked));
        QCOMPARE(statusBar, 1);
        QCOMPARE(failure.kind, RouterFailure::Kind::BlockTime);
        QVERIFY(failure.message.contains(QStringLiteral("60 seconds")));
        QCOMPARE(b->session->blockUntilTimeInterval, b->session->now() + 60);
        const int sent = loginRequests(sim);

        b->clock.advance(59);
        QVERIFY(!b->session->currentSessionIDUsePreferences(b->prefs.get()));
        QCOMPARE(loginRequests(sim), sent);

        b->clock.advance(2);
        b->session->currentSessionIDUsePreferences(b->prefs.get());
        QVERIFY(loginRequests(sim) > sent);
    }

    void sessionIsReusedFor550Seconds_data()
    {
        QTest::addColumn<int>("after");
        QTest::addColumn<bool>("loginAgain");
        QTest::newRow("after 550 s") << 550 << false;
        QTest::newRow("after 551 s") << 551 << true;
    }
    void sessionIsReusedFor550Seconds()
    {
        QFETCH(int, after);
        QFETCH(bool, loginAgain);
        SimulatorProcess sim;
        QVERIFY(sim.isRunning());
        auto b = box(sim.port(QStringLiteral("web")), QStringLiteral("secret"));
        b->session->currentSessionIDUsePreferences(b->prefs.get());
        QCOMPARE(b->session->sessionResult, int(TNSessionResultLoggedIn));
        const QString sid = b->router->sessionID;
        QCOMPARE(sid.size(), 16);
        const int sent = loginRequests(sim);
        b->clock.advance(after);
        b->session->currentSessionIDUsePreferences(b->prefs.get());
        QCOMPARE(loginRequests(sim) > sent, loginAgain);
        QCOMPARE(b->router->sessionID != sid, loginAgain);
    }

    void unreachableRouterIsAskedAgainNextTime()
    {
        QTcpServer probe;
        probe.listen(QHostAddress::LocalHost, 0);
        const int port = probe.serverPort();
        probe.close();
        auto b = box(port, QStringLiteral("secret"));
        // A plain refused connection has no text of its own: the caller says the router is unreachable.
        QVERIFY(!b->session->currentSessionIDUsePreferences(b->prefs.get()));
        QCOMPARE(b->session->sessionResult, int(TNSessionResultUnreachable));
        QCOMPARE(b->router->sessionID, QStringLiteral("-2"));
        QCOMPARE(b->router->remoteSessionID, QStringLiteral("-2"));
        QCOMPARE(b->session->requestCount, 1);
        // No successful login stamped the session: the router may be back at the next call.
        RouterFailure failure;
        QCOMPARE(FBBoxConnectionHelper::dialWithAction(QStringLiteral("query"), QStringLiteral("&a=a"),
                                                       QString(), b->prefs.get(), *b->router, &failure),
                 QStringLiteral(" "));
        QCOMPARE(b->session->requestCount, 2);
        QVERIFY(!failure);
    }

    void commandWithStoredUnreachableMarkerSendsNothing()
    {
        SimulatorProcess sim;
        QVERIFY(sim.isRunning());
        auto b = box(sim.port(QStringLiteral("web")), QStringLiteral("secret"));
        b->session->currentSessionIDUsePreferences(b->prefs.get());
        QCOMPARE(b->session->sessionResult, int(TNSessionResultLoggedIn));
        sim.control("POST", QStringLiteral("/_sim/clear"));
        b->router->sessionID = QStringLiteral("-2");
        QCOMPARE(FBBoxConnectionHelper::dialWithAction(QStringLiteral("query"), QStringLiteral("&a=a"),
                                                       QString(), b->prefs.get(), *b->router),
                 QString());
        QCOMPARE(b->router->sessionID, QString());
        QCOMPARE(b->router->remoteSessionID, QString());
        QVERIFY(
            QJsonDocument::fromJson(sim.control("GET", QStringLiteral("/_sim/requests"))).array().isEmpty());
    }

    void wlanOffAsksTheSecondRadioOnlyWhenItExists_data()
    {
        QTest::addColumn<int>("status");
        QTest::addColumn<int>("requests");
        QTest::newRow("second radio unknown (0x20)") << 48 << 1;
        QTest::newRow("second radio on") << 144 << 2;
    }
    void wlanOffAsksTheSecondRadioOnlyWhenItExists()
    {
        QFETCH(int, status);
        QFETCH(int, requests);
        SimulatorProcess sim;
        QVERIFY(sim.isRunning());
        auto b = box(sim.port(QStringLiteral("web")), QStringLiteral("secret"));
        b->prefs->tr064Port = sim.port(QStringLiteral("tr064"));
        b->router->WLANStatus = status;
        FBBoxConnectionHelper::dialWithAction(QStringLiteral("WLANoff"), QString(), QString(), b->prefs.get(),
                                              *b->router);
        int soap = 0;
        for (const QJsonValue& v :
             QJsonDocument::fromJson(sim.control("GET", QStringLiteral("/_sim/actions"))).array())
            soap += v.toObject().value(QStringLiteral("via")).toString() == u"tr064";
        QCOMPARE(soap, requests);
    }

    void fetchedPagesCarryTheirMarker_data()
    {
        QTest::addColumn<QByteArray>("scenario");
        QTest::addColumn<QString>("command");
        QTest::addColumn<QString>("marker");
        const QByteArray lua = "{\"firmware\":\"lua\"}";
        const QByteArray form = "{\"firmware\":\"form\"}";
        QTest::newRow("WLAN page, Lua")
            << lua << QStringLiteral("getWLAN") << QStringLiteral("<!-- pagename:/wlan/wlan_settings.lua-->");
        QTest::newRow("WLAN page, older firmware")
            << form << QStringLiteral("getWLAN") << QStringLiteral("name=\"var:pagename\" value=\"common\"");
    }
    void fetchedPagesCarryTheirMarker()
    {
        QFETCH(QByteArray, scenario);
        QFETCH(QString, command);
        QFETCH(QString, marker);
        SimulatorProcess sim({QStringLiteral("--scenario"), this->scenario(scenario)});
        QVERIFY(sim.isRunning());
        auto b = box(sim.port(QStringLiteral("web")), QStringLiteral("secret"));
        const QString page =
            FBBoxConnectionHelper::dialWithAction(command, QString(), QString(), b->prefs.get(), *b->router);
        QVERIFY2(page.contains(marker), qPrintable(page));
        // With a session the router no longer knows, its login page is the answer.
        b->router->sessionID = QStringLiteral("0123456789abcdef");
        const QString login =
            FBBoxConnectionHelper::dialWithAction(command, QString(), QString(), b->prefs.get(), *b->router);
        QVERIFY(login.contains(QStringLiteral("<input type=\"password\"")));
    }

    // More than 1,000,000 PBKDF2 iterations is refused before any response is computed or sent.
    void costlyChallengeIsRefused()
    {
        SimulatorProcess sim({QStringLiteral("--scenario"), scenario("{\"pbkdf2Iterations\":1000001}")});
        QVERIFY(sim.isRunning());
        auto b = box(sim.port(QStringLiteral("web")), QStringLiteral("secret"));
        const RouterFailure failure = b->session->currentSessionIDUsePreferences(b->prefs.get());
        QCOMPARE(failure.key, QStringLiteral("errorUnexpectedChallenge"));
        QVERIFY(b->session->sessionResult != int(TNSessionResultLoggedIn));
        QCOMPARE(loginRequests(sim), 1); // the challenge only
    }

    void wrongPasswordOnCurrentFirmwareFallsBackToNoSession()
    {
        SimulatorProcess sim;
        QVERIFY(sim.isRunning());
        auto b = box(sim.port(QStringLiteral("web")), QStringLiteral("wrong"));
        const RouterFailure failure = b->session->currentSessionIDUsePreferences(b->prefs.get());
        // The form page of a current router offers no challenge: the sequence ends as "-1".
        QCOMPARE(b->session->sessionResult, int(TNSessionResultLoggedIn));
        QCOMPARE(b->router->sessionID, QStringLiteral("-1"));
        QCOMPARE(b->session->luaType, 3);
        QCOMPARE(failure.kind, RouterFailure::Kind::WrongPassword);
        QCOMPARE(failure.message, QStringLiteral("The password for the router is wrong."));
        QCOMPARE(b->session->userRights, uint(TNSessionRightBase | RightNASNone));
    }

    void usersLastMarkedNameIsUsedWithoutAUserName()
    {
        SimulatorProcess sim(
            {QStringLiteral("--scenario"), scenario("{\"users\":[{\"name\":\"fritz1234\",\"password\":\"pw\","
                                                    "\"rights\":{\"Dial\":2,\"App\":2}}]}")});
        QVERIFY(sim.isRunning());
        auto b = box(sim.port(QStringLiteral("web")), QStringLiteral("pw"));
        const RouterFailure failure = b->session->currentSessionIDUsePreferences(b->prefs.get());
        QCOMPARE(b->session->sessionResult, int(TNSessionResultLoggedIn));
        QCOMPARE(b->router->sessionID.size(), 16);
        QCOMPARE(b->session->userRights, uint(TNSessionRightBase | TNSessionRightDialLocal |
                                              RightBoxAdminNone | TNSessionRightPhoneNone | RightNASNone));
        // Reading the TR-064 switch is a Lua query, which needs the administration right.
        QCOMPARE(failure.kind, RouterFailure::Kind::MissingRight);
        QVERIFY(failure.message.contains(QStringLiteral("lacks the right")));
    }
};

QTEST_GUILESS_MAIN(TestSession)
#include "tst_session.moc"
