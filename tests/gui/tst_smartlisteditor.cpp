// The smart list editor and the side list's smart list actions, on a real call database.
#include "GuiFixture.h"

#include "TrayApplication.h"
#include "calllist/CallListGroups.h"
#include "calllist/CallListModel.h"
#include "calllist/CallListWindow.h"
#include "calllist/SmartListEditor.h"
#include "calllist/SmartRuleRow.h"

#include "calllist/ListQueryBuilder.h"
#include "calllist/TNCallinglist.h"

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <QToolButton>

using namespace Qt::StringLiterals;

namespace {
struct Rig : GuiTray
{
    bool start()
    {
        if (!env.open({{u"L1"_s, GuiEnv::location(u"Home"_s, 1, 0)}}, u"L1"_s))
            return false;
        GuiTray::start();
        return true;
    }
    TNCallinglist& calls() { return *env.env->callinglist(); }
    int profile() { return env.env->manager().currentPreferences()->activeProfileInt; }
    void call(int state, const QString& number)
    {
        calls().insertCall({profile(), state, QDateTime(QDate(2026, 3, 2), QTime(10, 0)).toSecsSinceEpoch(),
                            number, u"Küche"_s, u"5550001"_s, u"0:05"_s});
    }
    CallListWindow& window()
    {
        tray->openCallList();
        return *tray->callListWindow();
    }
};

void choose(QComboBox* box, int code)
{
    box->setCurrentIndex(box->findData(code));
}

void setRule(SmartRuleRow* rule, int column, int condition, const QString& value = {})
{
    choose(rule->columnBox(), column);
    choose(rule->conditionBox(), condition);
    rule->valueField()->setText(value);
}

// Selector of the side-list entry with that title, -1 when there is none.
int selectorNamed(const CallListGroups& groups, const QString& title)
{
    for (int i = 0; i < groups.topLevelItemCount(); ++i)
        if (groups.topLevelItem(i)->text(CallListGroups::Title) == title)
            return groups.selectorAt(i);
    return -1;
}
} // namespace

class TestSmartListEditor : public QObject
{
    Q_OBJECT
private slots:
    void createEditDelete();
    void dateValues_data();
    void dateValues();
    void valueFieldOnlyWhereNeeded_data();
    void valueFieldOnlyWhereNeeded();
};

void TestSmartListEditor::createEditDelete()
{
    Rig rig;
    QVERIFY(rig.start());
    rig.call(2, u"0301111"_s);
    rig.call(1, u"0302222"_s);
    rig.call(3, u"0302222"_s);
    rig.call(1, u"0303333"_s);
    CallListWindow& w = rig.window();

    // New: number contains 2222, or a missed call.
    SmartListEditor* editor = w.openSmartListEditor(0);
    QVERIFY(editor);
    editor->nameField()->setText(u"Mixed"_s);
    setRule(editor->rules().at(0), Smart::ColumnNumber, Smart::Contains, u"2222"_s);
    editor->addRuleButton()->click();
    QCOMPARE(editor->rules().size(), 2);
    setRule(editor->rules().at(1), Smart::ColumnCallType, Smart::TypeMissed);
    QCOMPARE(editor->refreshCount(), 0); // both must hold by default
    choose(editor->matchBox(), true);
    QCOMPARE(editor->refreshCount(), 3);
    QCOMPARE(editor->countLabel()->text(), u"3 matching calls"_s);
    QVERIFY(editor->saveButton()->isEnabled());
    editor->saveButton()->click();
    const qint64 id = editor->listID();
    QVERIFY(id > 0);

    QTRY_VERIFY(selectorNamed(*w.groups(), u"Mixed"_s) >= ListQuery::SelectorFirstSmartList);
    const int selector = selectorNamed(*w.groups(), u"Mixed"_s);
    QCOMPARE(w.smartListIDForSelector(selector), id);
    QTRY_COMPARE(w.groups()->counterText(selector), u"3"_s);
    QVERIFY(w.selectGroup(selector));
    QCOMPARE(w.model()->callCount(), 3);

    // Edit: comes back as stored, then drop the missed rule.
    editor = w.openSmartListEditor(id);
    QCOMPARE(editor->nameField()->text(), u"Mixed"_s);
    QCOMPARE(editor->matchBox()->currentData().toBool(), true);
    QCOMPARE(editor->rules().size(), 2);
    QCOMPARE(editor->rules().at(0)->condition(),
             (SmartCondition{Smart::ColumnNumber, Smart::Contains, u"2222"_s}));
    QCOMPARE(editor->rules().at(1)->condition(),
             (SmartCondition{Smart::ColumnCallType, Smart::TypeMissed, {}}));
    editor->rules().at(1)->removeButton()->click();
    QCOMPARE(editor->rules().size(), 1);
    QVERIFY(!editor->rules().at(0)->removeButton()->isEnabled()); // the last rule stays
    editor->nameField()->setText(u"Two"_s);
    editor->saveButton()->click();
    QCOMPARE(editor->listID(), id);
    QTRY_COMPARE(w.groups()->counterText(selectorNamed(*w.groups(), u"Two"_s)), u"2"_s);
    QCOMPARE(selectorNamed(*w.groups(), u"Mixed"_s), -1);

    // Delete: refused first, then confirmed.
    QString asked;
    bool answer = false;
    w.setConfirmSmartListDelete([&](const QString& name) {
        asked = name;
        return answer;
    });
    QVERIFY(!w.deleteSmartList(selector));
    QCOMPARE(asked, u"Two"_s);
    QVERIFY(rig.calls().smartLists().smartListForID(id));
    answer = true;
    QVERIFY(w.deleteSmartList(selector));
    QCOMPARE(selectorNamed(*w.groups(), u"Two"_s), -1);
    QVERIFY(rig.calls().smartLists().getSmartConditionsForID(id).isEmpty());
    QCOMPARE(w.groups()->currentSelector(), int(ListQuery::SelectorAll));
}

void TestSmartListEditor::dateValues_data()
{
    QTest::addColumn<int>("condition");
    QTest::addColumn<QString>("value");
    QTest::addColumn<bool>("valid");
    QTest::newRow("day 31") << int(Smart::DayOfMonth) << u"31"_s << true;
    QTest::newRow("day 0") << int(Smart::DayOfMonth) << u"0"_s << false;
    QTest::newRow("day 32") << int(Smart::DayOfMonth) << u"32"_s << false;
    QTest::newRow("month 12") << int(Smart::Month) << u"12"_s << true;
    QTest::newRow("month 13") << int(Smart::Month) << u"13"_s << false;
    QTest::newRow("year 2026") << int(Smart::Year) << u"2026"_s << true;
    QTest::newRow("year 26") << int(Smart::Year) << u"26"_s << false;
    QTest::newRow("last days 7") << int(Smart::LastDays) << u"7"_s << true;
    QTest::newRow("last days 0") << int(Smart::LastDays) << u"0"_s << false;
    QTest::newRow("days ago empty") << int(Smart::DaysAgo) << QString() << false;
    QTest::newRow("days ago text") << int(Smart::DaysAgo) << u"three"_s << false;
}

void TestSmartListEditor::dateValues()
{
    QFETCH(int, condition);
    QFETCH(QString, value);
    QFETCH(bool, valid);
    Rig rig;
    QVERIFY(rig.start());
    SmartListEditor editor(rig.calls(), rig.profile());
    editor.nameField()->setText(u"Dates"_s);
    setRule(editor.rules().at(0), Smart::ColumnDate, condition, value);
    QCOMPARE(editor.saveButton()->isEnabled(), valid);
    const int before = int(rig.calls().smartLists().smartListsForProfile(rig.profile()).size());
    QCOMPARE(editor.save(), valid);
    QCOMPARE(int(rig.calls().smartLists().smartListsForProfile(rig.profile()).size()),
             before + (valid ? 1 : 0));
    QCOMPARE(editor.refreshCount() >= 0, valid);
}

void TestSmartListEditor::valueFieldOnlyWhereNeeded_data()
{
    QTest::addColumn<int>("column");
    QTest::addColumn<int>("condition");
    QTest::addColumn<bool>("shown");
    QTest::newRow("today") << int(Smart::ColumnDate) << int(Smart::Today) << false;
    QTest::newRow("this year") << int(Smart::ColumnDate) << int(Smart::CurrentYear) << false;
    QTest::newRow("last days") << int(Smart::ColumnDate) << int(Smart::LastDays) << true;
    QTest::newRow("missed") << int(Smart::ColumnCallType) << int(Smart::TypeMissed) << false;
    QTest::newRow("name is not") << int(Smart::ColumnName) << int(Smart::IsNot) << true;
}

void TestSmartListEditor::valueFieldOnlyWhereNeeded()
{
    QFETCH(int, column);
    QFETCH(int, condition);
    QFETCH(bool, shown);
    SmartRuleRow rule;
    rule.valueField()->setText(u"5"_s);
    setRule(&rule, column, condition, u"5"_s);
    QCOMPARE(!rule.valueField()->isHidden(), shown);
    // A value left in a hidden field is not stored.
    QCOMPARE(rule.condition().condvalue, shown ? u"5"_s : QString());
}

QTEST_MAIN(TestSmartListEditor)
#include "tst_smartlisteditor.moc"
