// What the call list window and the command line do to chosen calls, on a real SQLite file:
// deleting a selection and finding the memo written about a call.
#include "CalllistFixture.h"

#include "calllist/CallListActions.h"
#include "contacts/ContactsServices.h"

#include "base/NotificationCenter.h"
#include "base/NotificationNames.h"

#include <QtTest>

using namespace Qt::Literals::StringLiterals;

class TestCallActions : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase() { QLocale::setDefault(QLocale::c()); }
    void deleteSelection_data();
    void deleteSelection();
    void deleteRefreshesCountersAndMenu();
    void memoForCall_data();
    void memoForCall();
};

void TestCallActions::deleteSelection_data()
{
    QTest::addColumn<int>("ownCalls");
    QTest::addColumn<int>("chosen");
    QTest::addColumn<bool>("withForeign");
    QTest::addColumn<int>("deleted");
    QTest::newRow("one call") << 3 << 1 << false << 1;
    QTest::newRow("a call of another location refuses all") << 3 << 2 << true << 0;
    // More rowids than one statement takes.
    QTest::newRow("a selection larger than one chunk") << 1203 << 1201 << false << 1201;
    QTest::newRow("nothing chosen") << 2 << 0 << false << 0;
}

void TestCallActions::deleteSelection()
{
    QFETCH(int, ownCalls);
    QFETCH(int, chosen);
    QFETCH(bool, withForeign);
    QFETCH(int, deleted);
    CalllistFixture f;
    const int p = f.addLocation();
    const int other = f.addLocation();
    QList<qint64> own;
    {
        CallBatch batch = f.calls->beginBatch();
        for (int i = 0; i < ownCalls; ++i)
            own.append(batch.insertCall({p, 1 + i % 3, at(2026, 3, 1).toSecsSinceEpoch() + i * 60,
                                         u"0301%1"_s.arg(i), u"Küche"_s, u"5550001"_s, u"0:01"_s}));
        QVERIFY(batch.commit());
    }
    const qint64 foreign = f.call(other, 1, at(2026, 3, 2));
    QList<qint64> ids = own.mid(0, chosen);
    if (withForeign)
        ids.append(foreign);

    ContactsServices contacts(f.dir.filePath(u"data"_s), f.dir.filePath(u"scripts"_s), f.store, nullptr,
                              f.clock, f.center);
    CallListActions actions(*f.calls, contacts);
    const CallListActions::Deletion done = actions.deleteCalls(p, ids);
    QCOMPARE(done.deleted, deleted);
    QCOMPARE(done.foreign, withForeign ? QList<qint64>{foreign} : QList<qint64>());
    const auto left = f.calls->getCallerlistForProfile(p, 0, QString(), QString(), u"date"_s, u"ASC"_s, 0);
    QCOMPARE(left.size(), ownCalls - deleted);
    // Refused: all stay; otherwise none of the chosen.
    for (const CallRow& row : left)
        QVERIFY(withForeign || !ids.contains(row.rowid));
    QCOMPARE(f.calls->getCallerlistForProfile(other, 0, QString(), QString(), QString(), QString(), 0).size(),
             1);
}

void TestCallActions::deleteRefreshesCountersAndMenu()
{
    CalllistFixture f;
    const int p = f.addLocation();
    const qint64 missed = f.call(p, 2, at(2026, 3, 1));
    f.call(p, 1, at(2026, 3, 2));
    f.calls->refreshCallsCounterForProfile(p);
    QCOMPARE(f.calls->callsCounter().value(TNCallinglist::CounterMissed), 1);

    QObject context;
    int menuRefreshes = 0;
    f.center.addObserver(&context, Notifications::REFRESHLATESTCALLSMENU,
                         [&](const Notification&) { ++menuRefreshes; });
    QCOMPARE(f.calls->deleteCallsForProfile(p, {missed}), 1);
    const QList<qint64> c = f.calls->callsCounter();
    QCOMPARE(c.value(TNCallinglist::CounterMissed), 0);
    QCOMPARE(c.value(TNCallinglist::CounterAll), 1);
    QCOMPARE(menuRefreshes, 1);
}

void TestCallActions::memoForCall_data()
{
    QTest::addColumn<QString>("number");
    QTest::addColumn<qint64>("calldate");
    QTest::addColumn<bool>("otherProfile");
    QTest::addColumn<QString>("subject");
    const qint64 when = at(2026, 3, 1).toSecsSinceEpoch();
    QTest::newRow("the newest memo of the call") << u"030111"_s << when << false << u"second"_s;
    QTest::newRow("another call of the same number") << u"030111"_s << when + 60 << false << QString();
    QTest::newRow("another number at the same time") << u"030222"_s << when << false << QString();
    QTest::newRow("the same call in another location") << u"030111"_s << when << true << QString();
}

void TestCallActions::memoForCall()
{
    QFETCH(QString, number);
    QFETCH(qint64, calldate);
    QFETCH(bool, otherProfile);
    QFETCH(QString, subject);
    CalllistFixture f;
    const int p = f.addLocation();
    const int other = f.addLocation();
    const qint64 when = at(2026, 3, 1).toSecsSinceEpoch();
    QVERIFY(f.calls->setMemoForProfile(p, u"030111"_s, when, u"first"_s, u"a"_s) > 0);
    QVERIFY(f.calls->setMemoForProfile(p, u"030111"_s, when, u"second"_s, u"b"_s) > 0);

    const auto memo = f.calls->memos().memoForCall(otherProfile ? other : p, number, calldate);
    QCOMPARE(memo ? memo->subject : QString(), subject);
}

QTEST_GUILESS_MAIN(TestCallActions)
#include "tst_callactions.moc"
