#pragma once

#include "contacts/CallerCache.h"

class TNCallinglist;

// The caller cache of the call database, for the number lookups.
class CallinglistCallerCache final : public CallerCache
{
public:
    explicit CallinglistCallerCache(TNCallinglist& calls) : m_calls(calls) {}

    QStringList searchCallerNameForPhoneNumber(const QString& number) override;
    void insertCallerWithName(const QString& name, const QString& number, const QString& abid,
                              const QString& label) override;

private:
    TNCallinglist& m_calls;
};
