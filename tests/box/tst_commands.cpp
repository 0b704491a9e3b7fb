// Requests the commands become, per firmware, and the failures TR-064 faults become.
#include "base/SecretStore.h"
#include "base/SettingsStore.h"
#include "base/TNPreferences.h"
#include "box/FBSOAPConnection.h"
#include "box/TNAction.h"
#include "box/TNSessionRights.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

class TestCommands : public QObject
{
    Q_OBJECT
private:
    QTemporaryDir m_dir;
    std::unique_ptr<SettingsStore> m_store;
    MemorySecretStore m_secrets;

private slots:
    void initTestCase()
    {
        m_store = std::make_unique<SettingsStore>(m_dir.filePath(QStringLiteral("settings.json")));
    }

    void plans_data()
    {
        QTest::addColumn<bool>("lua");
        QTest::addColumn<QString>("action");
        QTest::addColumn<QString>("number");
        QTest::addColumn<QString>("port");
        QTest::addColumn<QString>("target"); // path, or the TR-064 control path and action
        QTest::addColumn<QString>("parameters");
        QTest::newRow("web form dial rewrites port 61 to 6")
            << false << QStringLiteral("call") << QStringLiteral("0301234") << QStringLiteral("61")
            << QStringLiteral("/cgi-bin/webcm")
            << QStringLiteral("&telcfg:settings/DialPort=6&telcfg:settings/UseClickToDial=1&telcfg:command/"
                              "Dial=0301234");
        QTest::newRow("web form dial without port uses 50")
            << false << QStringLiteral("call") << QStringLiteral("1") << QStringLiteral("")
            << QStringLiteral("/cgi-bin/webcm")
            << QStringLiteral(
                   "&telcfg:settings/DialPort=50&telcfg:settings/UseClickToDial=1&telcfg:command/Dial=1");
        QTest::newRow("TR-064 dial") << true << QStringLiteral("call") << QStringLiteral("0301234")
                                     << QStringLiteral("61") << QStringLiteral("x_voip#X_AVM-DE_DialNumber")
                                     << QStringLiteral("");
        QTest::newRow("both radios by web form")
            << false << QStringLiteral("WLANon") << QStringLiteral("") << QStringLiteral("")
            << QStringLiteral("/cgi-bin/webcm")
            << QStringLiteral("&wlan:settings/ap_enabled=1&wlan:settings/ap_enabled_scnd=1");
        QTest::newRow("DECT off on the Lua page")
            << true << QStringLiteral("setDECT") << QStringLiteral("") << QStringLiteral("0")
            << QStringLiteral("/dect/dect_settings.lua") << QStringLiteral("&dect_assi=0&btnSave=");
        QTest::newRow("DECT on on the Lua page")
            << true << QStringLiteral("setDECT") << QStringLiteral("") << QStringLiteral("1")
            << QStringLiteral("/dect/dect_settings.lua")
            << QStringLiteral("&dect_activ=on&dect_pin=****&btnSave=");
        QTest::newRow("internal test call")
            << false << QStringLiteral("testExtension") << QStringLiteral("610") << QStringLiteral("")
            << QStringLiteral("/cgi-bin/webcm")
            << QStringLiteral(
                   "&telcfg:settings/DialPort=50&telcfg:settings/UseClickToDial=1&telcfg:command/Dial=**610");
        QTest::newRow("query on older firmware")
            << false << QStringLiteral("query") << QStringLiteral("&var:n[0]=a&var:n0=a&var:cnt=1")
            << QStringLiteral("") << QStringLiteral("/cgi-bin/webcm")
            << QStringLiteral("&var:n[0]=a&var:n0=a&var:cnt=1&getpage=../html/query.txt");
        QTest::newRow("journal refresh on the Lua page")
            << true << QStringLiteral("refreshFoncalls") << QString() << QString()
            << QStringLiteral("/fon_num/foncalls_list.lua")
            << QStringLiteral("&usejournal=on&refresh=&callstab=all");
        QTest::newRow("journal refresh by web form")
            << false << QStringLiteral("refreshFoncalls") << QString() << QString()
            << QStringLiteral("/cgi-bin/webcm")
            << QStringLiteral("&telcfg:settings/RefreshJournal=:-)&var%3Apagename=foncalls");
        QTest::newRow("journal export, older firmware, not German")
            << false << QStringLiteral("csv") << QString() << QString() << QStringLiteral("/cgi-bin/webcm")
            << QStringLiteral(
                   "&getpage=..%2Fhtml%2Fen%2FFRITZ%21Box_Calllist.csv&telcfg:settings/RefreshJournal=:-)"
                   "&telcfg:command/RefreshJournal=:-)&telcfg:settings/UseJournal=1");
        QTest::newRow("query on Lua firmware")
            << true << QStringLiteral("query") << QStringLiteral("&a=a&var:cnt=1") << QStringLiteral("")
            << QStringLiteral("/query.lua?") << QStringLiteral("&a=a&var:cnt=1");
    }
    void plans()
    {
        QFETCH(bool, lua);
        QFETCH(QString, action);
        QFETCH(QString, number);
        QFETCH(QString, port);
        QFETCH(QString, target);
        QFETCH(QString, parameters);
        TNPreferences prefs(*m_store, m_secrets);
        const TNAction::Plan plan = TNAction::planFor(action, number, port, prefs, lua);
        QVERIFY(plan.known);
        if (plan.isSoap()) {
            QCOMPARE(plan.soap.controlPath + u'#' + plan.soap.action, target);
        } else {
            QCOMPARE(plan.path, target);
            QCOMPARE(plan.parameters, parameters);
        }
    }

    void rightsFollowTheAccessKind()
    {
        TNPreferences prefs(*m_store, m_secrets);
        QCOMPARE(
            TNAction::planFor(QStringLiteral("call"), QStringLiteral("1"), QString(), prefs, false).right,
            uint(TNSessionRightDialLocal));
        QCOMPARE(TNAction::planFor(QStringLiteral("query"), QString(), QString(), prefs, true).right,
                 uint(RightBoxAdminLocal));
        prefs.remoteAccess = true;
        QCOMPARE(TNAction::planFor(QStringLiteral("call"), QStringLiteral("1"), QString(), prefs, true).right,
                 uint(TNSessionRightDialRemote));
        QCOMPARE(TNAction::planFor(QStringLiteral("query"), QString(), QString(), prefs, true).right,
                 uint(RightBoxAdminRemote));
    }

    void dialEnvelope()
    {
        TNPreferences prefs(*m_store, m_secrets);
        const FBRequest r = FBSOAPConnection::buildRequest(
            QStringLiteral("http://h:49000/upnp/control/x_voip"),
            TNAction::planFor(QStringLiteral("call"), QStringLiteral("<0301234>"), QString(), prefs, true)
                .soap);
        const QString body = QString::fromUtf8(r.body);
        QVERIFY(
            body.startsWith(QStringLiteral("<?xml version=\"1.0\" encoding=\"UTF-8\"?><SOAP-ENV:Envelope")));
        QVERIFY(body.contains(QStringLiteral("xmlns:ns1=\"urn:dslforum-org:service:X_VoIP:1\"")));
        QVERIFY(body.contains(QStringLiteral(
            "<NewX_AVM-DE_PhoneNumber xsi:type=\"xsd:string\">&lt;0301234&gt;</NewX_AVM-DE_PhoneNumber>")));
        bool action = false;
        for (const auto& [name, value] : r.headers)
            action = action || (name == "SOAPAction" &&
                                value == "urn:dslforum-org:service:X_VoIP:1#X_AVM-DE_DialNumber");
        QVERIFY(action);
    }

    void faultAlerts_data()
    {
        QTest::addColumn<QString>("answer");
        QTest::addColumn<QString>("alert");
        QFile f(QStringLiteral(TONDREL_TEST_DATA_DIR "/box/soap_fault_invalid_args.xml"));
        QVERIFY(f.open(QIODevice::ReadOnly));
        QTest::newRow("router fault with description")
            << QString::fromUtf8(f.readAll())
            << QStringLiteral("The router reported TR-064 error 402: Invalid Args");
        QTest::newRow("not authorised")
            << QStringLiteral("<s:Fault><detail><errorCode>606</errorCode></detail></s:Fault>")
            << QStringLiteral("The router user is not allowed to perform this action (TR-064 error 606).");
        QTest::newRow("code without description")
            << QStringLiteral("<errorCode>401</errorCode>")
            << QStringLiteral("The router reported TR-064 error 401: Unknown");
        QTest::newRow("plain answer")
            << QStringLiteral("<u:SetEnableResponse></u:SetEnableResponse>") << QString();
    }
    void faultAlerts()
    {
        QFETCH(QString, answer);
        QFETCH(QString, alert);
        const RouterFailure failure = FBSOAPConnection::reportFault(answer);
        QCOMPARE(failure.failed(), !alert.isEmpty());
        QCOMPARE(failure.message, alert);
    }
};

QTEST_GUILESS_MAIN(TestCommands)
#include "tst_commands.moc"
