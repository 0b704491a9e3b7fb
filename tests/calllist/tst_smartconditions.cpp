// Every smart-list column and condition run against real rows on fixed dates: the rules must
// pick exactly the calls a user would expect, never another location's calls or marker rows.
#include "CalllistFixture.h"

#include "calllist/ListQueryBuilder.h"

#include <QtTest>

using namespace Qt::Literals::StringLiterals;

using Conditions = QList<SmartCondition>;

class TestSmartConditions : public QObject
{
    Q_OBJECT
private slots:
    void rules_data();
    void rules();
    void conditionsComeBackNewestFirst();
    void sideTableAndSelectorOrders();
    void updateAndDelete();
    void convertedDateFormat_data();
    void convertedDateFormat();
};

void TestSmartConditions::rules_data()
{
    QTest::addColumn<Conditions>("conditions");
    QTest::addColumn<QString>("expected"); // the letters of the calls listed, sorted

    using namespace Smart;
    // Now is 2026-03-15 12:00 (local). Calls: A today 09:00 in, B 03-14 missed, C 03-10 out,
    // D 02-15 in, E 2025-03-03 out, F 03-12 in, G 03-15 11:30 missed (after the new-calls mark).
    QTest::newRow("date today") << Conditions{{ColumnDate, Today, {}}} << u"AG"_s;
    QTest::newRow("date current month (any year)")
        << Conditions{{ColumnDate, CurrentMonth, {}}} << u"ABCEFG"_s;
    QTest::newRow("date current year") << Conditions{{ColumnDate, CurrentYear, {}}} << u"ABCDFG"_s;
    QTest::newRow("date day of month") << Conditions{{ColumnDate, DayOfMonth, u"15"_s}} << u"ADG"_s;
    QTest::newRow("date day of month, one digit") << Conditions{{ColumnDate, DayOfMonth, u"3"_s}} << u"E"_s;
    QTest::newRow("date month") << Conditions{{ColumnDate, Month, u"02"_s}} << u"D"_s;
    QTest::newRow("date year") << Conditions{{ColumnDate, Year, u"2025"_s}} << u"E"_s;
    QTest::newRow("date last 7 days") << Conditions{{ColumnDate, LastDays, u"7"_s}} << u"ABCFG"_s;
    QTest::newRow("date exactly 1 day ago") << Conditions{{ColumnDate, DaysAgo, u"1"_s}} << u"B"_s;
    QTest::newRow("date exactly 0 days ago") << Conditions{{ColumnDate, DaysAgo, u"0"_s}} << u"AG"_s;

    QTest::newRow("name is, with apostrophe") << Conditions{{ColumnName, Is, u"Pat O'Brien"_s}} << u"B"_s;
    QTest::newRow("name is not (unnamed calls never match)")
        << Conditions{{ColumnName, IsNot, u"Pat O'Brien"_s}} << u"ADE"_s;
    QTest::newRow("name contains, any case") << Conditions{{ColumnName, Contains, u"o'b"_s}} << u"B"_s;
    QTest::newRow("name contains not") << Conditions{{ColumnName, ContainsNot, u"Mu"_s}} << u"ABD"_s;

    QTest::newRow("number is") << Conditions{{ColumnNumber, Is, u"030111"_s}} << u"AD"_s;
    QTest::newRow("number contains not") << Conditions{{ColumnNumber, ContainsNot, u"030"_s}} << u"CEG"_s;

    QTest::newRow("extension is") << Conditions{{ColumnExtension, Is, u"Küche"_s}} << u"ACFG"_s;
    QTest::newRow("extension contains") << Conditions{{ColumnExtension, Contains, u"ür"_s}} << u"BD"_s;

    QTest::newRow("line is") << Conditions{{ColumnLine, Is, u"5550003"_s}} << u"E"_s;
    QTest::newRow("line contains") << Conditions{{ColumnLine, Contains, u"0002"_s}} << u"BD"_s;

    QTest::newRow("duration is") << Conditions{{ColumnDuration, Is, u"1:30"_s}} << u"C"_s;
    QTest::newRow("duration is not") << Conditions{{ColumnDuration, IsNot, u"0:00"_s}} << u"ACDEF"_s;
    QTest::newRow("a percent sign is no wildcard") << Conditions{{ColumnDuration, Contains, u"%"_s}} << u""_s;

    QTest::newRow("type incoming") << Conditions{{ColumnCallType, TypeIncoming, {}}} << u"ADF"_s;
    QTest::newRow("type outgoing") << Conditions{{ColumnCallType, TypeOutgoing, {}}} << u"CE"_s;
    QTest::newRow("type missed") << Conditions{{ColumnCallType, TypeMissed, {}}} << u"BG"_s;
    QTest::newRow("type new") << Conditions{{ColumnCallType, TypeNew, {}}} << u"G"_s;

    QTest::newRow("all rules must hold")
        << Conditions{{ColumnCallType, TypeIncoming, {}}, {ColumnNumber, Contains, u"0301"_s}} << u"AD"_s;
    QTest::newRow("any rule may hold") << Conditions{{ColumnMatchAny, 1, {}},
                                                     {ColumnName, Is, u"Pat O'Brien"_s},
                                                     {ColumnCallType, TypeOutgoing, {}}}
                                       << u"BCE"_s;
    QTest::newRow("any, with a rule marker rows would match") << Conditions{{ColumnMatchAny, 1, {}},
                                                                            {ColumnDuration, Is, u"1:30"_s},
                                                                            {ColumnCallType, TypeMissed, {}}}
                                                              << u"BCG"_s;
    QTest::newRow("unknown rules are ignored")
        << Conditions{{42, 0, {}}, {ColumnDate, 99, {}}} << u"ABCDEFG"_s;
    QTest::newRow("no rules") << Conditions{} << u"ABCDEFG"_s;
}

void TestSmartConditions::rules()
{
    QFETCH(Conditions, conditions);
    QFETCH(QString, expected);
    CalllistFixture f; // now: 2026-03-15 12:00
    const int p = f.addLocation();
    const int other = f.addLocation();
    QMap<qint64, QChar> letters;
    auto add = [&](QChar letter, int state, const QDateTime& when, const QString& number, const QString& line,
                   const QString& duration, const QString& extension) {
        letters[f.call(p, state, when, number, line, duration, extension)] = letter;
    };
    add(u'A', 1, at(2026, 3, 15, 9), u"030111"_s, u"5550001"_s, u"0:05"_s, u"Küche"_s);
    add(u'B', 2, at(2026, 3, 14, 18), u"030222"_s, u"5550002"_s, u"0:00"_s, u"Büro"_s);
    add(u'C', 3, at(2026, 3, 10, 8), u"0170333"_s, u"5550001"_s, u"1:30"_s, u"Küche"_s);
    add(u'D', 1, at(2026, 2, 15, 10), u"030111"_s, u"5550002"_s, u"0:12"_s, u"Büro"_s);
    add(u'E', 3, at(2025, 3, 3, 10), u"0800444"_s, u"5550003"_s, u"0:01"_s, u"Fax"_s);
    add(u'F', 1, at(2026, 3, 12, 10), u"030555"_s, u"5550001"_s, u"0:02"_s, u"Küche"_s);
    f.calls->setLastDateForNewCallsForProfile(p);
    add(u'G', 2, at(2026, 3, 15, 11, 30), u"0170999"_s, u"5550001"_s, u"0:00"_s, u"Küche"_s);
    f.calls->insertCallerWithName(u"Anna Müller"_s, u"030111"_s, {}, {});
    f.calls->insertCallerWithName(u"Pat O'Brien"_s, u"030222"_s, {}, {});
    f.calls->insertCallerWithName(u"Muster GmbH"_s, u"0800444"_s, {}, {});
    // What must never show up: another location's matching call and this location's marker rows.
    f.call(other, 2, at(2026, 3, 15, 9), u"030222"_s, u"5550002"_s, u"1:30"_s, u"Küche"_s);
    f.calls->updateLastDateForVoicemailForProfile(p);
    f.calls->updateLastDateForFaxForProfile(p);

    // The default "today" list is the oldest; the one under test is selector 9 + 1.
    const qint64 id = f.calls->insertSmartListForProfile(p, u"under test"_s, conditions);
    QVERIFY(id > 0);
    QString got;
    for (const CallRow& row :
         f.calls->getCallerlistForProfile(p, ListQuery::SelectorFirstSmartList + 1, {}, {}, {}, {}, 0))
        got += letters.value(row.rowid, u'?');
    std::sort(got.begin(), got.end());
    QCOMPARE(got, expected);
    QCOMPARE(f.calls->getSmartCallsCounterFromListForProfile(p, id), qint64(expected.size()));
    f.calls->refreshCallsCounterForProfile(p);
    QCOMPARE(f.calls->callsCounter().value(TNCallinglist::CounterFirstSmartList), qint64(expected.size()));
}

void TestSmartConditions::conditionsComeBackNewestFirst()
{
    CalllistFixture f;
    const int p = f.addLocation();
    const Conditions stored{{Smart::ColumnName, Smart::Is, u"a"_s},
                            {Smart::ColumnLine, Smart::Contains, u"b"_s}};
    const qint64 id = f.calls->insertSmartListForProfile(p, u"x"_s, stored);
    QCOMPARE(f.calls->smartLists().getSmartConditionsForID(id), (Conditions{stored[1], stored[0]}));
}

void TestSmartConditions::sideTableAndSelectorOrders()
{
    CalllistFixture f;
    const int p = f.addLocation(); // "Today" first
    f.call(p, 1, at(2026, 3, 1));
    f.call(p, 2, at(2026, 3, 2));
    f.call(p, 2, at(2026, 3, 3));
    const qint64 in =
        f.calls->insertSmartListForProfile(p, u"in"_s, {{Smart::ColumnCallType, Smart::TypeIncoming, {}}});
    const qint64 missed =
        f.calls->insertSmartListForProfile(p, u"missed"_s, {{Smart::ColumnCallType, Smart::TypeMissed, {}}});

    QCOMPARE(f.calls->smartLists().getAllSmartListNamesForProfile(p),
             (QStringList{u"missed"_s, u"in"_s, u"Today"_s}));
    QCOMPARE(f.calls->smartLists().getAllSmartListIDsForProfile(p).mid(0, 2), (QList<qint64>{missed, in}));
    QCOMPARE(f.calls->smartLists().getSmartListForProfile(p, 1)->rowid, in);
    QCOMPARE(f.calls->smartLists().getSmartListForProfile(p, 2)->rowid, missed);
    QVERIFY(!f.calls->smartLists().getSmartListForProfile(p, 3));

    f.calls->refreshCallsCounterForProfile(p);
    QCOMPARE(f.calls->callsCounter().mid(TNCallinglist::CounterFirstSmartList), (QList<qint64>{2, 1, 0}));
    f.call(p, 1, at(2026, 3, 4));
    f.calls->setCallCounterForProfile(p, in);
    QCOMPARE(f.calls->callsCounter().mid(TNCallinglist::CounterFirstSmartList), (QList<qint64>{2, 2, 0}));
}

void TestSmartConditions::updateAndDelete()
{
    CalllistFixture f;
    const int p = f.addLocation();
    const int other = f.addLocation();
    const qint64 id =
        f.calls->insertSmartListForProfile(p, u"old"_s, {{Smart::ColumnName, Smart::Is, u"a"_s}});
    QVERIFY(!f.calls->updateSmartListForProfile(other, u"stolen"_s, {}, id));
    QVERIFY(f.calls->updateSmartListForProfile(p, u"new"_s, {{Smart::ColumnLine, Smart::Is, u"1"_s}}, id));
    QCOMPARE(f.calls->smartLists().smartListForID(id)->name, u"new"_s);
    QCOMPARE(f.calls->smartLists().getSmartConditionsForID(id),
             (Conditions{{Smart::ColumnLine, Smart::Is, u"1"_s}}));
    QVERIFY(f.calls->deleteSmartListForID(id));
    QVERIFY(!f.calls->smartLists().smartListForID(id));
    QVERIFY(f.calls->smartLists().getSmartConditionsForID(id).isEmpty());
    QVERIFY(f.calls->getConditionSearchStringForID(id).isEmpty());
    QVERIFY(!f.calls->deleteSmartListForID(id));
}

void TestSmartConditions::convertedDateFormat_data()
{
    QTest::addColumn<QString>("pattern");
    QTest::addColumn<QString>("expected");
    QTest::newRow("German default") << u"dd.MM.yyyy HH:mm"_s << u"%d.%m.%Y %H:%M"_s;
    QTest::newRow("US with 12-hour clock") << u"M/d/yy h:mm AP"_s << u"%m/%d/%Y %H:%M"_s;
    QTest::newRow("ISO with seconds") << u"yyyy-MM-dd HH:mm:ss"_s << u"%Y-%m-%d %H:%M:%S"_s;
    QTest::newRow("quoted text and percent") << u"dd 'um' HH%"_s << u"%d um %H%%"_s;
}

void TestSmartConditions::convertedDateFormat()
{
    QFETCH(QString, pattern);
    QFETCH(QString, expected);
    QCOMPARE(ListQuery::convertedSQLDateFormat(pattern), expected);
}

QTEST_GUILESS_MAIN(TestSmartConditions)
#include "tst_smartconditions.moc"
