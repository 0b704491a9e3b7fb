// The call list window of the tray on a real call database: day rows, lists, search, sort,
// deletion, copying, memos, import and export, adding to the address book, looking up online,
// and how the tray opens it.
#include "../contacts/DirectoryServer.h"
#include "GuiFixture.h"

#include "DialWindow.h"
#include "TrayApplication.h"
#include "TrayMenu.h"
#include "app/CallMonitorService.h"
#include "calllist/AddContactDialog.h"
#include "calllist/CallListGroups.h"
#include "calllist/CallListModel.h"
#include "calllist/CallListWindow.h"
#include "calllist/CallMemoDialog.h"
#include "calllist/CallStatisticsDialog.h"

#include "base/Localization.h"
#include "base/NotificationCenter.h"
#include "base/NotificationNames.h"
#include "base/SettingsKeys.h"
#include "base/SettingsStore.h"
#include "calllist/ListQueryBuilder.h"
#include "calllist/TNCallinglist.h"
#include "contacts/ReverseSearchDefinitions.h"
#include "contacts/VCardAddressBook.h"
#include "monitor/StreamListener.h"

#include <QClipboard>
#include <QComboBox>
#include <QGuiApplication>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QSignalSpy>
#include <QStatusBar>
#include <QTableView>
#include <QTableWidget>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {
QDateTime day(int d, int h = 10, int m = 0)
{
    return QDateTime(QDate(2026, 3, d), QTime(h, m));
}

struct ListRig
{
    GuiEnv env;
    RecordingPresenter presenter;
    std::unique_ptr<TrayApplication> tray;

    bool open(const QVariantMap& globals = {})
    {
        return env.open({{u"L1"_s, GuiEnv::location(u"Home"_s, 1, 0)}}, u"L1"_s, globals);
    }
    void start(const QStringList& arguments = {})
    {
        TrayApplication::Options options;
        options.presenter = &presenter;
        options.headless = true;
        tray = std::make_unique<TrayApplication>(*env.env, options);
        tray->start(arguments);
    }
    TNCallinglist& calls() { return *env.env->callinglist(); }
    int profile() { return env.env->manager().currentPreferences()->activeProfileInt; }
    qint64 call(int state, const QDateTime& when, const QString& number,
                const QString& extension = u"Küche"_s)
    {
        return calls().insertCall(
            {profile(), state, when.toSecsSinceEpoch(), number, extension, u"5550001"_s, u"0:05"_s});
    }
    CallListWindow& window()
    {
        tray->openCallList();
        return *tray->callListWindow();
    }
};

// The table as text: "[day count]" for day rows, the number for calls.
QString shownRows(const CallListModel& m)
{
    QStringList out;
    for (int r = 0; r < m.rowCount(); ++r) {
        const QModelIndex i = m.index(r, CallListModel::Date);
        if (i.data(CallListModel::DayHeaderRole).toBool())
            out << u"[%1 %2]"_s.arg(i.data().toString()).arg(i.data(CallListModel::DayCountRole).toInt());
        else
            out << i.data(CallListModel::NumberRole).toString();
    }
    return out.join(u' ');
}

void clickGroup(CallListWindow& w, int selector)
{
    CallListGroups* g = w.groups();
    for (int i = 0; i < g->topLevelItemCount(); ++i)
        if (g->selectorAt(i) == selector) {
            g->scrollToItem(g->topLevelItem(i));
            QTest::mouseClick(g->viewport(), Qt::LeftButton, {},
                              g->visualItemRect(g->topLevelItem(i)).center());
            return;
        }
    QFAIL("no such list");
}

void clickRow(CallListWindow& w, int row, Qt::KeyboardModifiers modifiers = {})
{
    QTableView* t = w.table();
    t->scrollTo(t->model()->index(row, CallListModel::Name));
    QTest::mouseClick(t->viewport(), Qt::LeftButton, modifiers,
                      t->visualRect(t->model()->index(row, CallListModel::Name)).center());
}

// The numbers of the calls shown, day rows left out.
QString shownNumbers(const CallListModel& m)
{
    QStringList out;
    for (int r = 0; r < m.rowCount(); ++r)
        if (!m.index(r, 0).data(CallListModel::DayHeaderRole).toBool())
            out << m.index(r, 0).data(CallListModel::NumberRole).toString();
    return out.join(u' ');
}

int rowOfNumber(const CallListModel& m, const QString& number)
{
    for (int r = 0; r < m.rowCount(); ++r)
        if (m.index(r, 0).data(CallListModel::NumberRole).toString() == number &&
            !m.index(r, 0).data(CallListModel::DayHeaderRole).toBool())
            return r;
    return -1;
}
} // namespace

class TestCallListWindow : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase() { QLocale::setDefault(QLocale::c()); }
    void dayRows_data();
    void dayRows();
    void lists_data();
    void lists();
    void currentCallsFromTheMonitor();
    void search_data();
    void search();
    void sortPersists_data();
    void sortPersists();
    void deleteCalls_data();
    void deleteCalls();
    void copyToClipboard_data();
    void copyToClipboard();
    void memoOfACall();
    void followsNotifications();
    void importAndExport();
    void statistics();
    void addToAddressBook();
    void lookUpOnline_data();
    void lookUpOnline();
    void openedByTheTray_data();
    void openedByTheTray();
};

void TestCallListWindow::dayRows_data()
{
    QTest::addColumn<QList<int>>("days"); // one call per entry, on that day of March
    QTest::addColumn<int>("pageSize");
    QTest::addColumn<QString>("firstPage");
    QTest::addColumn<QString>("all");
    QTest::newRow("a day with three calls")
        << QList<int>{4, 4, 4} << 100 << u"[04.03.2026 3] 0302 0301 0300"_s
        << u"[04.03.2026 3] 0302 0301 0300"_s;
    // The view asks for more at the end: the day cut by the page grows, a new one follows.
    QTest::newRow("a page ends inside a day")
        << QList<int>{1, 2, 2, 2, 3} << 2 << u"[03.03.2026 1] 0304 [02.03.2026 1] 0303"_s
        << u"[03.03.2026 1] 0304 [02.03.2026 3] 0303 0302 0301 [01.03.2026 1] 0300"_s;
}

void TestCallListWindow::dayRows()
{
    QFETCH(QList<int>, days);
    QFETCH(int, pageSize);
    QFETCH(QString, firstPage);
    QFETCH(QString, all);
    ListRig rig;
    QVERIFY(rig.open());
    for (int i = 0; i < days.size(); ++i)
        rig.call(1, day(days[i], 8 + i), u"030%1"_s.arg(i, 1));
    rig.start();
    CallListWindow& w = rig.window();
    clickGroup(w, ListQuery::SelectorAll);
    CallListModel* m = w.model();
    m->setPageSize(pageSize);
    m->setQuery(m->query());
    QCOMPARE(shownRows(*m), firstPage);
    while (m->canFetchMore({}))
        m->fetchMore({});
    QCOMPARE(shownRows(*m), all);
    QCOMPARE(m->callCount(), days.size());

    // A day row cannot be chosen as a call; the call below it can.
    clickRow(w, 0);
    QVERIFY(w.selectedCallRows().isEmpty());
    QVERIFY(!w.deleteAction()->isEnabled());
    clickRow(w, 1);
    QCOMPARE(w.selectedCallRows(), QList<int>{1});
    QVERIFY(w.deleteAction()->isEnabled());
}

void TestCallListWindow::lists_data()
{
    QTest::addColumn<int>("selector");
    QTest::addColumn<QString>("numbers");
    QTest::newRow("missed shows only missed calls") << ListQuery::SelectorMissed << u"0402 0400"_s;
    QTest::newRow("outgoing") << ListQuery::SelectorOutgoing << u"0403"_s;
    QTest::newRow("all calls") << ListQuery::SelectorAll << u"0404 0403 0402 0401 0400"_s;
    QTest::newRow("new calls: after the mark") << ListQuery::SelectorNew << u"0404"_s;
    // The location's default smart list holds today's calls.
    QTest::newRow("smart list of today") << ListQuery::SelectorFirstSmartList << u"0404"_s;
}

void TestCallListWindow::lists()
{
    QFETCH(int, selector);
    QFETCH(QString, numbers);
    ListRig rig;
    QVERIFY(rig.open());
    rig.call(2, day(1), u"0400"_s);
    rig.call(1, day(2), u"0401"_s);
    rig.call(2, day(3), u"0402"_s);
    rig.call(3, day(4), u"0403"_s);
    rig.calls().setLastDateForNewCallsForProfile(rig.profile());
    rig.call(1, QDateTime::currentDateTime().addSecs(-60), u"0404"_s);
    rig.calls().createDefaultSmartList(rig.profile());
    rig.start();
    CallListWindow& w = rig.window();
    clickGroup(w, selector);

    QCOMPARE(shownNumbers(*w.model()), numbers);
    // The counter beside the list agrees with the list.
    QCOMPARE(w.groups()->counterText(selector), QString::number(w.model()->callCount()));
    QCOMPARE(rig.env.env->settings().value(keys::SelCLGrp, 3).toInt(), w.groups()->currentRow());
}

void TestCallListWindow::currentCallsFromTheMonitor()
{
    ListRig rig;
    QVERIFY(rig.open());
    rig.call(1, day(1), u"0400"_s);
    rig.start();
    CallListWindow& w = rig.window();
    QCOMPARE(w.groups()->counterText(CallListGroups::CurrentCalls), u"0"_s);
    rig.tray->callMonitor().listener().processBytes("15.03.26 10:00:00;RING;0;0409998877;5550001;SIP0;\n");
    QTRY_COMPARE(w.groups()->counterText(CallListGroups::CurrentCalls), u"1"_s);
    clickGroup(w, CallListGroups::CurrentCalls);
    QCOMPARE(w.model()->callCount(), 1);
    QCOMPARE(w.model()->index(0, 0).data(CallListModel::DayCountRole).toInt(), 1);
    QCOMPARE(w.model()->index(1, 0).data(CallListModel::NumberRole).toString(), u"0409998877"_s);
    QCOMPARE(w.model()->index(1, 0).data(CallListModel::CallStateRole).toInt(), 1);
    // A call in progress is not stored: nothing to delete, but it can be called back.
    QVERIFY(!w.callAction()->isEnabled());
    clickRow(w, 1);
    QVERIFY(!w.deleteAction()->isEnabled());
    w.callAction()->trigger();
    QVERIFY(rig.tray->dialWindow().isVisible());
    QCOMPARE(rig.tray->dialWindow().numberField()->text(), u"0409998877"_s);
}

void TestCallListWindow::search_data()
{
    QTest::addColumn<QString>("column");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("numbers");
    QTest::newRow("part of a number") << QString() << u"9988"_s << u"0409998877"_s;
    QTest::newRow("a cached name") << QString() << u"berg"_s << u"0409998877"_s;
    QTest::newRow("an extension") << QString() << u"Flur"_s << u"0301112233"_s;
    QTest::newRow("a date as shown") << QString() << u"02.03.2026"_s << u"0301112233"_s;
    QTest::newRow("only the name column") << u"name"_s << u"0409"_s << QString();
    QTest::newRow("only the number column") << u"number"_s << u"0409"_s << u"0409998877"_s;
}

void TestCallListWindow::search()
{
    QFETCH(QString, column);
    QFETCH(QString, text);
    QFETCH(QString, numbers);
    ListRig rig;
    QVERIFY(rig.open());
    rig.call(1, day(1), u"0409998877"_s);
    rig.call(3, day(2), u"0301112233"_s, u"Flur"_s);
    rig.call(2, day(3), u"0307654321"_s);
    QVERIFY(rig.calls().insertCallerWithName(u"Hanna Berg"_s, u"0409998877"_s, u"abid-1"_s, u"mobile"_s));
    rig.start();
    CallListWindow& w = rig.window();
    clickGroup(w, ListQuery::SelectorAll);
    QCOMPARE(w.model()->callCount(), 3);
    w.searchColumnBox()->setCurrentIndex(w.searchColumnBox()->findData(column));
    QTest::keyClicks(w.searchField(), text);
    QTRY_COMPARE(shownNumbers(*w.model()), numbers);
    QCOMPARE(w.countLabel()->text(), numbers.isEmpty() ? u"0 calls"_s : u"1 call"_s);
}

void TestCallListWindow::sortPersists_data()
{
    QTest::addColumn<int>("column");
    QTest::addColumn<bool>("ascending");
    QTest::addColumn<QString>("identifier");
    QTest::addColumn<QString>("firstNumber");
    QTest::newRow("number ascending") << int(CallListModel::Number) << true << u"number"_s << u"0301"_s;
    QTest::newRow("extension descending")
        << int(CallListModel::Extension) << false << u"extension"_s << u"0302"_s;
    QTest::newRow("call state ascending")
        << int(CallListModel::State) << true << u"callstateimg"_s << u"0302"_s;
}

void TestCallListWindow::sortPersists()
{
    QFETCH(int, column);
    QFETCH(bool, ascending);
    QFETCH(QString, identifier);
    QFETCH(QString, firstNumber);
    ListRig rig;
    QVERIFY(rig.open());
    rig.call(3, day(1), u"0303"_s, u"Bad"_s);
    rig.call(1, day(2), u"0302"_s, u"Zimmer"_s);
    rig.call(2, day(3), u"0301"_s, u"Küche"_s);
    // Numbers sort by the cached caller's number: every call has a cached name here.
    for (const QString& n : {u"0301"_s, u"0302"_s, u"0303"_s})
        QVERIFY(rig.calls().insertCallerWithName(u"N"_s + n, n, QString(), QString()));
    rig.start();
    {
        CallListWindow& w = rig.window();
        clickGroup(w, ListQuery::SelectorAll);
        w.table()->horizontalHeader()->setSortIndicator(column,
                                                        ascending ? Qt::AscendingOrder : Qt::DescendingOrder);
        QCOMPARE(w.model()->index(1, 0).data(CallListModel::NumberRole).toString(), firstNumber);
    }
    QCOMPARE(rig.env.env->settings().value(keys::CallinglistSortOrdering).toList(),
             (QVariantList{identifier, ascending ? 1 : 0}));

    // A new tray, a new window: the same order and indicator.
    rig.tray.reset();
    rig.start();
    CallListWindow& again = rig.window();
    QCOMPARE(again.table()->horizontalHeader()->sortIndicatorSection(), column);
    QCOMPARE(again.table()->horizontalHeader()->sortIndicatorOrder(),
             ascending ? Qt::AscendingOrder : Qt::DescendingOrder);
    QCOMPARE(again.model()->index(1, 0).data(CallListModel::NumberRole).toString(), firstNumber);
}

void TestCallListWindow::deleteCalls_data()
{
    QTest::addColumn<QStringList>("chosen");
    QTest::addColumn<bool>("confirm");
    QTest::addColumn<QString>("left");
    QTest::addColumn<QString>("missedCounter");
    QTest::newRow("confirmed: the missed call goes")
        << QStringList{u"0402"_s} << true << u"0401 0400"_s << u"1"_s;
    QTest::newRow("declined: nothing changes")
        << QStringList{u"0402"_s} << false << u"0402 0401 0400"_s << u"2"_s;
    QTest::newRow("two calls on two days")
        << QStringList{u"0402"_s, u"0400"_s} << true << u"0401"_s << u"0"_s;
}

void TestCallListWindow::deleteCalls()
{
    QFETCH(QStringList, chosen);
    QFETCH(bool, confirm);
    QFETCH(QString, left);
    QFETCH(QString, missedCounter);
    ListRig rig;
    QVERIFY(rig.open());
    rig.call(2, day(1), u"0400"_s);
    rig.call(1, day(2), u"0401"_s);
    rig.call(2, day(3), u"0402"_s);
    rig.start();
    CallListWindow& w = rig.window();
    clickGroup(w, ListQuery::SelectorAll);
    QCOMPARE(w.groups()->counterText(ListQuery::SelectorMissed), u"2"_s);
    int asked = 0;
    w.setConfirmDelete([&](int count) {
        asked = count;
        return confirm;
    });
    for (int i = 0; i < chosen.size(); ++i)
        clickRow(w, rowOfNumber(*w.model(), chosen[i]), i ? Qt::ControlModifier : Qt::NoModifier);
    w.deleteAction()->trigger();
    QCOMPARE(asked, int(chosen.size()));

    QCOMPARE(shownNumbers(*w.model()), left);
    QCOMPARE(w.groups()->counterText(ListQuery::SelectorMissed), missedCounter);
    const int count = w.model()->callCount();
    QCOMPARE(w.groups()->counterText(ListQuery::SelectorAll), QString::number(count));
    QCOMPARE(rig.calls().getCallerlistForProfile(rig.profile(), 0, {}, {}, {}, {}, 0).size(), count);
}

void TestCallListWindow::copyToClipboard_data()
{
    QTest::addColumn<QStringList>("chosen");
    QTest::addColumn<bool>("details");
    QTest::addColumn<QString>("text");
    QTest::newRow("number") << QStringList{u"0409998877"_s} << false << u"0409998877"_s;
    QTest::newRow("details of a named call")
        << QStringList{u"0409998877"_s} << true
        << u"01.03.2026 09:30\nHanna Berg\n0409998877\nKüche\n5550001\n0:05"_s;
    QTest::newRow("details of two calls, as listed")
        << QStringList{u"0409998877"_s, u"0301112233"_s} << true
        << u"02.03.2026 18:05\n\n0301112233\nFlur\n5550001\n0:05\n\n"
           u"01.03.2026 09:30\nHanna Berg\n0409998877\nKüche\n5550001\n0:05"_s;
}

void TestCallListWindow::copyToClipboard()
{
    QFETCH(QStringList, chosen);
    QFETCH(bool, details);
    QFETCH(QString, text);
    ListRig rig;
    QVERIFY(rig.open());
    rig.call(1, day(1, 9, 30), u"0409998877"_s);
    rig.call(3, day(2, 18, 5), u"0301112233"_s, u"Flur"_s);
    QVERIFY(rig.calls().insertCallerWithName(u"Hanna Berg"_s, u"0409998877"_s, u"abid-1"_s, u"mobile"_s));
    rig.start();
    CallListWindow& w = rig.window();
    clickGroup(w, ListQuery::SelectorAll);
    for (int i = 0; i < chosen.size(); ++i)
        clickRow(w, rowOfNumber(*w.model(), chosen[i]), i ? Qt::ControlModifier : Qt::NoModifier);
    QGuiApplication::clipboard()->clear();
    (details ? w.copyDetailsAction() : w.copyNumberAction())->trigger();
    QCOMPARE(QGuiApplication::clipboard()->text(), text);
}

void TestCallListWindow::memoOfACall()
{
    ListRig rig;
    QVERIFY(rig.open());
    const qint64 when = day(1).toSecsSinceEpoch();
    rig.call(2, day(1), u"0409998877"_s);
    rig.call(2, day(2), u"0409998877"_s);
    rig.start();
    CallListWindow& w = rig.window();
    clickGroup(w, ListQuery::SelectorAll);
    auto memoFor = [&](const QDateTime& date) {
        for (int r = 0; r < w.model()->rowCount(); ++r)
            if (w.model()->index(r, 0).data(CallListModel::CallDateRole).toLongLong() ==
                date.toSecsSinceEpoch())
                clickRow(w, r);
        w.memoAction()->trigger();
        return w.findChild<CallMemoDialog*>();
    };
    CallMemoDialog* dialog = memoFor(day(1));
    QVERIFY(dialog);
    dialog->subjectField()->setText(u"Call back"_s);
    dialog->bodyField()->setPlainText(u"About the invoice"_s);
    dialog->accept();
    QVERIFY(QTest::qWaitFor([&w] { return !w.findChild<CallMemoDialog*>(); }));
    const auto memo = rig.calls().memos().memoForCall(rig.profile(), u"0409998877"_s, when);
    QVERIFY(memo);
    QCOMPARE(memo->body, u"About the invoice"_s);

    // The same call opens its memo again; the other call of that number has none.
    dialog = memoFor(day(1));
    QCOMPARE(dialog->subjectField()->text(), u"Call back"_s);
    dialog->bodyField()->setPlainText(u"Paid"_s);
    dialog->accept();
    QVERIFY(QTest::qWaitFor([&w] { return !w.findChild<CallMemoDialog*>(); }));
    QCOMPARE(rig.calls().memos().getMemosForProfile(rig.profile()).size(), 1);
    dialog = memoFor(day(2));
    QCOMPARE(dialog->bodyField()->toPlainText(), QString());
    dialog->reject();
}

void TestCallListWindow::followsNotifications()
{
    ListRig rig;
    QVERIFY(rig.open());
    rig.call(1, day(1), u"0400"_s);
    rig.start();
    CallListWindow& w = rig.window();
    clickGroup(w, ListQuery::SelectorAll);
    QCOMPARE(w.model()->callCount(), 1);
    // A call stored elsewhere (the import, another program) shows once the list is told.
    rig.call(2, day(2), u"0401"_s);
    rig.env.env->notifications().post(Notifications::RELOADCALLINGLIST);
    QTRY_COMPARE(w.model()->callCount(), 2);
    QCOMPARE(w.groups()->counterText(ListQuery::SelectorMissed), u"1"_s);

    // While hidden nothing is read; showing it again brings it up to date.
    w.hide();
    rig.call(2, day(3), u"0402"_s);
    rig.env.env->notifications().post(Notifications::RELOADCALLINGLIST);
    QTest::qWait(0);
    QCoreApplication::processEvents();
    QCOMPARE(w.model()->callCount(), 2);
    rig.tray->openCallList();
    QCOMPARE(w.model()->callCount(), 3);
    QCOMPARE(w.groups()->counterText(ListQuery::SelectorMissed), u"2"_s);
}

void TestCallListWindow::importAndExport()
{
    ListRig rig;
    QVERIFY(rig.open());
    rig.call(1, day(1), u"0400"_s);
    rig.start();
    CallListWindow& w = rig.window();
    clickGroup(w, ListQuery::SelectorMissed);
    QTemporaryDir dir;
    const QString journal = dir.filePath(u"journal.csv"_s);
    QFile file(journal);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("sep=;\nTyp;Datum;Name;Rufnummer;Nebenstelle;Eigene Rufnummer;Dauer\n"
               "2;05.03.26 11:00;;0409998877;Küche;5550001;0:00\n"
               "1;04.03.26 10:00;;0301112233;Küche;5550001;0:12\n"
               "2;03.03.26 09:00;;0307654321;Flur;5550001;0:00\n");
    file.close();

    QSignalSpy finished(&w, &CallListWindow::importFinished);
    QVERIFY(w.importFile(journal));
    QVERIFY(!w.importAction()->isEnabled());
    QVERIFY(finished.wait(20000));
    QCOMPARE(finished.first().first().toInt(), 3);
    QVERIFY(w.importAction()->isEnabled());
    QCOMPARE(shownRows(*w.model()), u"[05.03.2026 1] 0409998877 [03.03.2026 1] 0307654321"_s);
    QCOMPARE(w.groups()->counterText(ListQuery::SelectorAll), u"4"_s);

    // The export writes the list shown: a title line and the missed calls, oldest first.
    const QString out = dir.filePath(u"missed.csv"_s);
    QVERIFY(w.exportToFile(out));
    QFile exported(out);
    QVERIFY(exported.open(QIODevice::ReadOnly));
    const QStringList lines = QString::fromUtf8(exported.readAll()).split(u'\n', Qt::SkipEmptyParts);
    QCOMPARE(lines.size(), 3);
    QVERIFY2(lines[1].contains(u"0307654321"_s) && lines[2].contains(u"0409998877"_s),
             qPrintable(lines.join(u'|')));

    // A saved web page is not a journal: nothing changes.
    const QString bad = dir.filePath(u"login.html"_s);
    QFile notes(bad);
    QVERIFY(notes.open(QIODevice::WriteOnly));
    notes.write("<!DOCTYPE html>\n<html><body>Login</body></html>\n");
    notes.close();
    QVERIFY(w.importFile(bad));
    QVERIFY(finished.wait(20000));
    QCOMPARE(finished.last().first().toInt(), -1);
    QCOMPARE(w.groups()->counterText(ListQuery::SelectorAll), u"4"_s);
}

void TestCallListWindow::statistics()
{
    ListRig rig;
    QVERIFY(rig.open());
    rig.call(1, day(1), u"0400"_s);
    rig.calls().insertCall(
        {rig.profile(), 3, day(2).toSecsSinceEpoch(), u"0401"_s, u"Küche"_s, u"5550001"_s, u"1:10"_s});
    rig.call(2, QDateTime(QDate(2025, 7, 1), QTime(9, 0)), u"0402"_s);
    rig.start();
    CallListWindow& w = rig.window();
    w.statisticsAction()->trigger();
    auto* dialog = w.findChild<CallStatisticsDialog*>();
    QVERIFY(dialog);
    QCOMPARE(dialog->yearBox()->currentText(), u"2026"_s);
    QCOMPARE(dialog->yearBox()->count(), 3); // all years, 2026, 2025
    QTableWidget* t = dialog->table();
    QCOMPARE(t->item(2, CallStatisticsDialog::Calls)->text(), u"2"_s); // March
    QCOMPARE(t->item(2, CallStatisticsDialog::Outgoing)->text(), u"1"_s);
    QCOMPARE(t->item(2, CallStatisticsDialog::TalkTime)->text(), u"1:15"_s);
    QCOMPARE(t->item(6, CallStatisticsDialog::Calls)->text(), u"0"_s); // July 2026
    dialog->yearBox()->setCurrentIndex(0);
    QCOMPARE(t->item(CallStatisticsDialog::TotalRow, CallStatisticsDialog::Calls)->text(), u"3"_s);
    QCOMPARE(t->item(6, CallStatisticsDialog::Missed)->text(), u"1"_s);
    dialog->close();
}

void TestCallListWindow::openedByTheTray_data()
{
    QTest::addColumn<QVariantMap>("globals");
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<bool>("fromMenu");
    QTest::addColumn<bool>("open");
    QTest::newRow("--calllist") << QVariantMap() << QStringList{u"--calllist"_s} << false << true;
    QTest::newRow("shown at start when asked")
        << QVariantMap{{keys::ShowCallinglistOnStart, 1}} << QStringList() << false << true;
    QTest::newRow("not at start otherwise")
        << QVariantMap{{keys::ShowCallinglistOnStart, 0}} << QStringList() << false << false;
    QTest::newRow("the tray menu's item") << QVariantMap() << QStringList() << true << true;
}

void TestCallListWindow::openedByTheTray()
{
    QFETCH(QVariantMap, globals);
    QFETCH(QStringList, arguments);
    QFETCH(bool, fromMenu);
    QFETCH(bool, open);
    ListRig rig;
    QVERIFY(rig.open(globals));
    rig.call(2, day(1), u"0400"_s);
    rig.start(arguments);
    if (fromMenu)
        rig.tray->menu().callListItem()->trigger();
    CallListWindow* w = rig.tray->callListWindow();
    QVERIFY(w);
    QCOMPARE(w->isVisible(), open);
    if (open)
        QCOMPARE(w->model()->callCount(), 1);
}

void TestCallListWindow::addToAddressBook()
{
    {
        ListRig rig; // no address book configured
        QVERIFY(rig.open());
        rig.start();
        rig.call(1, day(2), u"0301234"_s);
        CallListWindow& w = rig.window();
        clickRow(w, rowOfNumber(*w.model(), u"0301234"_s));
        QVERIFY(!w.addContactAction()->isEnabled());
        QVERIFY(w.addContactAction()->toolTip().contains(u"No address book"_s));
    }
    QTemporaryDir dir;
    const QString path = dir.filePath(u"contacts.vcf"_s);
    ListRig rig;
    QVERIFY(rig.open({{keys::AddressBook, path}}));
    rig.start();
    rig.call(1, day(2), u"0301234"_s);
    CallListWindow& w = rig.window();
    clickRow(w, rowOfNumber(*w.model(), u"0301234"_s));
    QVERIFY(w.addContactAction()->isEnabled());
    AddContactDialog* dialog = w.openAddContact();
    QVERIFY(dialog);
    QCOMPARE(dialog->numberField()->text(), u"0301234"_s);
    QVERIFY(!dialog->save()); // neither a name nor a company
    QVERIFY(!QFile::exists(path));
    dialog->firstNameField()->setText(u"Erika"_s);
    dialog->lastNameField()->setText(u"Muster"_s);
    dialog->numberField()->setText(u"+49 30 1234"_s);
    dialog->labelBox()->setCurrentIndex(dialog->labelBox()->findData(u"work"_s));
    dialog->accept();

    // On disk, and the call now shows the contact.
    VCardAddressBook reread(path);
    const auto people = reread.snapshot()->people;
    QCOMPARE(people.size(), 1);
    QCOMPARE(people[0].lastName, u"Muster"_s);
    QCOMPARE(people[0].phones.size(), 1);
    QCOMPARE(people[0].phones[0].label, u"work"_s);
    QCOMPARE(people[0].phones[0].value, u"+49 30 1234"_s);
    const int row = rowOfNumber(*w.model(), u"0301234"_s);
    QTRY_VERIFY(w.model()
                    ->index(row, 0)
                    .data(CallListModel::ContactRole)
                    .toStringList()
                    .value(1)
                    .contains(u"Muster"_s));
    QCOMPARE(rig.calls().searchCallerNameForPhoneNumber(u"0301234"_s).value(0), people[0].uid);
}

void TestCallListWindow::lookUpOnline_data()
{
    QTest::addColumn<QByteArray>("page");
    QTest::addColumn<QString>("name");
    QTest::newRow("found") << QByteArray("<p>Teilnehmer: <b>Erika Muster</b></p>") << u"Erika Muster"_s;
    QTest::newRow("nothing found") << QByteArray("<p>Kein Treffer</p>") << QString();
}

void TestCallListWindow::lookUpOnline()
{
    QFETCH(QByteArray, page);
    QFETCH(QString, name);
    DirectoryServer directory;
    directory.setPage("/search", page);
    directory.startServing();
    ListRig rig;
    QVERIFY(rig.open());
    // The location's own lookup is off; asking explicitly still asks.
    QFile defs(QDir(rig.env.dirs.dataDir()).filePath(ReverseSearchDefinitions::FileName));
    QVERIFY(defs.open(QIODevice::WriteOnly));
    defs.write(u"<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<plist "
               u"version=\"1.0\"><dict><key>ReverseSearch</key><dict>"
               u"<key>0049</key><dict><key>prefix</key><string>0</string><key>url</key><string>%1</string>"
               u"<key>data</key><string>nr=##NUMBER##</string><key>match</"
               u"key><string>&lt;b&gt;([^&lt;]+)&lt;/b&gt;</string>"
               u"</dict></dict></dict></plist>\n"_s.arg(directory.url("/search"))
                   .toUtf8());
    defs.close();
    rig.start();
    rig.call(2, day(2), u"0301234"_s);
    CallListWindow& w = rig.window();
    clickRow(w, rowOfNumber(*w.model(), u"0301234"_s));
    QVERIFY(w.lookUpAction()->isEnabled());
    QSignalSpy finished(&w, &CallListWindow::lookUpFinished);
    w.lookUpAction()->trigger();
    QVERIFY(!w.lookUpAction()->isEnabled()); // one at a time
    QVERIFY(finished.wait(10000));
    QCOMPARE(finished.at(0).at(1).toString(), name);
    QCOMPARE(directory.requests().size(), 1);
    QCOMPARE(directory.requests().at(0).body, QByteArray("nr=0301234"));
    const int row = rowOfNumber(*w.model(), u"0301234"_s);
    QTRY_COMPARE(w.model()->index(row, 0).data(CallListModel::ContactRole).toStringList().value(1), name);
    if (name.isEmpty())
        QCOMPARE(w.statusBar()->currentMessage(), Localization::localized(u"noReverseMatch"_s));
    else
        QCOMPARE(rig.calls().searchCallerNameForPhoneNumber(u"0301234"_s).value(1), name);
}

QTEST_MAIN(TestCallListWindow)
#include "tst_calllistwindow.moc"
