#include "base/TNPreferencesManager.h"

#include "base/ExtensionOrder.h"
#include "base/Localization.h"
#include "base/LocationKeys.h"
#include "base/Logging.h"
#include "base/ProfileDataStore.h"
#include "base/SecretStore.h"
#include "base/SettingsStore.h"

#include <QFile>
#include <QPointer>
#include <QTimer>
#include <QUuid>

#include <algorithm>

namespace {

QString newUID()
{
    return QUuid::createUuid().toString(QUuid::WithoutBraces).toUpper();
}
} // namespace

TNPreferencesManager::TNPreferencesManager(SettingsStore& store, SecretStore& secrets,
                                           ProfileDataStore* profiles, QObject* parent)
    : QObject(parent), m_store(store), m_secrets(secrets), m_profiles(profiles)
{
}

void TNPreferencesManager::start()
{
    fixDefaultsIfNeeded();
    convertToUniqueProfiles();
    updateProfiles();
}

bool TNPreferencesManager::fixDefaultsIfNeeded()
{
    const QString path = m_store.filePath();
    if (QFile::exists(path))
        return false;
    qCInfo(lcApp).noquote() << QStringLiteral("defaultsPath does not exist. recreate it: %1").arg(path);
    m_store.clear();
    m_store.sync();
    return true;
}

bool TNPreferencesManager::convertToUniqueProfiles()
{
    if (!m_store.contains(keys::Profiles) || m_store.contains(keys::Locations))
        return false;
    const QVariantList profiles = m_store.value(keys::Profiles).toList();
    const int activeProfile = m_store.value(keys::ActiveProfile, -1).toInt();
    const QString account = SecretStore::keychainAccountForKey(keys::Pass);
    const QString prefix = SecretStore::servicePrefix();
    QVariantMap locations;
    QString current;
    for (qsizetype n = 0; n < profiles.size(); ++n) {
        QVariantMap dict = profiles.at(n).toMap();
        const QString uid = newUID();
        dict.insert(keys::Profile, int(n));
        for (const char* kind : {"Profile", "RemotePass", "FTPPass"}) {
            const QString k = QString::fromLatin1(kind);
            m_secrets.convertKeychainService(QStringLiteral("%1.%2.%3").arg(prefix, k).arg(n),
                                             QStringLiteral("%1.%2.%3").arg(prefix, k, uid), account);
        }
        if (n == activeProfile)
            current = uid;
        locations.insert(uid, dict);
    }
    m_store.setValue(keys::Locations, locations);
    if (!current.isEmpty())
        m_store.setValue(keys::CurrentLocation, current);
    m_store.sync();
    qCInfo(lcApp) << "Converted" << profiles.size() << "profiles into locations";
    return true;
}

void TNPreferencesManager::sortLocations()
{
    std::stable_sort(m_locations.begin(), m_locations.end(),
                     [](const auto& a, const auto& b) { return a->activeProfileInt < b->activeProfileInt; });
}

void TNPreferencesManager::updateProfiles()
{
    {
        QMutexLocker lock(&m_mutex);
        m_locations.clear();
        const QVariantMap locations = m_store.value(keys::Locations).toMap();
        for (auto it = locations.cbegin(); it != locations.cend(); ++it)
            m_locations.push_back(TNPreferences::initWithLocationUID(it.key(), m_store, m_secrets));
        sortLocations();
    }
    activateCurrentLocation();
}

void TNPreferencesManager::activateCurrentLocation()
{
    QMutexLocker lock(&m_mutex);
    const bool hasCurrentKey = m_store.contains(keys::CurrentLocation);
    const QString uid = m_store.value(keys::CurrentLocation).toString();
    if (auto prefs = locationPreferencesForUID(uid); prefs && !uid.isEmpty()) {
        prefs->loadPreferencesWithLocationUID(uid);
        m_current = prefs;
        m_currentUID = uid;
    } else if (!m_locations.empty()) {
        m_current = m_locations.back();
        m_current->loadPreferencesWithLocationUID(m_current->uid);
        m_currentUID = m_current->uid;
        m_store.setValue(keys::CurrentLocation, m_currentUID);
        m_store.sync();
    } else {
        if (hasCurrentKey)
            qCWarning(lcApp).noquote()
                << QStringLiteral("Error activating location with uid (location not found): %1").arg(uid);
        else
            qCWarning(lcApp).noquote()
                << QStringLiteral("Error activating location (CurrentLocation not existing)");
        m_current = TNPreferences::initWithDummy(m_store, m_secrets);
        m_currentUID.clear();
    }
    const QString now = m_currentUID;
    lock.unlock();
    emit currentLocationChanged(now);
}

void TNPreferencesManager::activateCurrentLocationForID(const QString& uid)
{
    m_store.setValue(keys::CurrentLocation, uid);
    m_store.sync();
    activateCurrentLocation();
}

bool TNPreferencesManager::isUIDCurrentLocation(const QString& uid) const
{
    QMutexLocker lock(&m_mutex);
    return !uid.isEmpty() && uid == m_currentUID;
}

int TNPreferencesManager::newProfileNumber() const
{
    QMutexLocker lock(&m_mutex);
    const std::optional<int> max = m_profiles ? m_profiles->maxProfileNumber() : std::nullopt;
    int candidate = 0;
    if (max) {
        candidate = *max + 1;
    } else {
        for (const auto& prefs : m_locations)
            candidate = std::max(candidate, prefs->activeProfileInt);
    }
    // Profile numbers are positive: their negatives mark bookkeeping rows in the database.
    candidate = std::max(candidate, 1);
    const bool used = std::any_of(m_locations.begin(), m_locations.end(),
                                  [&](const auto& p) { return p->activeProfileInt == candidate; });
    if (!used)
        return candidate;
    const int next = m_locations.back()->activeProfileInt + 1;
    return next < candidate ? candidate + 1 : next;
}

QString TNPreferencesManager::addNewLocation()
{
    const int profile = newProfileNumber();
    const QString uid = newUID();
    QVariantMap dict = newLocationDictionary();
    dict.insert(keys::Profile, profile);
    dict.insert(
        keys::Name,
        QStringLiteral("%1 %2").arg(Localization::localized(QStringLiteral("Location"))).arg(profile));
    dict.insert(keys::Extensions, FBBoxPhoneHelper::convertIntoNewExtensions(defaultDeviceList()));

    QVariantMap locations = m_store.value(keys::Locations).toMap();
    locations.insert(uid, dict);
    m_store.setValue(keys::Locations, locations);
    if (m_store.value(keys::CurrentLocation).toString().isEmpty() ||
        !locations.contains(m_store.value(keys::CurrentLocation).toString()))
        m_store.setValue(keys::CurrentLocation, uid);
    if (!m_store.contains(keys::DateFormatString))
        m_store.setValue(keys::DateFormatString, QStringLiteral("dd.MM.yyyy HH:mm"));
    m_store.sync();

    {
        QMutexLocker lock(&m_mutex);
        m_locations.push_back(TNPreferences::initWithLocationUID(uid, m_store, m_secrets));
        sortLocations();
    }
    if (m_profiles)
        m_profiles->createDefaultSmartList(profile);
    return uid;
}

void TNPreferencesManager::removeLocationForID(const QString& uid)
{
    auto prefs = locationPreferencesForUID(uid);
    if (!prefs || uid.isEmpty())
        return;
    for (const QString& key : {keys::Pass, keys::RemotePass, keys::FTPPass})
        m_secrets.remove(SecretStore::keychainServiceForKey(key, uid),
                         SecretStore::keychainAccountForKey(key));

    // The calls go on the next turn of the event loop, as the rest of the removal is done by then.
    if (m_profiles) {
        const int profile = prefs->activeProfileInt;
        QPointer<TNPreferencesManager> self(this);
        QTimer::singleShot(0, this, [self, profile] {
            if (self && self->m_profiles)
                self->m_profiles->deleteProfile(profile);
        });
    }

    const bool wasCurrent = m_store.value(keys::CurrentLocation).toString() == uid;
    QVariantMap locations = m_store.value(keys::Locations).toMap();
    locations.remove(uid);
    m_store.setValue(keys::Locations, locations);
    {
        QMutexLocker lock(&m_mutex);
        std::erase_if(m_locations, [&](const auto& p) { return p->uid == uid; });
        if (wasCurrent)
            m_store.setValue(keys::CurrentLocation,
                             m_locations.empty() ? QString() : m_locations.front()->uid);
    }
    m_store.sync();
    activateCurrentLocation();
}

std::shared_ptr<TNPreferences> TNPreferencesManager::locationPreferencesForUID(const QString& uid) const
{
    QMutexLocker lock(&m_mutex);
    for (auto it = m_locations.rbegin(); it != m_locations.rend(); ++it)
        if ((*it)->uid == uid)
            return *it;
    return nullptr;
}

std::shared_ptr<TNPreferences>
TNPreferencesManager::locationPreferencesForProfile(const QString& activeProfile) const
{
    QMutexLocker lock(&m_mutex);
    for (auto it = m_locations.rbegin(); it != m_locations.rend(); ++it)
        if ((*it)->activeProfile == activeProfile)
            return *it;
    return nullptr;
}

QString TNPreferencesManager::UIDForLocation(const TNPreferences* prefs) const
{
    QMutexLocker lock(&m_mutex);
    for (auto it = m_locations.rbegin(); it != m_locations.rend(); ++it)
        if (it->get() == prefs)
            return (*it)->uid;
    return {};
}

QString TNPreferencesManager::UIDForProfileNumber(long profile) const
{
    QMutexLocker lock(&m_mutex);
    for (auto it = m_locations.rbegin(); it != m_locations.rend(); ++it)
        if ((*it)->activeProfileInt == profile)
            return (*it)->uid;
    return {};
}

void TNPreferencesManager::saveCurrentLocationValue(const QVariant& value, const QString& key)
{
    saveLocationValue(value, key, currentUID());
}

void TNPreferencesManager::saveLocationValue(const QVariant& value, const QString& key, const QString& uid)
{
    if (uid.isEmpty())
        return;
    QVariantMap locations = m_store.value(keys::Locations).toMap();
    QVariantMap dict = locations.value(uid).toMap();
    dict.insert(key, value);
    locations.insert(uid, dict);
    m_store.setValue(keys::Locations, locations);
    m_store.sync();
}

bool TNPreferencesManager::saveLocationValues(const QVariantMap& values, const QString& uid)
{
    QVariantMap locations = m_store.value(keys::Locations).toMap();
    if (uid.isEmpty() || !locations.contains(uid))
        return false;
    QVariantMap dict = locations.value(uid).toMap();
    for (auto it = values.cbegin(); it != values.cend(); ++it)
        dict.insert(it.key(), it.value());
    locations.insert(uid, dict);
    m_store.setValue(keys::Locations, locations);
    return m_store.sync();
}

bool TNPreferencesManager::isConfigured() const
{
    if (!m_store.contains(keys::Locations) || !m_store.contains(keys::CurrentLocation))
        return false;
    const QString uid = m_store.value(keys::CurrentLocation).toString();
    return !uid.isEmpty() && m_store.value(keys::Locations).toMap().contains(uid);
}

std::shared_ptr<TNPreferences> TNPreferencesManager::currentPreferences() const
{
    QMutexLocker lock(&m_mutex);
    return m_current;
}

void TNPreferencesManager::setCurrentPreferences(std::shared_ptr<TNPreferences> prefs)
{
    QMutexLocker lock(&m_mutex);
    m_current = std::move(prefs);
    m_currentUID = m_current ? m_current->uid : QString();
}

std::vector<std::shared_ptr<TNPreferences>> TNPreferencesManager::locations() const
{
    QMutexLocker lock(&m_mutex);
    return m_locations;
}

QString TNPreferencesManager::currentUID() const
{
    QMutexLocker lock(&m_mutex);
    return m_currentUID;
}

void TNPreferencesManager::setCurrentUID(const QString& uid)
{
    QMutexLocker lock(&m_mutex);
    m_currentUID = uid;
}
