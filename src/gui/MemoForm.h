#pragma once

#include <QDialog>

class QLabel;
class QLineEdit;
class QPlainTextEdit;

// The form every memo is written in: subject, text, the reason when saving failed, Save and
// Cancel. Subclasses know which call the memo belongs to and how it is stored.
class MemoForm : public QDialog
{
    Q_OBJECT
public:
    QLineEdit* subjectField() const { return m_subject; }
    QPlainTextEdit* bodyField() const { return m_body; }
    // Saves; false (with the reason shown in the form) when it could not.
    virtual bool save() = 0;
    void accept() override;

protected:
    explicit MemoForm(QWidget* parent);
    // Lays the fields out, under a line naming the call when one is given.
    void layOut(const QString& callLabel, const QString& callText);
    void showError(const QString& text);

private:
    QLineEdit* m_subject;
    QPlainTextEdit* m_body;
    QLabel* m_error;
};
