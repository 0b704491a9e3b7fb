#include "SmartRuleRow.h"

#include "base/Localization.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QRegularExpression>
#include <QStyle>
#include <QToolButton>

SmartRuleRow::SmartRuleRow(QWidget* parent) : QWidget(parent)
{
    m_column = new QComboBox(this);
    m_column->addItem(tr("Date"), Smart::ColumnDate);
    m_column->addItem(tr("Name"), Smart::ColumnName);
    m_column->addItem(tr("Number"), Smart::ColumnNumber);
    m_column->addItem(tr("Extension"), Smart::ColumnExtension);
    m_column->addItem(tr("Line"), Smart::ColumnLine);
    m_column->addItem(tr("Duration"), Smart::ColumnDuration);
    m_column->addItem(tr("Call type"), Smart::ColumnCallType);
    m_condition = new QComboBox(this);
    m_value = new QLineEdit(this);
    m_remove = new QToolButton(this);
    m_remove->setText(QStringLiteral("−"));
    m_remove->setToolTip(tr("Remove this rule"));

    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->addWidget(m_column);
    row->addWidget(m_condition);
    row->addWidget(m_value, 1);
    row->addWidget(m_remove);

    fillConditions();
    conditionChosen();
    connect(m_column, &QComboBox::currentIndexChanged, this, [this] {
        fillConditions();
        conditionChosen();
        emit changed();
    });
    connect(m_condition, &QComboBox::currentIndexChanged, this, [this] {
        conditionChosen();
        emit changed();
    });
    connect(m_value, &QLineEdit::textChanged, this, &SmartRuleRow::changed);
    connect(m_remove, &QToolButton::clicked, this, &SmartRuleRow::removeRequested);
}

bool SmartRuleRow::takesValue(int listcolumn, int condition)
{
    if (listcolumn == Smart::ColumnCallType)
        return false;
    if (listcolumn == Smart::ColumnDate)
        return condition >= Smart::DayOfMonth;
    return true;
}

void SmartRuleRow::fillConditions()
{
    const int column = m_column->currentData().toInt();
    const QSignalBlocker block(m_condition);
    m_condition->clear();
    for (int code = 0;; ++code) {
        const QString key = Smart::conditionKey(column, code);
        if (key.isEmpty())
            break;
        m_condition->addItem(Localization::localized(key), code);
    }
}

void SmartRuleRow::conditionChosen()
{
    const int column = m_column->currentData().toInt();
    const int condition = m_condition->currentData().toInt();
    m_value->setVisible(takesValue(column, condition));
    QString hint;
    if (column == Smart::ColumnDate) {
        switch (condition) {
        case Smart::DayOfMonth:
            hint = tr("day, 1–31");
            break;
        case Smart::Month:
            hint = tr("month, 1–12");
            break;
        case Smart::Year:
            hint = tr("year, e.g. 2026");
            break;
        case Smart::LastDays:
        case Smart::DaysAgo:
            hint = tr("number of days");
            break;
        default:
            break;
        }
    }
    m_value->setPlaceholderText(hint);
}

SmartCondition SmartRuleRow::condition() const
{
    const int column = m_column->currentData().toInt();
    const int condition = m_condition->currentData().toInt();
    // Dates are compared as numbers; text rules keep what was typed, blanks included.
    QString value;
    if (takesValue(column, condition))
        value = column == Smart::ColumnDate ? m_value->text().trimmed() : m_value->text();
    return {column, condition, value};
}

void SmartRuleRow::setCondition(const SmartCondition& c)
{
    const int columnIndex = m_column->findData(c.listcolumn);
    m_column->setCurrentIndex(std::max(columnIndex, 0));
    const int conditionIndex = m_condition->findData(c.condition);
    m_condition->setCurrentIndex(std::max(conditionIndex, 0));
    m_value->setText(c.condvalue);
}

QString SmartRuleRow::problem() const
{
    const SmartCondition c = condition();
    if (c.listcolumn != Smart::ColumnDate || !takesValue(c.listcolumn, c.condition))
        return {};
    bool ok = false;
    const int n = c.condvalue.toInt(&ok);
    switch (c.condition) {
    case Smart::DayOfMonth:
        return ok && n >= 1 && n <= 31 ? QString() : tr("The day must be a number from 1 to 31.");
    case Smart::Month:
        return ok && n >= 1 && n <= 12 ? QString() : tr("The month must be a number from 1 to 12.");
    case Smart::Year:
        return QRegularExpression(QStringLiteral("^[0-9]{4}$")).match(c.condvalue).hasMatch()
                   ? QString()
                   : tr("The year must have four digits.");
    default:
        return ok && n >= 1 ? QString() : tr("The number of days must be a positive number.");
    }
}
