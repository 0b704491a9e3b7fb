#include "app/ServiceAdapters.h"

#include "base/TNPreferences.h"
#include "base/TNPreferencesManager.h"
#include "calllist/TNCallinglist.h"
#include "contacts/CallerIdentification.h"
#include "contacts/ContactsServices.h"
#include "contacts/ReverseLookup.h"
#include "contacts/VCardAddressBook.h"

QStringList DatabaseCallerCache::searchCallerNameForPhoneNumber(const QString& number)
{
    return m_db.searchCallerNameForPhoneNumber(number);
}

void DatabaseCallerCache::insertCallerWithName(const QString& name, const QString& number,
                                               const QString& abid, const QString& label)
{
    m_db.insertCallerWithName(name, number, abid, label);
}

int DatabaseVoicemailMarkers::profile() const
{
    const auto prefs = m_manager.currentPreferences();
    return prefs ? prefs->activeProfileInt : 0;
}

QDateTime DatabaseVoicemailMarkers::lastSavedVoicemailDate()
{
    return m_db.getLastDateForVoicemailForProfile(profile()).value_or(QDateTime());
}

void DatabaseVoicemailMarkers::setLastSavedVoicemailDate(const QDateTime& date)
{
    m_db.updateMarkerDate(profile(), TNCallinglist::MarkerVoicemail, date);
}

QDateTime DatabaseVoicemailMarkers::lastSavedFaxDate()
{
    return m_db.getLastDateForFaxForProfile(profile()).value_or(QDateTime());
}

void DatabaseVoicemailMarkers::setLastSavedFaxDate(const QDateTime& date)
{
    m_db.updateMarkerDate(profile(), TNCallinglist::MarkerFax, date);
}

QStringList ContactsCallerNames::searchNameForPhonenumber(const QString& number)
{
    const auto prefs = m_manager.currentPreferences();
    return methods::searchNameForPhonenumber(number, m_contacts.callerCache(), m_contacts.addressBook(),
                                             Prefixis(prefs ? prefs->prefixis : QStringList()),
                                             prefs ? prefs->contactFormat : QVariantMap());
}

void ContactsCallerNames::reverseSearchInBackground(const QString& connID, const QString& number,
                                                    ReverseResult done)
{
    const auto prefs = m_manager.currentPreferences();
    if (!prefs || !prefs->useReverseSearch)
        return;
    m_contacts.reverseLookup().reverseSearchInBackground(connID, number, Prefixis(prefs->prefixis),
                                                         &m_context,
                                                         [done](const QString& name, const QString& id) {
                                                             if (!name.isEmpty())
                                                                 done(id, name);
                                                         });
}
