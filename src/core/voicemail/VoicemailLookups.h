#pragma once

#include <QDateTime>
#include <QString>
#include <QStringList>

// What the voicemail lists need from other subsystems. The call database keeps the marker dates
// that tell new entries from seen ones; contacts resolve a caller's number to a name. Both are
// wired in by the composition root; without them entries are all new and callers unknown.
class VoicemailMarkerStore
{
public:
    virtual ~VoicemailMarkerStore() = default;
    virtual QDateTime lastSavedVoicemailDate() = 0;
    virtual void setLastSavedVoicemailDate(const QDateTime& date) = 0;
    virtual QDateTime lastSavedFaxDate() = 0;
    virtual void setLastSavedFaxDate(const QDateTime& date) = 0;
};

class CallerNameLookup
{
public:
    virtual ~CallerNameLookup() = default;
    // [abid, name, label]; ["", "", ""] when unknown.
    virtual QStringList searchNameForPhonenumber(const QString& number) = 0;
};

inline QStringList emptyContact()
{
    return {QString(), QString(), QString()};
}
