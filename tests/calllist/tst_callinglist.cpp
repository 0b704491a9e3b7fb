// The call database on a real SQLite file: counters, marker rows, list selectors, search, day
// headers, statistics, recent calls, caller cache, profile deletion and the file format.
#include "CalllistFixture.h"

#include "base/NotificationCenter.h"
#include "base/NotificationNames.h"
#include "base/SettingsKeys.h"
#include "calllist/ListQueryBuilder.h"

#include <QFile>
#include <QSet>
#include <QThreadPool>
#include <QtTest>

#include <SQLiteCpp/SQLiteCpp.h>

#include <ctime>

using namespace Qt::Literals::StringLiterals;

namespace {

using Lines = QList<std::pair<QString, int>>;

} // namespace

class TestCallinglist : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase() { QLocale::setDefault(QLocale::c()); }
    void counters_data();
    void counters();
    void markerRowsStayOutOfListsAndCounts();
    void countersRefreshInBackground();
    void newCallsMark();
    void selectors_data();
    void selectors();
    void search_data();
    void search();
    void sortOrder_data();
    void sortOrder();
    void dayHeaders();
    void statistics_data();
    void statistics();
    void recentCalls();
    void callerCache();
    void deleteProfileRemovesConditionsBeforeLists();
    void deleteCallinglistKeepsMarkersAndLists();
    void memoSearch_data();
    void memoSearch();
    void memosPostReload();
    void profileNumbers();
    void batchSkipsFailingRowAlone();
    void migratesFirstFileFormat();
    void shownDateMatchesStrftime_data();
    void shownDateMatchesStrftime();
};

void TestCallinglist::counters_data()
{
    QTest::addColumn<Lines>("lines");
    QTest::addColumn<QList<qint64>>("expected"); // in, out, missed, all

    // Calls: in on 5550001, in on 5550002, missed on 5550002, out on 5550003, out on 49-5550001-9.
    QTest::newRow("no hidden line") << Lines{} << QList<qint64>{2, 2, 1, 5};
    QTest::newRow("a line listed but not hidden")
        << Lines{{QStringLiteral("5550002"), 0}} << QList<qint64>{2, 2, 1, 5};
    QTest::newRow("one hidden line") << Lines{{QStringLiteral("5550002"), 1}} << QList<qint64>{1, 2, 0, 3};
    QTest::newRow("two hidden lines, one inside another number")
        << Lines{{QStringLiteral("5550002"), 1}, {QStringLiteral("5550001"), 1}} << QList<qint64>{0, 1, 0, 1};
}

void TestCallinglist::counters()
{
    QFETCH(Lines, lines);
    QFETCH(QList<qint64>, expected);
    CalllistFixture f;
    const int p = f.addLocation(lines);
    const int other = f.addLocation();
    f.call(p, 1, at(2026, 3, 1), QStringLiteral("030111"), QStringLiteral("5550001"));
    f.call(p, 1, at(2026, 3, 2), QStringLiteral("030111"), QStringLiteral("5550002"));
    f.call(p, 2, at(2026, 3, 3), QStringLiteral("030111"), QStringLiteral("5550002"));
    f.call(p, 3, at(2026, 3, 4), QStringLiteral("030111"), QStringLiteral("5550003"));
    f.call(p, 3, at(2026, 3, 15, 9), QStringLiteral("030111"), QStringLiteral("4955500019"));
    f.call(other, 1, at(2026, 3, 15, 9));
    f.calls->updateLastDateForVoicemailForProfile(p);
    f.calls->updateLastDateForFaxForProfile(p);

    f.calls->setLastDateForNewCallsForProfile(p);
    f.call(p, 2, at(2026, 3, 15, 11), QStringLiteral("030999"), QStringLiteral("5550003"));
    f.calls->refreshCallsCounterForProfile(p);
    const QList<qint64> c = f.calls->callsCounter();

    // The new missed call on 5550003 is never hidden here.
    QCOMPARE(c.size(), 9); // eight fixed positions and the default smart list "today"
    QCOMPARE(c[TNCallinglist::CounterIncoming], expected[0]);
    QCOMPARE(c[TNCallinglist::CounterOutgoing], expected[1]);
    QCOMPARE(c[TNCallinglist::CounterMissed], expected[2] + 1);
    QCOMPARE(c[TNCallinglist::CounterAll], expected[3] + 1);
    QCOMPARE(c[TNCallinglist::CounterCurrent], 0);
    QCOMPARE(c[TNCallinglist::CounterNew], 1);
    QCOMPARE(c[TNCallinglist::CounterVoicemail], 0);
    QCOMPARE(c[TNCallinglist::CounterFax], 0);
    // Today: the outgoing call at 9:00 (hidden only with 5550001) and the new missed call.
    const bool hidesToday = lines.contains({QStringLiteral("5550001"), 1});
    QCOMPARE(c[TNCallinglist::CounterFirstSmartList], hidesToday ? 1 : 2);
}

void TestCallinglist::countersRefreshInBackground()
{
    CalllistFixture f;
    const int p = f.addLocation();
    f.manager->activateCurrentLocationForID(f.manager->UIDForProfileNumber(p));
    f.call(p, 2, at(2026, 3, 1));
    QObject context;
    QList<qint64> seen;
    f.center.addObserver(&context, Notifications::UPDATESIDETABLE,
                         [&](const Notification&) { seen = f.calls->callsCounter(); });
    f.calls->refreshCallsCounter();
    QTRY_COMPARE(seen.value(TNCallinglist::CounterMissed), 1);
    QThreadPool::globalInstance()->waitForDone();
}

void TestCallinglist::markerRowsStayOutOfListsAndCounts()
{
    CalllistFixture f;
    const int p = f.addLocation();
    QVERIFY(!f.calls->getLastDateForVoicemailForProfile(p));
    f.calls->updateLastDateForVoicemailForProfile(p);
    f.clock.advance(3600);
    f.calls->updateLastDateForVoicemailForProfile(p); // updates, does not add a second row
    f.calls->updateLastDateForFaxForProfile(p);
    f.calls->updateMarkerDate(p, TNCallinglist::MarkerImport, f.clock.now());

    QCOMPARE(f.calls->getLastDateForVoicemailForProfile(p)->toSecsSinceEpoch(),
             f.clock.now().toSecsSinceEpoch());
    QCOMPARE(f.calls->getLastDateForFaxForProfile(p)->toSecsSinceEpoch(), f.clock.now().toSecsSinceEpoch());
    SQLite::Database db(f.dbPath().toStdString());
    QCOMPARE(db.execAndGet("SELECT count(*) FROM callinglist WHERE profile < 0").getInt(), 3);

    f.calls->refreshCallsCounterForProfile(p);
    const QList<qint64> c = f.calls->callsCounter();
    QCOMPARE(c.mid(0, 4), (QList<qint64>{0, 0, 0, 0}));
    QCOMPARE(c[TNCallinglist::CounterFirstSmartList], 0);
    for (int selector : {0, 1, 2, 3, 6, 9})
        QVERIFY(f.calls->getCallerlistForProfile(p, selector, {}, {}, {}, {}, 0).isEmpty());
    QCOMPARE(f.calls->getYearsStatisticForProfile(p), QStringList());
    QCOMPARE(f.calls->getCallCounterStatisticForProfile(p, 0, 0, 0), 0);
}

void TestCallinglist::newCallsMark()
{
    CalllistFixture f;
    const int p = f.addLocation();
    f.call(p, 1, at(2026, 3, 10));
    f.call(p, 2, at(2026, 3, 11));
    QCOMPARE(f.calls->getNewCallsCounterFromListForProfile(p), 0); // the mark is set from the newest call
    f.call(p, 1, at(2026, 3, 12));
    f.call(p, 3, at(2026, 3, 13));
    QCOMPARE(f.calls->getNewCallsCounterFromListForProfile(p), 2);
    QCOMPARE(f.calls->getCallerlistForProfile(p, ListQuery::SelectorNew, {}, {}, {}, {}, 0).size(), 2);
    f.calls->unsetlastSavedDateForNewCalls();
    QCOMPARE(f.calls->lastSavedDateForNewCalls(), 0);
    QCOMPARE(f.calls->getNewCallsCounterFromListForProfile(p), 0);
}

void TestCallinglist::selectors_data()
{
    QTest::addColumn<int>("selector");
    QTest::addColumn<QStringList>("expected");

    QTest::newRow("all") << 0 << QStringList{u"in"_s, u"missed"_s, u"out"_s, u"today"_s};
    QTest::newRow("incoming") << 1 << QStringList{u"in"_s, u"today"_s};
    QTest::newRow("missed") << 2 << QStringList{u"missed"_s};
    QTest::newRow("outgoing") << 3 << QStringList{u"out"_s};
    QTest::newRow("7 lists all") << 7 << QStringList{u"in"_s, u"missed"_s, u"out"_s, u"today"_s};
    QTest::newRow("oldest smart list: today") << 9 << QStringList{u"today"_s};
    QTest::newRow("second smart list: missed") << 10 << QStringList{u"missed"_s};
    QTest::newRow("missing smart list lists all")
        << 11 << QStringList{u"in"_s, u"missed"_s, u"out"_s, u"today"_s};
}

void TestCallinglist::selectors()
{
    QFETCH(int, selector);
    QFETCH(QStringList, expected);
    CalllistFixture f;
    const int p = f.addLocation(); // with the smart list "today"
    f.calls->insertSmartListForProfile(p, QStringLiteral("missed"),
                                       {{Smart::ColumnCallType, Smart::TypeMissed, {}}});
    QMap<qint64, QString> names;
    names[f.call(p, 1, at(2026, 3, 1))] = QStringLiteral("in");
    names[f.call(p, 2, at(2026, 3, 2))] = QStringLiteral("missed");
    names[f.call(p, 3, at(2026, 3, 3))] = QStringLiteral("out");
    names[f.call(p, 1, at(2026, 3, 15, 8))] = QStringLiteral("today");
    f.call(f.addLocation(), 2, at(2026, 3, 15, 8));

    QStringList got;
    for (const CallRow& row : f.calls->getCallerlistForProfile(p, selector, {}, {}, {}, {}, 0))
        got.append(names.value(row.rowid, QStringLiteral("foreign")));
    got.sort();
    QCOMPARE(got, expected);
}

void TestCallinglist::search_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("column");
    QTest::addColumn<QStringList>("expected");

    QTest::newRow("apostrophe in all columns") << u"O'Brien"_s << u""_s << QStringList{u"obrien"_s};
    QTest::newRow("apostrophe in the name column") << u"o'brien"_s << u"name"_s << QStringList{u"obrien"_s};
    QTest::newRow("part of a number") << u"0301"_s << u""_s << QStringList{u"anna"_s, u"obrien"_s};
    QTest::newRow("number column only") << u"5550"_s << u"number"_s << QStringList{};
    QTest::newRow("line") << u"5550002"_s << u""_s << QStringList{u"unknown"_s};
    QTest::newRow("extension") << u"Büro"_s << u"extension"_s << QStringList{u"obrien"_s};
    QTest::newRow("displayed date") << u"14.03.2026"_s << u""_s << QStringList{u"obrien"_s};
    QTest::newRow("displayed time") << u"09:05"_s << u"date"_s << QStringList{u"anna"_s};
    QTest::newRow("percent is literal") << u"%"_s << u""_s << QStringList{u"percent"_s};
    QTest::newRow("underscore is literal") << u"a_b"_s << u""_s << QStringList{};
    QTest::newRow("duration column") << u"1:30"_s << u"duration"_s << QStringList{u"unknown"_s};
    QTest::newRow("nothing matches") << u"zzz"_s << u""_s << QStringList{};
}

void TestCallinglist::search()
{
    QFETCH(QString, text);
    QFETCH(QString, column);
    QFETCH(QStringList, expected);
    CalllistFixture f;
    const int p = f.addLocation();
    QMap<qint64, QString> names;
    names[f.call(p, 1, at(2026, 3, 15, 9, 5), QStringLiteral("030111"))] = QStringLiteral("anna");
    names[f.call(p, 2, at(2026, 3, 14, 18), QStringLiteral("030122"), QStringLiteral("5550001"),
                 QStringLiteral("0:00"), QStringLiteral("Büro"))] = QStringLiteral("obrien");
    names[f.call(p, 3, at(2026, 3, 10, 8), QStringLiteral("0170333"), QStringLiteral("5550002"),
                 QStringLiteral("1:30"))] = QStringLiteral("unknown");
    names[f.call(p, 3, at(2026, 3, 9, 8), QStringLiteral("0800"), QStringLiteral("100%"))] =
        QStringLiteral("percent");
    f.calls->insertCallerWithName(QStringLiteral("Anna Müller"), QStringLiteral("030111"), {}, {});
    f.calls->insertCallerWithName(QStringLiteral("Pat O'Brien"), QStringLiteral("030122"),
                                  QStringLiteral("ab-1"), QStringLiteral("mobile"));

    QStringList got;
    for (const CallRow& row : f.calls->getCallerlistForProfile(p, 0, text, column, {}, {}, 0))
        got.append(names.value(row.rowid));
    got.sort();
    QCOMPARE(got, expected);
}

void TestCallinglist::sortOrder_data()
{
    QTest::addColumn<QVariant>("stored");
    QTest::addColumn<QString>("orderBy");
    QTest::addColumn<QString>("direction");
    QTest::addColumn<QStringList>("expected");

    QTest::newRow("nothing stored: date descending")
        << QVariant() << u""_s << u""_s << QStringList{u"c"_s, u"b"_s, u"a"_s};
    QTest::newRow("stored duration ascending") << QVariant(QVariantList{QStringLiteral("duration"), 1})
                                               << u""_s << u""_s << QStringList{u"b"_s, u"c"_s, u"a"_s};
    QTest::newRow("stored name descending") << QVariant(QVariantList{QStringLiteral("name"), 0}) << u""_s
                                            << u""_s << QStringList{u"a"_s, u"c"_s, u"b"_s};
    QTest::newRow("unknown stored column falls back to date")
        << QVariant(QVariantList{QStringLiteral("calldate; DROP TABLE caller"), 1}) << u""_s << u""_s
        << QStringList{u"c"_s, u"b"_s, u"a"_s};
    QTest::newRow("explicit order beats the stored one")
        << QVariant(QVariantList{QStringLiteral("duration"), 1}) << u"date"_s << u"ASC"_s
        << QStringList{u"a"_s, u"b"_s, u"c"_s};
}

void TestCallinglist::sortOrder()
{
    QFETCH(QVariant, stored);
    QFETCH(QString, orderBy);
    QFETCH(QString, direction);
    QFETCH(QStringList, expected);
    CalllistFixture f;
    if (stored.isValid())
        f.store.setValue(keys::CallinglistSortOrdering, stored);
    const int p = f.addLocation();
    QMap<qint64, QString> names;
    names[f.call(p, 1, at(2026, 3, 1), QStringLiteral("01"), {}, QStringLiteral("0:09"))] =
        QStringLiteral("a");
    names[f.call(p, 1, at(2026, 3, 2), QStringLiteral("02"), {}, QStringLiteral("0:01"))] =
        QStringLiteral("b");
    names[f.call(p, 1, at(2026, 3, 3), QStringLiteral("03"), {}, QStringLiteral("0:05"))] =
        QStringLiteral("c");
    f.calls->insertCallerWithName(QStringLiteral("Zoe"), QStringLiteral("01"), {}, {});
    f.calls->insertCallerWithName(QStringLiteral("Mia"), QStringLiteral("03"), {}, {});

    QStringList got;
    for (const CallRow& row : f.calls->getCallerlistForProfile(p, 0, {}, {}, orderBy, direction, 0))
        got.append(names.value(row.rowid));
    QCOMPARE(got, expected);
    // The hostile stored column must not have run as SQL.
    QCOMPARE(f.calls->searchCallerNameForPhoneNumber(QStringLiteral("01")).value(1), QStringLiteral("Zoe"));
}

void TestCallinglist::dayHeaders()
{
    CalllistFixture f;
    const int p = f.addLocation();
    f.call(p, 1, at(2026, 3, 15, 9));
    f.call(p, 2, at(2026, 3, 15, 11));
    f.call(p, 3, at(2026, 3, 15, 23, 59));
    f.call(p, 1, at(2026, 3, 14, 0, 0), QStringLiteral("0301"));
    f.calls->insertCallerWithName(QStringLiteral("Eva"), QStringLiteral("0301"), QStringLiteral("ab"),
                                  QStringLiteral("home"));

    const auto entries = f.calls->callListEntriesForProfile(p, 0, {}, {}, {}, {}, 0);
    QCOMPARE(entries.size(), 6);
    QVERIFY(entries[0].isDayHeader);
    QCOMPARE(entries[0].toArray().mid(0, 2),
             (QVariantList{QStringLiteral("15.03.2026"), QStringLiteral("3")}));
    QCOMPARE(entries[1].dateText, QStringLiteral("15.03.2026 23:59"));
    QVERIFY(!entries[3].isDayHeader);
    QVERIFY(entries[4].isDayHeader);
    QCOMPARE(entries[4].dayCount, 1);
    const QVariantList call = entries[5].toArray();
    QCOMPARE(call.size(), 11);
    QCOMPARE(call.mid(0, 9),
             (QVariantList{QStringLiteral("14.03.2026 00:00"), QStringLiteral("Eva"), QStringLiteral("0301"),
                           QStringLiteral("Küche"), QStringLiteral("5550001"), QStringLiteral("0:01"),
                           QStringLiteral("ab"), QStringLiteral("home"), 1}));
    QCOMPARE(call[10].toDateTime(), at(2026, 3, 14, 0, 0));
    QCOMPARE(f.calls->currentListCounter(), 4);
}

void TestCallinglist::statistics_data()
{
    QTest::addColumn<int>("month");
    QTest::addColumn<int>("year");
    QTest::addColumn<int>("state");
    QTest::addColumn<qint64>("calls");
    QTest::addColumn<qint64>("minutes");

    // 2025-12-31 23:30 out 1:30; 2026-01-01 00:10 in 0:05; 2026-01-20 missed 0:00; 2026-03-02 in 2:01;
    // 2026-03-05 in 0:10 on the hidden line.
    QTest::newRow("everything") << 0 << 0 << 0 << qint64(4) << qint64(90 + 5 + 121);
    QTest::newRow("hours count whole") << 0 << 2025 << 0 << qint64(1) << qint64(90);
    QTest::newRow("year boundary in local time") << 1 << 2026 << 0 << qint64(2) << qint64(5);
    QTest::newRow("month of every year") << 12 << 0 << 0 << qint64(1) << qint64(90);
    QTest::newRow("incoming of a year") << 0 << 2026 << 1 << qint64(2) << qint64(126);
    QTest::newRow("missed") << 0 << 0 << 2 << qint64(1) << qint64(0);
    QTest::newRow("empty month") << 2 << 2026 << 0 << qint64(0) << qint64(0);
}

void TestCallinglist::statistics()
{
    QFETCH(int, month);
    QFETCH(int, year);
    QFETCH(int, state);
    QFETCH(qint64, calls);
    QFETCH(qint64, minutes);
    CalllistFixture f;
    const int p = f.addLocation({{QStringLiteral("5559"), 1}});
    f.call(p, 3, at(2025, 12, 31, 23, 30), {}, QStringLiteral("5550001"), QStringLiteral("1:30"));
    f.call(p, 1, at(2026, 1, 1, 0, 10), {}, QStringLiteral("5550001"), QStringLiteral("0:05"));
    f.call(p, 2, at(2026, 1, 20), {}, QStringLiteral("5550001"), QStringLiteral("0:00"));
    f.call(p, 1, at(2026, 3, 2), {}, QStringLiteral("5550001"), QStringLiteral("2:01"));
    f.call(p, 1, at(2026, 3, 5), {}, QStringLiteral("5559"), QStringLiteral("0:10"));
    f.call(f.addLocation(), 1, at(2026, 1, 2), {}, QStringLiteral("5550001"), QStringLiteral("0:30"));

    QCOMPARE(f.calls->getCallCounterStatisticForProfile(p, month, year, state), calls);
    const auto time = f.calls->getTimeCounterStatisticForProfile(p, month, year, state);
    QCOMPARE(time.totalMinutes, minutes);
    QCOMPARE(time.hours() * 60 + time.minutes(), minutes);
    QCOMPARE(f.calls->getYearsStatisticForProfile(p),
             (QStringList{QStringLiteral("2026"), QStringLiteral("2025")}));
}

void TestCallinglist::recentCalls()
{
    CalllistFixture f;
    const int p = f.addLocation({{QStringLiteral("999"), 1}});
    for (int i = 1; i <= 7; ++i)
        f.call(p, 1, at(2026, 3, i), QStringLiteral("0%1").arg(i));
    f.call(p, 1, at(2026, 2, 1), QStringLiteral("07")); // older call of a number called again later
    f.call(p, 1, at(2026, 3, 20), QString());           // no number
    f.call(p, 1, at(2026, 3, 21), QStringLiteral("0999"), QStringLiteral("999")); // hidden line
    f.call(p, 2, at(2026, 3, 9), QStringLiteral("0300"));
    f.call(p, 2, at(2026, 3, 8), QStringLiteral("0300"));
    f.calls->insertCallerWithName(QStringLiteral("Seven"), QStringLiteral("07"), {}, {});

    auto numbers = [](const QVariant& list) {
        QStringList out;
        for (const QVariant& v : list.toList())
            out.append(v.toMap().value(QStringLiteral("phonenumber")).toString());
        return out;
    };
    QVariantMap recent = f.calls->getLastRecentCallsForProfile(p, {});
    QCOMPARE(numbers(recent[QStringLiteral("in")]),
             (QStringList{u"07"_s, u"06"_s, u"05"_s, u"04"_s, u"03"_s}));
    QCOMPARE(recent[QStringLiteral("in")].toList().first().toMap().value(QStringLiteral("name")).toString(),
             QStringLiteral("Seven"));
    QCOMPARE(numbers(recent[QStringLiteral("missed")]), QStringList{u"0300"_s});
    recent = f.calls->getLastRecentCallsForProfile(p, {QStringLiteral("07"), QStringLiteral("05'")});
    QCOMPARE(numbers(recent[QStringLiteral("in")]),
             (QStringList{u"06"_s, u"05"_s, u"04"_s, u"03"_s, u"02"_s}));
}

void TestCallinglist::callerCache()
{
    CalllistFixture f;
    QObject context;
    int reloads = 0;
    f.center.addObserver(&context, Notifications::RELOADCALLINGLIST, [&](const Notification&) { ++reloads; });
    QCOMPARE(f.calls->searchCallerNameForPhoneNumber(QStringLiteral("030111")), QStringList());
    QVERIFY(f.calls->insertCallerWithName(QStringLiteral("Old"), QStringLiteral("030111"), {}, {}));
    QVERIFY(f.calls->insertCallerWithName(QStringLiteral("Anna"), QStringLiteral("030111"),
                                          QStringLiteral("uid-1"), QStringLiteral("work")));
    QCOMPARE(f.calls->searchCallerNameForPhoneNumber(QStringLiteral("030111")),
             (QStringList{QStringLiteral("uid-1"), QStringLiteral("Anna"), QStringLiteral("work")}));
    f.calls->resetCallerNamesForNumber(QStringLiteral("030111' OR '1'='1"));
    QVERIFY(!f.calls->searchCallerNameForPhoneNumber(QStringLiteral("030111")).isEmpty());
    f.calls->resetCallerNamesForNumber(QStringLiteral("030111"));
    QCOMPARE(f.calls->searchCallerNameForPhoneNumber(QStringLiteral("030111")), QStringList());
    QCOMPARE(reloads, 2);
}

void TestCallinglist::deleteProfileRemovesConditionsBeforeLists()
{
    CalllistFixture f;
    const int p = f.addLocation();
    const int keep = f.addLocation();
    f.calls->insertSmartListForProfile(p, QStringLiteral("two rules"),
                                       {{Smart::ColumnName, Smart::Contains, QStringLiteral("a")},
                                        {Smart::ColumnCallType, Smart::TypeMissed, {}}});
    f.call(p, 1, at(2026, 3, 1));
    f.call(keep, 1, at(2026, 3, 1));
    f.calls->updateLastDateForFaxForProfile(p);
    const qint64 memo =
        f.calls->setMemoForProfile(p, QStringLiteral("030123"), at(2026, 3, 1).toSecsSinceEpoch(),
                                   QStringLiteral("s"), QStringLiteral("b"));
    {
        // A condition deleted after its list would abort the whole deletion.
        SQLite::Database db(f.dbPath().toStdString(), SQLite::OPEN_READWRITE);
        db.exec("CREATE TRIGGER conditions_first BEFORE DELETE ON smartconditions WHEN NOT EXISTS "
                "(SELECT 1 FROM smartlist WHERE rowid = OLD.sid) BEGIN SELECT RAISE(ABORT, 'list deleted "
                "first'); END");
    }
    f.calls->deleteProfile(p);

    SQLite::Database db(f.dbPath().toStdString());
    QCOMPARE(db.execAndGet("SELECT count(*) FROM callinglist WHERE profile IN (" + std::to_string(p) + ", -" +
                           std::to_string(p) + ")")
                 .getInt(),
             0);
    QCOMPARE(db.execAndGet("SELECT count(*) FROM smartlist WHERE profile = " + std::to_string(p)).getInt(),
             0);
    QCOMPARE(
        db.execAndGet("SELECT count(*) FROM smartconditions WHERE sid NOT IN (SELECT rowid FROM smartlist)")
            .getInt(),
        0);
    QCOMPARE(f.calls->smartLists().getAllSmartListIDsForProfile(keep).size(), 1);
    QCOMPARE(f.calls->getCallerlistForProfile(keep, 0, {}, {}, {}, {}, 0).size(), 1);
    QVERIFY(f.calls->memos().getDetailMemoWithID(memo)); // memos stay
}

void TestCallinglist::deleteCallinglistKeepsMarkersAndLists()
{
    CalllistFixture f;
    const int p = f.addLocation();
    const int other = f.addLocation();
    f.call(p, 1, at(2026, 3, 1), QStringLiteral("01"), QStringLiteral("5550001"));
    f.call(p, 2, at(2026, 3, 2), QStringLiteral("02"), QStringLiteral("5550002"));
    f.call(other, 1, at(2026, 3, 2));
    f.calls->updateLastDateForVoicemailForProfile(p);
    QCOMPARE(f.calls->newestCallDateForProfile(p), at(2026, 3, 2).toSecsSinceEpoch());
    QVERIFY(!f.calls->newestCallDateForProfile(p + 100));
    // The age limit (now is 2026-03-15 12:00): 14 days keep the call of 03-02 10:00 only.
    QVERIFY(f.calls->deleteCallsOlderThanDays(p, 14));
    QCOMPARE(f.calls->getCallerlistForProfile(p, 0, {}, {}, {}, {}, 0).size(), 1);
    QVERIFY(f.calls->getLastDateForVoicemailForProfile(p));
    f.call(p, 1, at(2026, 3, 1), QStringLiteral("01"), QStringLiteral("5550001"));
    QCOMPARE(f.calls->getLinesForProfile(p),
             (QStringList{QStringLiteral("5550001"), QStringLiteral("5550002")}));
    f.calls->refreshCallsCounterForProfile(p);
    QCOMPARE(f.calls->callsCounter().value(TNCallinglist::CounterAll), 2);

    QObject context;
    QStringList posted;
    f.center.addObserver(&context, {}, [&](const Notification& n) {
        if (n.object == f.calls.get())
            posted.append(n.name);
    });
    f.calls->deleteCallinglistForProfile(p, p);
    QCOMPARE(posted, (QStringList{Notifications::RELOADCOUNTER, Notifications::GETNEWCALLERLIST}));
    QCOMPARE(f.calls->callsCounter().value(TNCallinglist::CounterAll), 0);
    QVERIFY(f.calls->getLastDateForVoicemailForProfile(p));
    QCOMPARE(f.calls->smartLists().smartListsForProfile(p).size(), 1);
    QCOMPARE(f.calls->getCallerlistForProfile(other, 0, {}, {}, {}, {}, 0).size(), 1);
}

void TestCallinglist::memoSearch_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("column");
    QTest::addColumn<QStringList>("expected"); // subjects, oldest call first

    QTest::newRow("all columns: number") << u"0301"_s << u""_s << QStringList{u"Angebot"_s};
    QTest::newRow("all columns: cached name with apostrophe")
        << u"o'brien"_s << u""_s << QStringList{u"Angebot"_s};
    QTest::newRow("all columns: body") << u"Rückruf"_s << u""_s << QStringList{u"Termin"_s};
    QTest::newRow("all columns: shown date") << u"02.03.2026"_s << u""_s << QStringList{u"Termin"_s};
    QTest::newRow("subject only") << u"Termin"_s << u"subject"_s << QStringList{u"Termin"_s};
    QTest::newRow("body only misses the subject") << u"Termin"_s << u"body"_s << QStringList{};
    QTest::newRow("name only") << u"Brien"_s << u"name"_s << QStringList{u"Angebot"_s};
    QTest::newRow("date only") << u"01.03.2026"_s << u"date"_s << QStringList{u"Angebot"_s};
    QTest::newRow("empty text lists all") << u""_s << u""_s << QStringList{u"Angebot"_s, u"Termin"_s};
    QTest::newRow("unknown column finds nothing") << u"Termin"_s << u"calldate; --"_s << QStringList{};
}

void TestCallinglist::memoSearch()
{
    QFETCH(QString, text);
    QFETCH(QString, column);
    QFETCH(QStringList, expected);
    CalllistFixture f;
    const int p = f.addLocation();
    f.calls->insertCallerWithName(u"Pat O'Brien"_s, u"030111"_s, {}, {});
    f.calls->setMemoForProfile(p, u"0170999"_s, at(2026, 3, 2).toSecsSinceEpoch(), u"Termin"_s,
                               u"Rückruf morgen"_s);
    f.calls->setMemoForProfile(p, u"030111"_s, at(2026, 3, 1).toSecsSinceEpoch(), u"Angebot"_s,
                               u"schicken"_s);
    f.calls->setMemoForProfile(f.addLocation(), u"030111"_s, at(2026, 3, 1).toSecsSinceEpoch(), u"Termin"_s,
                               {});

    QStringList got;
    for (const Memo& m : f.calls->searchMemosForProfile(p, text, column))
        got.append(m.subject);
    QCOMPARE(got, expected);
}

void TestCallinglist::memosPostReload()
{
    CalllistFixture f;
    const int p = f.addLocation();
    QObject context;
    int reloads = 0;
    f.center.addObserver(&context, Notifications::RELOADMEMOS, [&](const Notification&) { ++reloads; });
    const qint64 id = f.calls->setMemoForProfile(p, u"0999"_s, 1000, u"s"_s, u"b"_s);
    QVERIFY(id > 0);
    QVERIFY(f.calls->updateMemoWithID(id, u"new subject"_s, u"new body"_s));
    QVERIFY(!f.calls->updateMemoWithID(id + 100, u"x"_s, u"y"_s));
    QCOMPARE(reloads, 2);
    const auto memo = f.calls->memos().getDetailMemoWithID(id);
    QVERIFY(memo);
    QCOMPARE(memo->subject, u"new subject"_s);
    QCOMPARE(memo->body, u"new body"_s);
    QVERIFY(f.calls->memos().deleteMemoWithID(id));
    QVERIFY(!f.calls->memos().getDetailMemoWithID(id));
}

void TestCallinglist::profileNumbers()
{
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("Tondrel.db"));
    SettingsStore settings(dir.filePath(QStringLiteral("settings.json")));
    NotificationCenter center;
    TNCallinglist calls(path, settings, center);
    QVERIFY(calls.isValid());
    QCOMPARE(calls.maxProfileNumber(), std::optional<int>(0));
    calls.insertCall({4, 1, 100, QStringLiteral("1"), {}, {}, QStringLiteral("0:01")});
    calls.updateMarkerDate(9, TNCallinglist::MarkerImport, QDateTime::currentDateTime());
    QCOMPARE(calls.maxProfileNumber(), std::optional<int>(4));
    QVERIFY(QFile::remove(path));
    QCOMPARE(calls.maxProfileNumber(), std::nullopt);
}

void TestCallinglist::batchSkipsFailingRowAlone()
{
    CalllistFixture f;
    const int p = f.addLocation();
    {
        SQLite::Database db(f.dbPath().toStdString(), SQLite::OPEN_READWRITE);
        db.exec("CREATE TRIGGER refuse BEFORE INSERT ON callinglist WHEN NEW.phonenumber = 'bad' "
                "BEGIN SELECT RAISE(ABORT, 'refused'); END");
    }
    {
        CallBatch batch = f.calls->beginBatch();
        QVERIFY(batch.isOpen());
        QVERIFY(batch.insertCall({p, 1, 100, QStringLiteral("01"), {}, {}, QStringLiteral("0:01")}));
        QCOMPARE(batch.insertCall({p, 1, 200, QStringLiteral("bad"), {}, {}, QStringLiteral("0:01")}), 0);
        QVERIFY(batch.insertCall({p, 1, 300, QStringLiteral("03"), {}, {}, QStringLiteral("0:01")}));
        QVERIFY(batch.containsCall(p, 300, QStringLiteral("03")));
        QVERIFY(!batch.containsCall(p, 200, QStringLiteral("bad")));
        QVERIFY(batch.commit());
    }
    {
        CallBatch abandoned = f.calls->beginBatch();
        abandoned.insertCall({p, 1, 400, QStringLiteral("04"), {}, {}, QStringLiteral("0:01")});
    } // not committed: rolled back
    QCOMPARE(f.calls->getCallerlistForProfile(p, 0, {}, {}, {}, {}, 0).size(), 2);
}

void TestCallinglist::migratesFirstFileFormat()
{
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("Tondrel.db"));
    {
        SQLite::Database db(path.toStdString(), SQLite::OPEN_READWRITE | SQLite::OPEN_CREATE);
        db.exec("CREATE TABLE callinglist (profile integer, callstate integer, calldate integer, phonenumber "
                "text, "
                "extension text, line text, duration text)");
        db.exec("CREATE TABLE caller (phonenumber text, name text, abid text, label text)");
        db.exec("INSERT INTO callinglist VALUES (1, 1, 1000, '0301', 'x', '555', '0:01')");
        db.exec("INSERT INTO caller VALUES ('0301', 'First', '', '')");
        db.exec("INSERT INTO caller VALUES ('0301', 'Second', '', '')");
    }
    SettingsStore settings(dir.filePath(QStringLiteral("settings.json")));
    NotificationCenter center;
    TNCallinglist calls(path, settings, center);
    QVERIFY(calls.isValid());
    const auto rows = calls.getCallerlistForProfile(1, 0, {}, {}, {}, {}, 0);
    QCOMPARE(rows.size(), 1); // duplicate cache rows no longer double the call
    QCOMPARE(rows.first().name, QStringLiteral("First"));
    SQLite::Database db(path.toStdString());
    QCOMPARE(db.execAndGet("PRAGMA user_version").getInt(), CallDatabase::SchemaVersion);
    QCOMPARE(QString::fromStdString(db.execAndGet("PRAGMA journal_mode").getString()), QStringLiteral("wal"));
    QVERIFY(db.tableExists("memos") && db.tableExists("smartlist") && db.tableExists("smartconditions"));

    TNCallinglist again(path, settings, center); // a second start leaves the data alone
    QCOMPARE(again.getCallerlistForProfile(1, 0, {}, {}, {}, {}, 0).size(), 1);
}

void TestCallinglist::shownDateMatchesStrftime_data()
{
    QTest::addColumn<QByteArray>("zone");
    QTest::newRow("UTC") << QByteArray("UTC");
    QTest::newRow("Berlin, DST at 2:00") << QByteArray("Europe/Berlin");
    QTest::newRow("New York") << QByteArray("America/New_York");
    QTest::newRow("Lord Howe, half-hour DST") << QByteArray("Australia/Lord_Howe");
    QTest::newRow("Kathmandu, +5:45") << QByteArray("Asia/Kathmandu");
}

void TestCallinglist::shownDateMatchesStrftime()
{
    QFETCH(QByteArray, zone);
    const QByteArray saved = qgetenv("TZ");
    qputenv("TZ", zone);
    tzset();
    QTemporaryDir dir;
    CallDatabase db(dir.filePath(QStringLiteral("t.db")));
    QVERIFY(db.initialize());
    // Every 7 min 37 s through 2026 and the first days of 1970 (SQLite guesses earlier offsets), in the date
    // search's own form.
    const QString sql = QStringLiteral(
        "WITH RECURSIVE t(v) AS (SELECT ? UNION ALL SELECT v + 457 FROM t WHERE v < ?) "
        "SELECT count(*) FROM t WHERE tn_localtime(?, v) != STRFTIME(?, v, 'unixepoch', 'localtime')");
    const QString format = ListQuery::convertedSQLDateFormat(QStringLiteral("dd.MM.yyyy HH:mm:ss '%'"));
    for (const auto& [from, to] : {std::pair<qint64, qint64>{1767139200, 1798761600}, {0, 180000}}) {
        const QVariant mismatches =
            db.scalarLogged(SqlFragment(sql, {from, to, format, format}), "shownDateMatchesStrftime");
        QCOMPARE(mismatches.toInt(), 0);
    }
    if (saved.isNull())
        qunsetenv("TZ");
    else
        qputenv("TZ", saved);
    tzset();
}

QTEST_GUILESS_MAIN(TestCallinglist)
#include "tst_callinglist.moc"
