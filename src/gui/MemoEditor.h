#pragma once

#include <QDialog>

class QLineEdit;
class QPlainTextEdit;
class StreamListener;
class TNCallinglist;

// The memo of one call in the call monitor: subject and text. Saving the first time stores a
// new memo and ties it to the call; later saves during the same run change that memo.
class MemoEditor : public QDialog
{
    Q_OBJECT
public:
    MemoEditor(StreamListener& listener, TNCallinglist& calls, int profile, const QString& uid,
               QWidget* parent = nullptr);

    QLineEdit* subjectField() const { return m_subject; }
    QPlainTextEdit* bodyField() const { return m_body; }
    // Saves; false (with the reason shown in the dialog) when it could not.
    bool save();

    void accept() override;

private:
    StreamListener& m_listener;
    TNCallinglist& m_calls;
    int m_profile;
    QString m_uid;
    QLineEdit* m_subject = nullptr;
    QPlainTextEdit* m_body = nullptr;
    class QLabel* m_error = nullptr;
};
