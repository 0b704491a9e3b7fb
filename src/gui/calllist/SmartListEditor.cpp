#include "SmartListEditor.h"

#include "SmartRuleRow.h"

#include "base/NotificationCenter.h"
#include "base/NotificationNames.h"
#include "calllist/TNCallinglist.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QThreadPool>
#include <QTimer>
#include <QToolButton>
#include <QVBoxLayout>

namespace {
// Typing pauses this long before the calls are counted again.
constexpr int CountDelayMs = 200;
} // namespace

SmartListEditor::SmartListEditor(TNCallinglist& calls, int profile, qint64 id, QWidget* parent)
    : QDialog(parent), m_calls(calls), m_profile(profile), m_id(id)
{
    setWindowTitle(id > 0 ? tr("Edit smart list") : tr("New smart list"));
    m_name = new QLineEdit(this);
    m_match = new QComboBox(this);
    m_match->addItem(tr("all rules"), false);
    m_match->addItem(tr("any rule"), true);
    m_ruleBox = new QVBoxLayout;
    m_addRule = new QPushButton(tr("Add rule"), this);
    m_count = new QLabel(this);
    m_error = new QLabel(this);
    m_error->setWordWrap(true);
    m_error->setStyleSheet(QStringLiteral("color: #b00020"));
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Save | QDialogButtonBox::Cancel, this);
    m_save = buttons->button(QDialogButtonBox::Save);

    auto* form = new QFormLayout;
    form->addRow(tr("Name:"), m_name);
    form->addRow(tr("Calls matching:"), m_match);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(form);
    layout->addLayout(m_ruleBox);
    auto* addRow = new QHBoxLayout;
    addRow->addWidget(m_addRule);
    addRow->addStretch(1);
    addRow->addWidget(m_count);
    layout->addLayout(addRow);
    layout->addWidget(m_error);
    layout->addStretch(1);
    layout->addWidget(buttons);

    m_countTimer = new QTimer(this);
    m_countTimer->setSingleShot(true);
    m_countTimer->setInterval(CountDelayMs);
    connect(m_countTimer, &QTimer::timeout, this, &SmartListEditor::refreshCount);
    connect(buttons, &QDialogButtonBox::accepted, this, &SmartListEditor::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &SmartListEditor::reject);
    connect(m_addRule, &QPushButton::clicked, this, [this] {
        addRule({Smart::ColumnName, Smart::Contains, {}});
    });
    connect(m_name, &QLineEdit::textChanged, this, &SmartListEditor::changed);
    connect(m_match, &QComboBox::currentIndexChanged, this, &SmartListEditor::changed);

    QList<SmartCondition> stored;
    if (id > 0) {
        if (const auto list = calls.smartLists().smartListForID(id))
            m_name->setText(list->name);
        stored = calls.smartLists().getSmartConditionsForID(id);
        // Read newest first: back into the order they were entered.
        std::reverse(stored.begin(), stored.end());
    }
    bool any = false;
    for (const SmartCondition& c : stored) {
        if (c.listcolumn == Smart::ColumnMatchAny)
            any = true;
        else
            addRule(c);
    }
    m_match->setCurrentIndex(any ? 1 : 0);
    if (m_rules.isEmpty())
        addRule({Smart::ColumnDate, Smart::Today, {}});
    refreshCount();
    resize(560, sizeHint().height());
}

SmartRuleRow* SmartListEditor::addRule(const SmartCondition& condition)
{
    auto* rule = new SmartRuleRow(this);
    rule->setCondition(condition);
    m_rules.append(rule);
    m_ruleBox->addWidget(rule);
    connect(rule, &SmartRuleRow::changed, this, &SmartListEditor::changed);
    connect(rule, &SmartRuleRow::removeRequested, this, [this, rule] { removeRule(rule); });
    changed();
    return rule;
}

void SmartListEditor::removeRule(SmartRuleRow* rule)
{
    if (m_rules.size() <= 1)
        return;
    m_rules.removeOne(rule);
    rule->deleteLater();
    changed();
}

void SmartListEditor::changed()
{
    // The last rule stays: a list without rules would only repeat "All calls".
    for (SmartRuleRow* rule : m_rules)
        rule->removeButton()->setEnabled(m_rules.size() > 1);
    const QString why = problem();
    m_error->setText(why);
    m_save->setEnabled(why.isEmpty());
    m_countTimer->start();
}

QList<SmartCondition> SmartListEditor::conditions() const
{
    QList<SmartCondition> list;
    if (m_match->currentData().toBool())
        list.append({Smart::ColumnMatchAny, 1, QString()});
    for (const SmartRuleRow* rule : m_rules)
        list.append(rule->condition());
    return list;
}

QString SmartListEditor::problem() const
{
    for (const SmartRuleRow* rule : m_rules)
        if (const QString why = rule->problem(); !why.isEmpty())
            return why;
    if (m_name->text().trimmed().isEmpty())
        return tr("The smart list needs a name.");
    return {};
}

qint64 SmartListEditor::refreshCount()
{
    m_countTimer->stop();
    for (const SmartRuleRow* rule : m_rules)
        if (!rule->problem().isEmpty()) {
            m_count->setText(tr("no count yet"));
            return -1;
        }
    const qint64 count = m_calls.smartCallsCounterForConditions(m_profile, conditions());
    m_count->setText(count == 1 ? tr("1 matching call") : tr("%1 matching calls").arg(count));
    return count;
}

bool SmartListEditor::save()
{
    if (const QString why = problem(); !why.isEmpty()) {
        m_error->setText(why);
        return false;
    }
    const QString name = m_name->text().trimmed();
    bool ok = false;
    if (m_id > 0) {
        ok = m_calls.updateSmartListForProfile(m_profile, name, conditions(), m_id);
    } else {
        m_id = m_calls.insertSmartListForProfile(m_profile, name, conditions());
        ok = m_id > 0;
    }
    if (!ok) {
        m_error->setText(tr("The smart list could not be saved: the call database refused it."));
        return false;
    }
    // Counted off the main thread; the side list follows "UPDATESIDETABLE".
    QPointer<TNCallinglist> calls(&m_calls);
    const int profile = m_profile;
    QThreadPool::globalInstance()->start([calls, profile] {
        if (!calls)
            return;
        calls->refreshCallsCounterForProfile(profile);
        calls->notificationCenter().post(Notifications::UPDATESIDETABLE, calls.data());
    });
    return true;
}

void SmartListEditor::accept()
{
    if (save())
        QDialog::accept();
}
