#include "base/SettingsKeys.h"
#include "base/SettingsStore.h"
#include "box/TrafficSampler.h"

#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

#include <atomic>

class TestTrafficSampler : public QObject
{
    Q_OBJECT
private slots:
    void records_data();
    void records();
    void timerFollowsMenuAndPanel();
};

void TestTrafficSampler::records_data()
{
    QTest::addColumn<QStringList>("answer");
    QTest::addColumn<QString>("key");
    QTest::addColumn<QVariant>("expected");

    const QStringList full{QStringLiteral("10,20,30"), QStringLiteral("1,2"),     QStringLiteral("4,5"),
                           QStringLiteral("6"),        QStringLiteral("7,8,9"),   QStringLiteral("100000"),
                           QStringLiteral("40000"),    QStringLiteral("500,600"), QStringLiteral("0,0")};
    QTest::newRow("real-time queues summed element-wise")
        << full << QStringLiteral("us_realtime")
        << QVariant(QStringList{QStringLiteral("11"), QStringLiteral("22"), QStringLiteral("30")});
    // Two int maxima used to overflow when summed; out-of-range values count as malformed.
    QTest::newRow("real-time sum past int, malformed values as zero")
        << QStringList{QStringLiteral("2147483647,-5,99999999999999999999"),
                       QStringLiteral("2147483647,7,1")} +
               full.mid(2)
        << QStringLiteral("us_realtime")
        << QVariant(QStringList{QStringLiteral("4294967294"), QStringLiteral("7"), QStringLiteral("1")});
    QTest::newRow("downstream history")
        << full << QStringLiteral("ds_internet")
        << QVariant(QStringList{QStringLiteral("500"), QStringLiteral("600")});
    QTest::newRow("upstream maximum as read")
        << full << QStringLiteral("max_us") << QVariant(QStringLiteral("40000"));
    QTest::newRow("no answer draws zero")
        << QStringList{} << QStringLiteral("us_low") << QVariant(QStringList{QStringLiteral("0")});
    QTest::newRow("no answer, zero maximum")
        << QStringList{} << QStringLiteral("max_ds") << QVariant(QStringLiteral("0"));
}

void TestTrafficSampler::records()
{
    QFETCH(QStringList, answer);
    QFETCH(QString, key);
    QFETCH(QVariant, expected);
    const QVariantMap record = TrafficSampler::recordFromAnswer(answer);
    QCOMPARE(record.size(), 8);
    QCOMPARE(record.value(key), expected);
}

void TestTrafficSampler::timerFollowsMenuAndPanel()
{
    QTemporaryDir dir;
    SettingsStore settings(dir.filePath(QStringLiteral("settings.json")));
    std::atomic<int> queries{0};
    TrafficSampler sampler(settings, [&](const QStringList& vars) {
        ++queries;
        return QStringList(vars.size(), QStringLiteral("1"));
    });
    sampler.setInterval(50);
    QSignalSpy records(&sampler, &TrafficSampler::trafficRecord);

    sampler.toogleTrafficTimer();
    QVERIFY(!sampler.isRunning());

    settings.setValue(keys::ShowTrafficMonitorInMenu, true);
    sampler.toogleTrafficTimer();
    QVERIFY(sampler.isRunning());
    QTRY_VERIFY(records.size() >= 3); // one at once, then by the timer

    // The panel keeps sampling alive when the menu chart goes.
    sampler.setPanelOpen(true);
    settings.setValue(keys::ShowTrafficMonitorInMenu, false);
    sampler.toogleTrafficTimer();
    QVERIFY(sampler.isRunning());
    sampler.setPanelOpen(false);
    QVERIFY(!sampler.isRunning());
}

QTEST_GUILESS_MAIN(TestTrafficSampler)
#include "tst_trafficsampler.moc"
