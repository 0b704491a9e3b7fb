#pragma once

#include "MemoForm.h"

class StreamListener;
class TNCallinglist;

// The memo of one call in the call monitor. Saving the first time stores a new memo and ties it
// to the call; later saves during the same run change that memo.
class MemoEditor : public MemoForm
{
    Q_OBJECT
public:
    MemoEditor(StreamListener& listener, TNCallinglist& calls, int profile, const QString& uid,
               QWidget* parent = nullptr);

    bool save() override;

private:
    StreamListener& m_listener;
    TNCallinglist& m_calls;
    int m_profile;
    QString m_uid;
};
