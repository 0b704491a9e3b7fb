#include "base/NotificationCenter.h"
#include "base/NotificationNames.h"

#include <QSet>
#include <QTest>
#include <QThread>

class TestNotificationCenter : public QObject
{
    Q_OBJECT
private slots:
    void namesAreUnique();
    void sameThreadIsImmediate();
    void otherThreadPostsArriveOnObserverThread();
    void endedObservationsReceiveNothing();
};

void TestNotificationCenter::namesAreUnique()
{
    const QStringList& all = Notifications::all();
    QCOMPARE(QSet<QString>(all.begin(), all.end()).size(), all.size());
}

void TestNotificationCenter::sameThreadIsImmediate()
{
    NotificationCenter center;
    QObject observer;
    QStringList seen;
    center.addObserver(&observer, Notifications::RELOADCALLINGLIST, [&](const Notification& n) {
        seen << n.userInfo.value(QStringLiteral("k")).toString();
    });
    center.addObserver(&observer, QString(),
                       [&](const Notification& n) { seen << QStringLiteral("any:") + n.name; });
    center.post(Notifications::RELOADCALLINGLIST, &observer, {{QStringLiteral("k"), QStringLiteral("v")}});
    center.post(Notifications::RELOADMEMOS);
    QCOMPARE(seen, (QStringList{QStringLiteral("v"), QStringLiteral("any:RELOADCALLINGLIST"),
                                QStringLiteral("any:RELOADMEMOS")}));
}

void TestNotificationCenter::otherThreadPostsArriveOnObserverThread()
{
    NotificationCenter center;
    QObject observer;
    QList<QThread*> threads;
    int count = 0;
    center.addObserver(&observer, Notifications::WLANSTATUS, [&](const Notification&) {
        threads << QThread::currentThread();
        ++count;
    });
    QThread* poster = QThread::create([&center] {
        for (int i = 0; i < 100; ++i)
            center.post(Notifications::WLANSTATUS);
    });
    poster->start();
    QVERIFY(poster->wait(5000));
    delete poster;
    QTRY_COMPARE(count, 100);
    for (QThread* t : threads)
        QCOMPARE(t, QThread::currentThread());
}

void TestNotificationCenter::endedObservationsReceiveNothing()
{
    NotificationCenter center;
    int count = 0;
    {
        QObject gone;
        center.addObserver(&gone, Notifications::ADDSTATUSBAR, [&](const Notification&) { ++count; });
    }
    center.post(Notifications::ADDSTATUSBAR);

    QObject removed;
    center.addObserver(&removed, Notifications::ADDSTATUSBAR, [&](const Notification&) { ++count; });
    // Queued from another thread, then removed before the event loop delivers it.
    QThread* poster = QThread::create([&center] { center.post(Notifications::ADDSTATUSBAR); });
    poster->start();
    QVERIFY(poster->wait(5000));
    delete poster;
    center.removeObserver(&removed);
    QCoreApplication::processEvents();
    QCOMPARE(count, 0);
}

QTEST_GUILESS_MAIN(TestNotificationCenter)
#include "tst_notificationcenter.moc"
