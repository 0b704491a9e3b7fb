#include "../contacts/DirectoryServer.h"
#include "GuiFixture.h"

#include "DialWindow.h"
#include "ExtensionsMenu.h"
#include "LatestCallsMenu.h"
#include "LocationsMenu.h"
#include "TNStatusMenu.h"
#include "TrayApplication.h"
#include "TrayMenu.h"
#include "app/CallMonitorService.h"
#include "box/RouterSession.h"
#include "box/RouterSessions.h"

#include "app/CallListSync.h"
#include "base/NotificationCenter.h"
#include "base/NotificationNames.h"
#include "base/SettingsKeys.h"
#include "base/SettingsStore.h"
#include "base/TNPreferencesManager.h"
#include "calllist/TNCallinglist.h"
#include "monitor/StreamListener.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QMutexLocker>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {
struct MenuRig
{
    GuiEnv env;
    RecordingPresenter presenter;
    QStringList wlanCommands;
    std::unique_ptr<TrayApplication> tray;

    bool start(const QVariantMap& locations = {{u"L1"_s, GuiEnv::location(u"Home"_s, 1, 0)}})
    {
        if (!env.open(locations, u"L1"_s))
            return false;
        TrayApplication::Options options;
        options.presenter = &presenter;
        options.headless = true;
        options.switchWLAN = [this](const QString& command) { wlanCommands << command; };
        tray = std::make_unique<TrayApplication>(*env.env, options);
        tray->start({});
        return true;
    }
    TNPreferencesManager& manager() { return env.env->manager(); }
};

// A tray on a location served by the simulator, with the router's own options.
struct SimRig
{
    SimulatorProcess sim;
    GuiEnv env;
    RecordingPresenter presenter;
    std::unique_ptr<TrayApplication> tray;

    bool open(const QVariantMap& globals = {})
    {
        if (!sim.isRunning() ||
            !env.open({{u"L1"_s, GuiEnv::routerLocation(u"Home"_s, 1, sim)}}, u"L1"_s, globals))
            return false;
        env.setPassword(u"L1"_s, u"secret"_s);
        return true;
    }
    bool start(const std::function<void(TrayApplication::Options&)>& adjust)
    {
        if (!env.env && !open())
            return false;
        TrayApplication::Options options = TrayApplication::routerOptions(*env.env);
        options.presenter = &presenter;
        options.headless = true;
        adjust(options);
        tray = std::make_unique<TrayApplication>(*env.env, options);
        tray->start({});
        return true;
    }
    // What the simulator was told to do, of one kind.
    QStringList sent(const QString& action, const std::function<QString(const QJsonValue&)>& show)
    {
        QStringList out;
        for (const QJsonValue& v : QJsonDocument::fromJson(sim.control("GET", u"/_sim/actions"_s)).array())
            if (v[u"action"_s].toString() == action)
                out << show(v);
        return out;
    }
};

QAction* actionNamed(QMenu* menu, const QString& text)
{
    for (QAction* a : menu->actions())
        if (a->text().contains(text))
            return a;
    return nullptr;
}

QStringList texts(QMenu* menu)
{
    QStringList out;
    // Sections are separators with a title.
    for (QAction* a : menu->actions())
        if (!a->isSeparator() || !a->text().isEmpty())
            out << a->text();
    return out;
}
} // namespace

class TestTrayMenu : public QObject
{
    Q_OBJECT
private slots:
    void dockState_data();
    void dockState();
    void locationsAndRemoteAccess();
    void extensionStatesFollowTheMonitor();
    void latestCallsDial();
    void wlanSwitch_data();
    void wlanSwitch();
    void wlanSwitchReachesTheRouter();
    void startRefreshesLookupDefinitions();
    void dectSwitchReachesTheRouter();
    void badgeAfterImport_data();
    void badgeAfterImport();
};

void TestTrayMenu::dockState_data()
{
    QTest::addColumn<QVariant>("stored");
    QTest::addColumn<bool>("tray");
    QTest::addColumn<bool>("taskbar");
    QTest::newRow("missing key shows both") << QVariant() << true << true;
    QTest::newRow("0 tray only") << QVariant(0) << true << false;
    QTest::newRow("1 taskbar only") << QVariant(1) << false << true;
    QTest::newRow("unknown value shows both") << QVariant(7) << true << true;
}

void TestTrayMenu::dockState()
{
    QFETCH(QVariant, stored);
    QTemporaryDir dir;
    SettingsStore store(dir.filePath(u"settings.json"_s));
    if (stored.isValid())
        store.setValue(u"MENU_DOCK_STATE"_s, stored);
    const auto state = TNStatusMenu::dockState(store);
    QTEST(TNStatusMenu::showsStatusItem(state), "tray");
    QTEST(TNStatusMenu::showsTaskbarWindow(state), "taskbar");
}

void TestTrayMenu::locationsAndRemoteAccess()
{
    MenuRig rig;
    QVariantMap office = GuiEnv::location(u"Office"_s, 2, 0);
    office.insert(u"RemoteHost"_s, u"office.example.net"_s);
    office.insert(u"RemoteAccess"_s, true);
    office.insert(u"Extensions"_s,
                  QVariantList{QVariantMap{{u"Intern"_s, u"51"_s}, {u"Title"_s, u"Desk"_s}}});
    QVERIFY(rig.start({{u"L1"_s, GuiEnv::location(u"Home"_s, 1, 0)}, {u"L2"_s, office}}));
    TrayMenu& menu = rig.tray->menu();
    QVERIFY(!menu.remoteAccessItem()->isEnabled());
    QVERIFY(!menu.remoteAccessItem()->isChecked());
    QCOMPARE(texts(menu.extensionsMenu()), (QStringList{u"Kitchen"_s, u"Handset"_s}));
    QAction* home = actionNamed(menu.locationsMenu(), u"Home"_s);
    QAction* officeItem = actionNamed(menu.locationsMenu(), u"Office"_s);
    QVERIFY(home && officeItem);
    QVERIFY(home->isChecked());

    officeItem->trigger();
    QCOMPARE(rig.manager().currentUID(), u"L2"_s);
    QTRY_COMPARE(texts(menu.extensionsMenu()), QStringList{u"Desk"_s});
    QVERIFY(menu.remoteAccessItem()->isEnabled());
    QVERIFY(menu.remoteAccessItem()->isChecked());
    QVERIFY(actionNamed(menu.locationsMenu(), u"Office"_s)->isChecked());

    // Switching remote access off is stored for that location.
    menu.remoteAccessItem()->trigger();
    QVERIFY(!menu.remoteAccessItem()->isChecked());
    QCOMPARE(rig.manager().locationPreferencesForUID(u"L2"_s)->remoteAccess, false);
    QVariantMap stored = rig.env.env->settings().value(u"Locations"_s).toMap().value(u"L2"_s).toMap();
    QCOMPARE(stored.value(u"RemoteAccess"_s).toBool(), false);
}

void TestTrayMenu::extensionStatesFollowTheMonitor()
{
    MenuRig rig;
    QVERIFY(rig.start());
    ExtensionsMenu* menu = rig.tray->menu().extensionsMenu();
    auto images = [menu] {
        QStringList out;
        for (QAction* a : menu->actions())
            out << a->text() + u'=' + a->property("stateImage").toString();
        return out;
    };
    QCOMPARE(images(), (QStringList{u"Kitchen=status-none"_s, u"Handset=status-none"_s}));

    StreamListener& listener = rig.tray->callMonitor().listener();
    listener.processBytes("22.11.26 10:00:00;CALL;0;1;5550000;0301234567;SIP0;\n");
    QTRY_COMPARE(images(), (QStringList{u"Kitchen=status-away"_s, u"Handset=status-none"_s}));
    listener.processBytes("22.11.26 10:01:00;DISCONNECT;0;12;\n");
    QTRY_COMPARE(images(), (QStringList{u"Kitchen=status-available"_s, u"Handset=status-none"_s}));

    // An extension's item starts an internal call to it.
    menu->actions().at(1)->trigger();
    QCOMPARE(rig.tray->dialWindow().numberField()->text(), u"**610"_s);
    QVERIFY(rig.tray->dialWindow().isVisible());
}

void TestTrayMenu::latestCallsDial()
{
    MenuRig rig;
    QVERIFY(rig.start());
    LatestCallsMenu* menu = rig.tray->menu().latestCallsMenu();
    QCOMPARE(texts(menu), QStringList{u"No calls yet"_s});

    TNCallinglist& calls = *rig.env.env->callinglist();
    const qint64 now = QDateTime::currentSecsSinceEpoch();
    calls.insertCall({1, 1, now - 3600, u"0301234567"_s, u"1"_s, u"5550000"_s, u"0:02"_s});
    calls.insertCall({1, 2, now - 60, u"0409998877"_s, u"1"_s, u"5550000"_s, u"0:00"_s});
    calls.insertCall({2, 2, now - 30, u"0111111111"_s, u"1"_s, u"5550000"_s, u"0:00"_s}); // other location
    calls.insertCallerWithName(u"Hanna Berg"_s, u"0409998877"_s, QString(), u"mobile"_s);
    rig.env.env->notifications().post(Notifications::REFRESHLATESTCALLSMENU);

    QTRY_COMPARE(menu->actions().size(), qsizetype(4)); // two sections, two calls
    const QStringList shown = texts(menu);
    QCOMPARE(shown.at(0), u"Incoming"_s);
    QVERIFY2(shown.at(1).startsWith(u"0301234567\t"_s), qPrintable(shown.at(1)));
    QCOMPARE(shown.at(2), u"Missed"_s);
    QVERIFY2(shown.at(3).startsWith(u"Hanna Berg (0409998877)\t"_s), qPrintable(shown.at(3)));

    menu->actions().at(3)->trigger();
    DialWindow& dial = rig.tray->dialWindow();
    QCOMPARE(dial.numberField()->text(), u"0409998877"_s);
    QCOMPARE(dial.nameLabel()->text(), u"Hanna Berg (Mobile)"_s);
}

void TestTrayMenu::wlanSwitch_data()
{
    QTest::addColumn<int>("status");
    QTest::addColumn<int>("answer");
    QTest::addColumn<bool>("enabled");
    QTest::addColumn<bool>("asked");
    QTest::addColumn<QStringList>("sent");
    QTest::newRow("on, user says yes")
        << (16 | 128) << int(QMessageBox::Yes) << true << true << QStringList{u"WLANoff"_s};
    QTest::newRow("on, user says no") << (16 | 64) << int(QMessageBox::No) << true << true << QStringList();
    QTest::newRow("off, switched on at once") << (8 | 64) << 0 << true << false << QStringList{u"WLANon"_s};
    QTest::newRow("state not known yet") << 4 << 0 << false << false << QStringList();
}

void TestTrayMenu::wlanSwitch()
{
    QFETCH(int, status);
    QFETCH(int, answer);
    QFETCH(bool, enabled);
    MenuRig rig;
    QVERIFY(rig.start());
    bool asked = false;
    // The dialog is replaced by the answer the row gives.
    TrayMenu::Hooks hooks;
    hooks.switchWLAN = [&rig](const QString& command) { rig.wlanCommands << command; };
    hooks.askWLANoff = [&] {
        asked = true;
        return answer;
    };
    TrayMenu menu(rig.env.env->notifications(), rig.manager(), rig.env.env->routerSessions(),
                  rig.tray->callMonitor().listener(), rig.tray->callMonitor().conductor(),
                  rig.env.env->callinglist(), hooks);
    {
        const auto session = rig.env.env->routerSessions().forLocation(*rig.manager().currentPreferences());
        QMutexLocker lock(&session->mutex());
        session->WLANStatus = status;
    }
    rig.env.env->notifications().post(Notifications::WLANSTATUS);
    QTest::qWait(0);
    QTRY_COMPARE(menu.wlanItem()->isEnabled(), enabled);
    if (menu.wlanItem()->isEnabled())
        menu.wlanItem()->trigger();
    QTEST(asked, "asked");
    QTEST(rig.wlanCommands, "sent");
}

void TestTrayMenu::wlanSwitchReachesTheRouter()
{
    SimRig rig;
    int asked = 0;
    QVERIFY2(rig.start([&asked](TrayApplication::Options& o) {
        o.askWLANoff = [&asked] {
            ++asked;
            return int(QMessageBox::Yes);
        };
    }),
             qPrintable(rig.sim.error()));
    QAction* wlan = rig.tray->menu().wlanItem();
    // The status check at activation tells the menu that both radios are on.
    QTRY_VERIFY_WITH_TIMEOUT(wlan->isEnabled(), 20000);
    QVERIFY(wlan->isChecked());

    const auto radios = [&rig] {
        return rig.sent(u"set"_s, [](const QJsonValue& v) {
            return v[u"name"_s].toString().section(u'/', 1) + u'=' + v[u"value"_s].toString();
        });
    };
    wlan->trigger();
    QCOMPARE(asked, 1);
    QTRY_COMPARE_WITH_TIMEOUT(radios(), (QStringList{u"ap_enabled=0"_s, u"ap_enabled_scnd=0"_s}), 20000);
    QTRY_VERIFY_WITH_TIMEOUT(wlan->isEnabled() && !wlan->isChecked(), 20000);

    // Switching on again asks nothing.
    wlan->trigger();
    QTRY_COMPARE_WITH_TIMEOUT(radios().size(), qsizetype(4), 20000);
    QCOMPARE(radios().mid(2), (QStringList{u"ap_enabled=1"_s, u"ap_enabled_scnd=1"_s}));
    QCOMPARE(asked, 1);
    QTRY_VERIFY_WITH_TIMEOUT(wlan->isChecked(), 20000);
}

void TestTrayMenu::startRefreshesLookupDefinitions()
{
    // A configured start writes the missing switch (on) and asks the update location in the
    // background; the download's own checks are tested with the lookup.
    DirectoryServer server;
    server.startServing();
    GuiEnv env;
    QVERIFY(env.open({{u"L1"_s, GuiEnv::location(u"Home"_s, 1, 0)}}, u"L1"_s,
                     {{u"ReverseSearchUpdateURL"_s, server.url("/defs.plist")}}));
    QVERIFY(!env.env->settings().contains(u"autoUpdateReverseSearch"_s));
    RecordingPresenter presenter;
    TrayApplication::Options options;
    options.presenter = &presenter;
    options.headless = true;
    TrayApplication tray(*env.env, options);
    tray.start({});
    QCOMPARE(env.env->settings().value(u"autoUpdateReverseSearch"_s), QVariant(true));
    QTRY_COMPARE(server.requests().size(), 1);
    QCOMPARE(server.requests().constFirst().target, QByteArray("/defs.plist"));
}

void TestTrayMenu::dectSwitchReachesTheRouter()
{
    SimRig rig;
    const QList<bool> answers{false, true};
    int asked = 0;
    QVERIFY2(rig.start(
                 [&](TrayApplication::Options& o) { o.askDECToff = [&] { return answers.value(asked++); }; }),
             qPrintable(rig.sim.error()));
    QAction* dect = rig.tray->menu().dectItem();
    QTRY_VERIFY_WITH_TIMEOUT(dect->isEnabled(), 20000);
    QVERIFY(dect->isChecked());
    const auto sent = [&rig] {
        return rig.sent(u"setDECT"_s, [](const QJsonValue& v) { return v[u"value"_s].toString(); });
    };

    // Declined: nothing is sent and the mark stays.
    dect->trigger();
    QCOMPARE(asked, 1);
    QVERIFY(dect->isChecked());
    QTest::qWait(200);
    QVERIFY(sent().isEmpty());
    // Confirmed: the router is told, and the mark follows.
    dect->trigger();
    QCOMPARE(asked, 2);
    QTRY_COMPARE_WITH_TIMEOUT(sent(), QStringList{u"0"_s}, 20000);
    QTRY_VERIFY_WITH_TIMEOUT(!dect->isChecked(), 20000);
    dect->trigger();
    QTRY_COMPARE_WITH_TIMEOUT(sent(), (QStringList{u"0"_s, u"1"_s}), 20000);
    QCOMPARE(asked, 2);
}

QTEST_MAIN(TestTrayMenu)
#include "tst_traymenu.moc"

void TestTrayMenu::badgeAfterImport_data()
{
    QTest::addColumn<bool>("newCalls");
    QTest::addColumn<bool>("missedCalls");
    QTest::addColumn<QString>("badge");
    QTest::newRow("neither") << false << false << QString();
    QTest::newRow("new calls") << true << false << u"3"_s;
    QTest::newRow("missed calls") << false << true << u"2"_s;
    QTest::newRow("both") << true << true << u"3 | 2"_s;
}

void TestTrayMenu::badgeAfterImport()
{
    QFETCH(bool, newCalls);
    QFETCH(bool, missedCalls);
    QFETCH(QString, badge);
    SimRig rig;
    QVERIFY2(rig.open({{u"badgeNewCalls"_s, newCalls}, {u"badgeNewAbsentiaCalls"_s, missedCalls}}),
             qPrintable(rig.sim.error()));
    GuiEnv& env = rig.env;
    // A call seen before: the three from the router are the new ones.
    const QDateTime day = QDateTime::currentDateTime().addDays(-1);
    TNCallinglist& calls = *env.env->callinglist();
    calls.insertCall(
        {1, 1, day.addDays(-2).toSecsSinceEpoch(), u"030111"_s, u"Kitchen"_s, u"5550001"_s, u"0:01"_s});
    const auto row = [&day](int type, int minutes, const char* number) {
        return QJsonDocument(QJsonObject{{u"type"_s, type},
                                         {u"date"_s, day.addSecs(minutes * 60).toString(u"dd.MM.yy HH:mm"_s)},
                                         {u"number"_s, QString::fromLatin1(number)},
                                         {u"extension"_s, u"Kitchen"_s},
                                         {u"line"_s, u"5550001"_s},
                                         {u"duration"_s, type == 2 ? u"0:00"_s : u"0:03"_s}})
            .toJson();
    };
    for (const QByteArray& r : {row(1, 0, "030201"), row(2, 5, "030202"), row(2, 9, "030203")})
        QVERIFY(!rig.sim.control("POST", u"/_sim/journal/add"_s, r).isNull());

    // Plain options: no start-up activation against the router.
    QVERIFY(rig.start([](TrayApplication::Options& o) {
        TrayApplication::Options plain;
        plain.presenter = o.presenter;
        plain.headless = true;
        o = plain;
    }));
    TrayApplication& tray = *rig.tray;
    QCOMPARE(tray.statusMenu().title(), QString());

    CallListSync& sync = *env.env->callListSync();
    QList<CallListSyncResult> finished;
    QObject context;
    connect(&sync, &CallListSync::finished, &context,
            [&finished](const CallListSyncResult& r) { finished << r; });
    sync.importFromRouter();
    QTRY_VERIFY_WITH_TIMEOUT(!finished.isEmpty() && !sync.isBusy(), 20000);
    // Whoever asked first (a start-up trigger or this request), one import brought the calls.
    CallListSyncResult result;
    for (const CallListSyncResult& r : finished)
        if (r.imported != 0)
            result = r;
    QCOMPARE(result.imported, 3);
    QCOMPARE(result.missed, 2);
    QCOMPARE(result.newCalls, 3);
    QCOMPARE(result.badge, badge);
    QTRY_COMPARE(tray.statusMenu().title(), badge);

    // The badge follows changed settings without another import.
    env.env->settings().setValue(keys::BadgeNewCalls, true);
    env.env->settings().setValue(keys::BadgeNewAbsentiaCalls, true);
    env.env->notifications().post(Notifications::ACTIVATESETTINGS);
    QTRY_COMPARE(tray.statusMenu().title(), u"3 | 2"_s);
}
