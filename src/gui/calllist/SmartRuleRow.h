#pragma once

#include "calllist/SmartCondition.h"

#include <QWidget>

class QComboBox;
class QLineEdit;
class QToolButton;

// One rule of the smart list editor: the column, a condition fitting the column and, where the
// condition takes one, a value.
class SmartRuleRow : public QWidget
{
    Q_OBJECT
public:
    explicit SmartRuleRow(QWidget* parent = nullptr);

    SmartCondition condition() const;
    void setCondition(const SmartCondition& condition);
    // Why the rule cannot be stored as it stands; empty when it can.
    QString problem() const;
    static bool takesValue(int listcolumn, int condition);

    QComboBox* columnBox() const { return m_column; }
    QComboBox* conditionBox() const { return m_condition; }
    QLineEdit* valueField() const { return m_value; }
    QToolButton* removeButton() const { return m_remove; }

signals:
    void changed();
    void removeRequested();

private:
    void fillConditions();
    void conditionChosen();

    QComboBox* m_column = nullptr;
    QComboBox* m_condition = nullptr;
    QLineEdit* m_value = nullptr;
    QToolButton* m_remove = nullptr;
};
