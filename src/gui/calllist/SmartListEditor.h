#pragma once

#include "calllist/SmartCondition.h"

#include <QDialog>

class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QTimer;
class QVBoxLayout;
class SmartRuleRow;
class TNCallinglist;

// Creates or edits a smart list of one profile: its name, whether all or any rule must hold,
// the rules, and how many calls match them now. Saving stores the list and has the side list's
// counters counted again.
class SmartListEditor : public QDialog
{
    Q_OBJECT
public:
    // id 0 makes a new list.
    SmartListEditor(TNCallinglist& calls, int profile, qint64 id = 0, QWidget* parent = nullptr);

    // The stored list's id; 0 until a new list was saved.
    qint64 listID() const { return m_id; }
    QLineEdit* nameField() const { return m_name; }
    QComboBox* matchBox() const { return m_match; }
    QPushButton* addRuleButton() const { return m_addRule; }
    QPushButton* saveButton() const { return m_save; }
    QLabel* countLabel() const { return m_count; }
    QList<SmartRuleRow*> rules() const { return m_rules; }

    // The rules as stored, the match-any row first when any rule suffices.
    QList<SmartCondition> conditions() const;
    // Why the list cannot be saved as it stands; empty when it can.
    QString problem() const;
    // Counts the calls matching the rules now; -1 while a rule is invalid.
    qint64 refreshCount();
    bool save();

public slots:
    void accept() override;

private:
    SmartRuleRow* addRule(const SmartCondition& condition);
    void removeRule(SmartRuleRow* rule);
    void changed();

    TNCallinglist& m_calls;
    int m_profile;
    qint64 m_id;
    QLineEdit* m_name = nullptr;
    QComboBox* m_match = nullptr;
    QVBoxLayout* m_ruleBox = nullptr;
    QList<SmartRuleRow*> m_rules;
    QPushButton* m_addRule = nullptr;
    QLabel* m_count = nullptr;
    QLabel* m_error = nullptr;
    QPushButton* m_save = nullptr;
    QTimer* m_countTimer = nullptr;
};
