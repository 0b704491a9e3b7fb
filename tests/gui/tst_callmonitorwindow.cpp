#include "GuiFixture.h"

#include "CallMonitorWindow.h"
#include "MemoEditor.h"
#include "TrayApplication.h"
#include "TrayMenu.h"
#include "app/CallMonitorService.h"

#include "base/TNPreferencesManager.h"
#include "calllist/TNCallinglist.h"
#include "monitor/StreamListener.h"

#include <QJsonDocument>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QTest>
#include <QTreeWidget>

using namespace Qt::StringLiterals;

// The tray against the simulator's call monitor port, with the test address book.
struct MonitorRig
{
    SimulatorProcess sim;
    GuiEnv env;
    RecordingPresenter presenter;
    std::unique_ptr<TrayApplication> tray;

    bool start(bool notifications)
    {
        if (!sim.isRunning())
            return false;
        QVariantMap home = GuiEnv::location(u"Home"_s, 1, sim.port(u"monitor"_s));
        home.insert(u"showUserNC"_s, notifications);
        if (!env.open({{u"L1"_s, home}}, u"L1"_s, {{u"AddressBook"_s, GuiEnv::addressBook()}}))
            return false;
        TrayApplication::Options options;
        options.presenter = &presenter;
        options.headless = true;
        tray = std::make_unique<TrayApplication>(*env.env, options);
        tray->start({});
        return QTest::qWaitFor([this] { return tray->callMonitor().listener().isConnected(); }, 10000) &&
               GuiEnv::waitForMonitorClient(sim);
    }

    bool post(const QString& what, const QVariantMap& body)
    {
        return !sim.control("POST", u"/_sim/monitor/"_s + what, QJsonDocument::fromVariant(body).toJson())
                    .isNull();
    }

    QTreeWidget* table() { return tray->monitorWindow().table(); }
    QString cell(int column) const
    {
        auto* t = tray->monitorWindow().table();
        return t->topLevelItemCount() ? t->topLevelItem(0)->text(column) : QString();
    }
};

class TestCallMonitorWindow : public QObject
{
    Q_OBJECT
private slots:
    void ringShowsCaller_data();
    void ringShowsCaller();
    void connectedCallRunsAndEnds();
    void memoIsInsertedOnceThenUpdated();
    void windowOpensWithoutNotifications();
};

void TestCallMonitorWindow::ringShowsCaller_data()
{
    QTest::addColumn<QString>("caller");
    QTest::addColumn<QString>("number");
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("subtitle");
    QTest::newRow("caller in the address book")
        << u"0301234567"_s << u"← 0301234567"_s << u"Jürgen Müller - Bäckerei Müller GmbH (Other)"_s
        << u"Jürgen Müller - Bäckerei Müller GmbH"_s;
    QTest::newRow("number not in the book")
        << u"0409998877"_s << u"← 0409998877"_s << QString() << u"Unknown caller"_s;
    QTest::newRow("withheld number") << QString() << u"← withheld"_s << QString() << u"Number withheld"_s;
}

void TestCallMonitorWindow::ringShowsCaller()
{
    QFETCH(QString, caller);
    MonitorRig rig;
    QVERIFY2(rig.start(true), qPrintable(rig.sim.error()));
    rig.tray->menu().monitorWindowItem()->trigger();

    QVERIFY(rig.post(u"ring"_s, {{u"caller"_s, caller}, {u"called"_s, u"5550000"_s}}));
    QTRY_COMPARE(rig.table()->topLevelItemCount(), 1);
    QCOMPARE(rig.cell(CallMonitorWindow::State), u"Ringing"_s);
    QTEST(rig.cell(CallMonitorWindow::Number), "number");
    QTEST(rig.cell(CallMonitorWindow::Name), "name");
    QCOMPARE(rig.cell(CallMonitorWindow::Line), u"5550000"_s);
    QCOMPARE(rig.presenter.notes.size(), 1);
    QTEST(rig.presenter.notes.first().subtitle, "subtitle");
}

void TestCallMonitorWindow::connectedCallRunsAndEnds()
{
    MonitorRig rig;
    QVERIFY2(rig.start(true), qPrintable(rig.sim.error()));
    rig.tray->openCallmonitorWindow();
    QVERIFY(
        rig.post(u"ring"_s, {{u"caller"_s, u"0301234567"_s}, {u"called"_s, u"5550000"_s}, {u"connID"_s, 3}}));
    QVERIFY(rig.post(u"connect"_s, {{u"connID"_s, 3}, {u"extension"_s, u"10"_s}}));
    QTRY_COMPARE(rig.cell(CallMonitorWindow::State), u"Connected"_s);
    // DECT handset 10 is extension 610 in the router's list.
    QCOMPARE(rig.cell(CallMonitorWindow::Extension), u"Handset"_s);
    QTRY_VERIFY_WITH_TIMEOUT(rig.cell(CallMonitorWindow::Duration) >= u"00:00:01"_s, 4000);

    QVERIFY(rig.post(u"disconnect"_s, {{u"connID"_s, 3}, {u"duration"_s, 75}}));
    QTRY_COMPARE(rig.cell(CallMonitorWindow::State), u"Ended"_s);
    QCOMPARE(rig.cell(CallMonitorWindow::Duration), u"00:01:15"_s);
    QCOMPARE(rig.table()->topLevelItemCount(), 1);
}

void TestCallMonitorWindow::memoIsInsertedOnceThenUpdated()
{
    MonitorRig rig;
    QVERIFY2(rig.start(true), qPrintable(rig.sim.error()));
    QVERIFY(
        rig.post(u"ring"_s, {{u"caller"_s, u"0301234567"_s}, {u"called"_s, u"5550000"_s}, {u"connID"_s, 1}}));
    QVERIFY(rig.post(u"connect"_s, {{u"connID"_s, 1}, {u"extension"_s, u"1"_s}}));
    StreamListener& listener = rig.tray->callMonitor().listener();
    QTRY_COMPARE(listener.monitorCalls().size(), qsizetype(1));
    const QString uid = listener.monitorCalls().first().UID;
    TNCallinglist& calls = *rig.env.env->callinglist();

    {
        MemoEditor editor(listener, calls, 1, uid);
        editor.subjectField()->setText(u"Bread order"_s);
        editor.bodyField()->setPlainText(u"Two loaves"_s);
        QVERIFY(editor.save());
    }
    {
        // Reopened during the same call: shows the memo and changes it.
        MemoEditor editor(listener, calls, 1, uid);
        QCOMPARE(editor.subjectField()->text(), u"Bread order"_s);
        editor.bodyField()->setPlainText(u"Three loaves"_s);
        QVERIFY(editor.save());
    }
    const QList<Memo> memos = calls.memos().getMemosForProfile(1);
    QCOMPARE(memos.size(), qsizetype(1));
    QCOMPARE(memos.first().body, u"Three loaves"_s);
    QCOMPARE(memos.first().phonenumber, u"0301234567"_s);

    // At the end of the call the record carries the memo's text.
    QVERIFY(rig.post(u"disconnect"_s, {{u"connID"_s, 1}}));
    QTRY_COMPARE(listener.monitorCalls().first().cmd, u"DISCONNECT"_s);
    QCOMPARE(listener.monitorCalls().first().MemoBody, u"Three loaves"_s);
}

void TestCallMonitorWindow::windowOpensWithoutNotifications()
{
    MonitorRig rig;
    QVERIFY2(rig.start(false), qPrintable(rig.sim.error()));
    QVERIFY(!rig.tray->monitorWindow().isVisible());
    QVERIFY(rig.post(u"ring"_s, {{u"caller"_s, u"0301234567"_s}, {u"called"_s, u"5550000"_s}}));
    QTRY_VERIFY(rig.tray->monitorWindow().isVisible());
    QTRY_COMPARE(rig.table()->topLevelItemCount(), 1);
    QVERIFY(rig.presenter.notes.isEmpty());
}

QTEST_MAIN(TestCallMonitorWindow)
#include "tst_callmonitorwindow.moc"
