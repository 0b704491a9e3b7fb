// The setup assistant's window against the simulated router: found by SSDP, read, saved as the
// current location; a wrong password keeps it on the reading step until corrected.
#include "GuiFixture.h"

#include "TrayApplication.h"
#include "TrayMenu.h"
#include "assistant/SsdpDiscovery.h"
#include "base/NotificationCenter.h"
#include "base/NotificationNames.h"
#include "base/TNPreferencesManager.h"
#include "setup/SetupPages.h"
#include "setup/SetupWizard.h"

#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QNetworkDatagram>
#include <QPushButton>
#include <QTest>
#include <QUdpSocket>

using namespace Qt::StringLiterals;

class TestSetupWizard : public QObject
{
    Q_OBJECT
private slots:
    void address_data();
    void address();
    void nameFromModel_data();
    void nameFromModel();
    void findReadAndSave();
    void nothingAnswers();
    void menuOpensOneAssistant();
};

void TestSetupWizard::address_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("valid");
    QTest::addColumn<QString>("host");
    QTest::addColumn<int>("port");

    QTest::newRow("name") << u"fritz.box"_s << true << u"fritz.box"_s << 80;
    QTest::newRow("address and port, blanks around")
        << u" 192.168.178.1:8080 "_s << true << u"192.168.178.1"_s << 8080;
    QTest::newRow("IPv6 with port") << u"[fe80::1]:81"_s << true << u"fe80::1"_s << 81;
    QTest::newRow("empty") << QString() << false << QString() << 0;
    QTest::newRow("two words") << u"my box"_s << false << QString() << 0;
    QTest::newRow("a URL path") << u"fritz.box/login"_s << false << QString() << 0;
    QTest::newRow("port out of range") << u"fritz.box:70000"_s << false << QString() << 0;
}

void TestSetupWizard::address()
{
    QFETCH(QString, text);
    QFETCH(bool, valid);
    QFETCH(QString, host);
    QFETCH(int, port);
    QString parsedHost;
    int parsedPort = 0;
    QCOMPARE(SetupWizard::parseAddress(text, &parsedHost, &parsedPort), valid);
    if (valid) {
        QCOMPARE(parsedHost, host);
        QCOMPARE(parsedPort, port);
    }
}

void TestSetupWizard::nameFromModel_data()
{
    QTest::addColumn<QString>("model");
    QTest::addColumn<QString>("name");
    QTest::newRow("with firmware version") << u" FRITZ!Box 7590 154.07.57"_s << u"FRITZ!Box 7590"_s;
    QTest::newRow("without version") << u"FRITZ!Box Fon WLAN"_s << u"FRITZ!Box Fon WLAN"_s;
    QTest::newRow("unknown device") << SsdpDiscovery::unknownDeviceName() << QString();
}

void TestSetupWizard::nameFromModel()
{
    QFETCH(QString, model);
    QFETCH(QString, name);
    QCOMPARE(SetupWizard::locationNameFromModel(model), name);
}

void TestSetupWizard::findReadAndSave()
{
    SimulatorProcess sim({u"--ssdp-port"_s, u"0"_s});
    QVERIFY2(sim.isRunning(), qPrintable(sim.error()));
    GuiEnv env;
    QVERIFY(env.open({}, QString()));
    QVERIFY(!env.env->manager().isConfigured());

    QStringList seen;
    QObject observer;
    for (const QString& name : {Notifications::FINISHSAVING, Notifications::ACTIVATESETTINGS})
        env.env->notifications().addObserver(&observer, name,
                                             [&seen](const Notification& n) { seen << n.name; });

    SetupWizard wizard(*env.env);
    wizard.setDiscoveryTarget(u"127.0.0.1:%1"_s.arg(sim.port(u"ssdp"_s)));
    wizard.discovery().setCompletionInterval(600);
    wizard.show();
    auto* choice = qobject_cast<RouterChoicePage*>(wizard.page(SetupWizard::RouterPage));
    // The simulator answers twice; the router is listed once, under its model.
    QTRY_COMPARE_WITH_TIMEOUT(choice->routerList()->count(), 1, 5000);
    QVERIFY(choice->routerList()->item(0)->text().contains(u"FRITZ!Box 7590"_s));
    QCOMPARE(choice->addressField()->text(), u"127.0.0.1"_s);
    choice->addressField()->setText(u"127.0.0.1:%1"_s.arg(sim.port(u"web"_s)));
    wizard.next();

    auto* login = qobject_cast<LoginPage*>(wizard.currentPage());
    QVERIFY(login);
    login->passwordField()->setText(u"wrong"_s);
    wizard.next();
    auto* read = qobject_cast<ReadPage*>(wizard.currentPage());
    QVERIFY(read);
    QTRY_VERIFY_WITH_TIMEOUT(read->statusLabel()->text().contains(u"could not be read"_s), 15000);
    QVERIFY(!read->isComplete());
    QVERIFY(!wizard.button(QWizard::NextButton)->isEnabled());

    wizard.back();
    login->passwordField()->setText(u"secret"_s);
    wizard.next();
    QTRY_VERIFY_WITH_TIMEOUT(read->isComplete(), 15000);
    QCOMPARE(read->nameField()->text(), u"FRITZ!Box 7590"_s);
    QVERIFY2(read->summaryLabel()->text().contains(u"+49"_s), qPrintable(read->summaryLabel()->text()));
    read->nameField()->setText(u"Home"_s);
    wizard.next();
    QCOMPARE(wizard.currentId(), int(SetupWizard::RemotePage));
    wizard.next();
    QCOMPARE(wizard.currentId(), int(SetupWizard::SavePage));
    wizard.button(QWizard::FinishButton)->click();

    QVERIFY(!wizard.savedUID().isEmpty());
    QCOMPARE(seen, (QStringList{Notifications::FINISHSAVING, Notifications::ACTIVATESETTINGS}));
    TNPreferencesManager& manager = env.env->manager();
    QVERIFY(manager.isConfigured());
    const auto prefs = manager.currentPreferences();
    QVERIFY(prefs);
    QCOMPARE(prefs->uid, wizard.savedUID());
    QCOMPARE(prefs->locationName, u"Home"_s);
    QCOMPARE(prefs->hostName, u"127.0.0.1"_s);
    QCOMPARE(prefs->webPort, sim.port(u"web"_s));
    QCOMPARE(prefs->passWord, u"secret"_s);
    QCOMPARE(prefs->prefixis.size(), 4);
}

void TestSetupWizard::nothingAnswers()
{
    // A port nobody answers on: the search ends empty and the address can still be typed.
    QUdpSocket silent;
    QVERIFY(silent.bind(QHostAddress::LocalHost, 0));
    GuiEnv env;
    QVERIFY(env.open({}, QString()));
    SetupWizard wizard(*env.env);
    wizard.setDiscoveryTarget(u"127.0.0.1:%1"_s.arg(silent.localPort()));
    wizard.discovery().setCompletionInterval(300);
    wizard.show();
    auto* choice = qobject_cast<RouterChoicePage*>(wizard.currentPage());
    QVERIFY(choice);
    QTRY_VERIFY_WITH_TIMEOUT(choice->statusLabel()->text().contains(u"No router answered"_s), 5000);
    QCOMPARE(choice->routerList()->count(), 0);
    QVERIFY(!wizard.button(QWizard::NextButton)->isEnabled());
    choice->addressField()->setText(u"fritz.box"_s);
    QVERIFY(wizard.button(QWizard::NextButton)->isEnabled());
}

void TestSetupWizard::menuOpensOneAssistant()
{
    GuiTray t;
    QVERIFY(t.env.open({}, QString()));
    t.start();
    // Headless starts open no window of their own.
    QVERIFY(!t.tray->setupWizard());
    t.tray->menu().setupItem()->trigger();
    QPointer<SetupWizard> first = t.tray->setupWizard();
    QVERIFY(first && first->isVisible());
    t.tray->menu().setupItem()->trigger();
    QCOMPARE(t.tray->setupWizard(), first.data());
    first->reject();
    QTRY_VERIFY(!first);
}

QTEST_MAIN(TestSetupWizard)
#include "tst_setupwizard.moc"
