#pragma once

#include <QString>
#include <QStringList>

// The call database's cache of caller names, as the number lookups need it. The call database
// implements it; keyed by the number exactly as stored.
class CallerCache
{
public:
    virtual ~CallerCache() = default;

    // [abid, name, label] of the row for this number, or an empty list.
    virtual QStringList searchCallerNameForPhoneNumber(const QString& number) = 0;
    // Replaces any earlier row for the number.
    virtual void insertCallerWithName(const QString& name, const QString& number, const QString& abid,
                                      const QString& label) = 0;
};
