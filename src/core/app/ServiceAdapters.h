#pragma once

#include "contacts/CallerCache.h"
#include "monitor/CallerNameResolver.h"
#include "voicemail/VoicemailLookups.h"

class TNCallinglist;
class TNPreferencesManager;
class ContactsServices;

// The seams between subsystems, joined at the composition root: the call database serves the
// caller cache and the voicemail markers; contacts name the callers for the call monitor and the
// voicemail list.

class DatabaseCallerCache final : public CallerCache
{
public:
    explicit DatabaseCallerCache(TNCallinglist& db) : m_db(db) {}
    QStringList searchCallerNameForPhoneNumber(const QString& number) override;
    void insertCallerWithName(const QString& name, const QString& number, const QString& abid,
                              const QString& label) override;

private:
    TNCallinglist& m_db;
};

// The markers of the current location's profile.
class DatabaseVoicemailMarkers final : public VoicemailMarkerStore
{
public:
    DatabaseVoicemailMarkers(TNCallinglist& db, TNPreferencesManager& manager) : m_db(db), m_manager(manager)
    {
    }
    QDateTime lastSavedVoicemailDate() override;
    void setLastSavedVoicemailDate(const QDateTime& date) override;
    QDateTime lastSavedFaxDate() override;
    void setLastSavedFaxDate(const QDateTime& date) override;

private:
    int profile() const;
    TNCallinglist& m_db;
    TNPreferencesManager& m_manager;
};

// Caller names from the cache and the address book; unknown numbers go to the web directories
// when the location asks for it.
class ContactsCallerNames final : public CallerNameResolver, public CallerNameLookup
{
public:
    ContactsCallerNames(TNPreferencesManager& manager, ContactsServices& contacts)
        : m_manager(manager), m_contacts(contacts)
    {
    }
    QStringList searchNameForPhonenumber(const QString& number) override;
    void reverseSearchInBackground(const QString& connID, const QString& number, ReverseResult done) override;

private:
    TNPreferencesManager& m_manager;
    ContactsServices& m_contacts;
    QObject m_context; // results come back on the thread this object was made on
};
