#pragma once

#include "MemoForm.h"

#include "calllist/CallRow.h"

class TNCallinglist;

// The memo of a call in the call list: opens the memo written earlier about that call, if
// any, and saves changes to it, or stores a new one for the call's number and time.
class CallMemoDialog : public MemoForm
{
    Q_OBJECT
public:
    CallMemoDialog(TNCallinglist& calls, int profile, const CallRow& call, const QString& dateText,
                   QWidget* parent = nullptr);

    // The memo's id once it exists, else 0.
    qint64 memoID() const { return m_memoID; }
    bool save() override;

private:
    TNCallinglist& m_calls;
    int m_profile;
    CallRow m_call;
    qint64 m_memoID = 0;
};
