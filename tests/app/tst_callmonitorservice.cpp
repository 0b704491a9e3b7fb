// The call monitor use case both front ends run, against the simulator's call monitor port.
#include "TestSupport.h"

#include "app/AppEnvironment.h"
#include "app/CallMonitorService.h"
#include "base/SettingsKeys.h"
#include "base/SettingsStore.h"
#include "base/TNPreferencesManager.h"

#include <QDir>
#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;

class TestCallMonitorService : public QObject
{
    Q_OBJECT
private slots:
    // The journal import after a call follows "ListAferCall", whether the service watches the
    // current location (the tray) or one given location (the command line).
    void importAfterACall_data()
    {
        QTest::addColumn<bool>("afterCall");
        QTest::addColumn<bool>("currentLocation");
        QTest::newRow("current location, setting on") << true << true;
        QTest::newRow("current location, setting off") << false << true;
        QTest::newRow("given location, setting on") << true << false;
        QTest::newRow("given location, setting off") << false << false;
    }
    void importAfterACall()
    {
        QFETCH(bool, afterCall);
        QFETCH(bool, currentLocation);
        SimulatorProcess sim;
        QVERIFY2(sim.isRunning(), qPrintable(sim.error()));
        TempEnv dirs;
        QVERIFY(QDir().mkpath(dirs.configDir()) && QDir().mkpath(dirs.dataDir()));
        AppEnvironment env(AppPaths{dirs.configDir(), dirs.dataDir()}, u"file"_s);
        QString error;
        QVERIFY2(env.open(false, &error), qPrintable(error));
        const QString uid = env.manager().addNewLocation();
        env.manager().saveLocationValue(u"127.0.0.1"_s, keys::Host, uid);
        env.manager().saveLocationValue(sim.port(u"monitor"_s), keys::CallMonitorPort, uid);
        env.manager().saveLocationValue(true, keys::CallMonitor, uid);
        env.manager().activateCurrentLocation();
        env.settings().setValue(keys::ListAferCall, afterCall);

        int imports = 0;
        CallMonitorService::Hooks hooks;
        hooks.importJournal = [&imports] { ++imports; };
        if (!currentLocation)
            hooks.location = env.manager().currentPreferences();
        CallMonitorService service(env, std::move(hooks));
        QSignalSpy lines(&service.listener(), &StreamListener::lineProcessed);
        if (currentLocation)
            service.conductor().activateSettingsAndCallMonitor();
        else
            service.start();
        QTRY_VERIFY(service.listener().isConnected());
        QTRY_COMPARE(sim.control("GET", u"/_sim/monitor/clients"_s), QByteArray("{\"clients\":1}"));

        const int atStart = imports;
        QVERIFY(!sim.control("POST", u"/_sim/monitor/ring"_s, R"({"caller":"0301234567","called":"5551234"})")
                     .isNull());
        QVERIFY(!sim.control("POST", u"/_sim/monitor/connect"_s, R"({"connID":0,"extension":"1"})").isNull());
        QTRY_COMPARE(lines.count(), 2);
        QCOMPARE(imports, atStart); // not while the call lasts
        QVERIFY(
            !sim.control("POST", u"/_sim/monitor/disconnect"_s, R"({"connID":0,"duration":12})").isNull());
        QTRY_COMPARE(lines.count(), 3);
        QCOMPARE(imports - atStart, afterCall ? 1 : 0);

        service.stop();
        QVERIFY(!service.listener().isConnected());
    }
};

QTEST_GUILESS_MAIN(TestCallMonitorService)
#include "tst_callmonitorservice.moc"
