// The online monitor: the record in the charts' units, the panel sampling the simulated router
// while it is open, and the traffic display in the tray.
#include "GuiFixture.h"

#include "TNStatusMenu.h"
#include "TrayApplication.h"
#include "TrayMenu.h"
#include "base/NotificationCenter.h"
#include "base/NotificationNames.h"
#include "base/SettingsKeys.h"
#include "base/SettingsStore.h"
#include "box/TrafficSampler.h"
#include "traffic/TNTrafficChart.h"
#include "traffic/TrafficFigures.h"
#include "traffic/TrafficWindow.h"

#include <QAction>
#include <QImage>
#include <QTest>

using namespace Qt::StringLiterals;

class TestTraffic : public QObject
{
    Q_OBJECT
private slots:
    void figures_data();
    void figures();
    void panelSamplesWhileOpen();
    void trayShowsRatesAndChart();
};

void TestTraffic::figures_data()
{
    QTest::addColumn<QVariantMap>("record");
    QTest::addColumn<double>("newestDown");
    QTest::addColumn<double>("olderUp"); // the upstream total one step before the newest
    QTest::addColumn<double>("scaleDown");
    QTest::addColumn<QString>("downLabel");

    // 1000 bytes/s are 8 kbit/s.
    QTest::newRow("internet and TV stack, the scale follows the traffic")
        << QVariantMap{{u"ds_internet"_s, QStringList{u"1000"_s, u"2000"_s}},
                       {u"ds_tv"_s, QStringList{u"0"_s, u"500"_s}},
                       {u"us_realtime"_s, QStringList{u"100"_s, u"100"_s}},
                       {u"us_low"_s, QStringList{u"50"_s, u"0"_s}},
                       {u"max_ds"_s, u"10000"_s}}
        << 20.0 << 1.2 << 25.0 << u"⬇ 20.0 kbit/s"_s;
    QTest::newRow("shorter histories line up at the newest value")
        << QVariantMap{{u"ds_internet"_s, QStringList{u"1000"_s, u"1000"_s, u"3000"_s}},
                       {u"ds_tv"_s, QStringList{u"1000"_s}},
                       {u"us_default"_s, QStringList{u"250"_s, u"500"_s, u"125"_s}},
                       {u"us_important"_s, QStringList{u"125"_s}}}
        << 32.0 << 4.0 << 40.0 << u"⬇ 32.0 kbit/s"_s;
    QTest::newRow("the unreachable router's zero record")
        << TrafficSampler::recordFromAnswer({}) << 0.0 << 0.0 << 1.0 << u"⬇ 0.0 kbit/s"_s;
    QTest::newRow("no traffic yet: the line's maximum")
        << QVariantMap{{u"ds_internet"_s, QStringList{u"0"_s}}, {u"max_ds"_s, u"125000"_s}} << 0.0 << 0.0
        << 1000.0 << u"⬇ 0.0 kbit/s"_s;
    QTest::newRow("text that is no number counts as nothing")
        << QVariantMap{{u"ds_internet"_s, QStringList{u"er"_s, u""_s, u"-5"_s, u"125"_s}},
                       {u"max_ds"_s, u"x"_s}}
        << 1.0 << 0.0 << 1.25 << u"⬇ 1.0 kbit/s"_s;
}

void TestTraffic::figures()
{
    QFETCH(QVariantMap, record);
    QFETCH(double, newestDown);
    QFETCH(double, olderUp);
    QFETCH(double, scaleDown);
    QFETCH(QString, downLabel);
    const TrafficFigures f = TrafficFigures::fromRecord(record);
    QCOMPARE(TrafficFigures::stackedAt(f.down, 0), newestDown);
    QCOMPARE(TrafficFigures::stackedAt(f.up, 1), olderUp);
    QCOMPARE(TrafficFigures::scaleOf(f.down, f.maxDown), scaleDown);
    QCOMPARE(f.downLabel(), downLabel);
}

namespace {
struct TrafficRig : GuiTray
{
    SimulatorProcess sim;

    bool start(const QVariantMap& globals = {})
    {
        if (!startOnRouter(sim, {{u"CallMonitor"_s, false}}, globals))
            return false;
        tray->trafficSampler().setInterval(150);
        return true;
    }
};
} // namespace

void TestTraffic::panelSamplesWhileOpen()
{
    TrafficRig rig;
    QVERIFY(rig.start());
    TrafficSampler& sampler = rig.tray->trafficSampler();
    QVERIFY(!sampler.isRunning());

    rig.tray->menu().trafficItem()->trigger();
    TrafficWindow& window = rig.tray->trafficWindow();
    QVERIFY(window.isVisible());
    QVERIFY(sampler.isRunning());
    // The simulated router's figures move; the legend shows the newest rate.
    QTRY_VERIFY_WITH_TIMEOUT(window.legendText(u"ds_internet"_s) != u"0.0 kbit/s"_s, 10000);
    QVERIFY(window.chart()->figures().length() > 1);
    QVERIFY(rig.env.env->settings().value(keys::ShowTrafficMonitorWindow).toBool());

    window.close();
    QVERIFY(!sampler.isRunning());
    QVERIFY(!rig.env.env->settings().value(keys::ShowTrafficMonitorWindow).toBool());
}

void TestTraffic::trayShowsRatesAndChart()
{
    TrafficRig rig;
    QVERIFY(rig.start({{keys::ShowTrafficMonitorInMenu, true},
                       {keys::ShowTrafficMonitorMenuLabel, true},
                       {keys::ShowTrafficMonitorMenuGraph, true}}));
    TNStatusMenu& status = rig.tray->statusMenu();
    // Sampling for the tray runs without the panel.
    QVERIFY(rig.tray->trafficSampler().isRunning());
    QTRY_VERIFY_WITH_TIMEOUT(status.toolTip().contains(u"⬆"_s), 10000);
    QVERIFY(status.toolTip().contains(u"⬇"_s));
    const QImage chart = status.currentIcon().pixmap(22, 22).toImage();
    QVERIFY(chart != TNStatusMenu::iconForState(0).pixmap(22, 22).toImage());

    // Switched off in the settings: the handset and the plain tooltip come back.
    rig.env.env->settings().setValue(keys::ShowTrafficMonitorInMenu, false);
    rig.env.env->manager().activateCurrentLocation();
    rig.env.env->notifications().post(Notifications::ACTIVATESETTINGS);
    QTRY_VERIFY(!rig.tray->trafficSampler().isRunning());
    QVERIFY(!status.toolTip().contains(u"⬆"_s));
    QCOMPARE(status.currentIcon().pixmap(22, 22).toImage(),
             TNStatusMenu::iconForState(status.statusItemState()).pixmap(22, 22).toImage());
}

QTEST_MAIN(TestTraffic)
#include "tst_traffic.moc"
