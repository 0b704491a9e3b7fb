#pragma once

#include "calllist/CallRow.h"

#include <QDialog>

class QLabel;
class QLineEdit;
class QPlainTextEdit;
class TNCallinglist;

// The memo of a call in the call list: opens the memo written earlier about that call, if
// any, and saves changes to it, or stores a new one for the call's number and time.
class CallMemoDialog : public QDialog
{
    Q_OBJECT
public:
    CallMemoDialog(TNCallinglist& calls, int profile, const CallRow& call, const QString& dateText,
                   QWidget* parent = nullptr);

    QLineEdit* subjectField() const { return m_subject; }
    QPlainTextEdit* bodyField() const { return m_body; }
    // The memo's id once it exists, else 0.
    qint64 memoID() const { return m_memoID; }
    // False (with the reason shown) when the database refused it.
    bool save();

    void accept() override;

private:
    TNCallinglist& m_calls;
    int m_profile;
    CallRow m_call;
    qint64 m_memoID = 0;
    QLineEdit* m_subject = nullptr;
    QPlainTextEdit* m_body = nullptr;
    QLabel* m_error = nullptr;
};
