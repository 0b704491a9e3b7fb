#include "calllist/CallinglistCallerCache.h"

#include "calllist/TNCallinglist.h"

QStringList CallinglistCallerCache::searchCallerNameForPhoneNumber(const QString& number)
{
    return m_calls.searchCallerNameForPhoneNumber(number);
}

void CallinglistCallerCache::insertCallerWithName(const QString& name, const QString& number, const QString& abid,
                                                  const QString& label)
{
    m_calls.insertCallerWithName(name, number, abid, label);
}
