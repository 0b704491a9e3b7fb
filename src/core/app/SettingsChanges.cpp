#include "app/SettingsChanges.h"

#include "base/NotificationCenter.h"
#include "base/NotificationNames.h"
#include "base/SettingsKeys.h"

namespace {
bool touchesAny(const QStringList& changed, std::initializer_list<QString> keys)
{
    for (const QString& key : keys)
        if (changed.contains(key))
            return true;
    return false;
}
} // namespace

void SettingsChanges::addLocation(const QStringList& changedKeys, bool passwordsChanged)
{
    m_locations = m_locations || changedKeys.contains(keys::Name);
    // Lines and prefixes decide which calls show and how numbers read.
    m_list = m_list || touchesAny(changedKeys, {keys::Lines, keys::Prefixis});
    m_files = m_files || passwordsChanged ||
              touchesAny(changedKeys, {keys::FTPUserName, keys::FTPSSL, keys::FTPPort, keys::Host});
}

void SettingsChanges::addGlobals(const QStringList& changedKeys)
{
    m_list = m_list ||
             touchesAny(changedKeys, {keys::DateFormatString, keys::ListDeleteInterval, keys::AddressBook});
}

QStringList SettingsChanges::notifications() const
{
    QStringList out{Notifications::ACTIVATESETTINGS};
    if (m_locations || m_current)
        out << Notifications::REFRESHLOCATIONSMENU;
    if (m_list || m_current)
        out << Notifications::RELOADCALLINGLIST << Notifications::UPDATESIDETABLE;
    if (m_files || m_current)
        out << Notifications::RELOADABFAXLIST;
    return out;
}

void SettingsChanges::post(NotificationCenter& center, QObject* sender) const
{
    for (const QString& name : notifications())
        center.post(name, sender);
}
