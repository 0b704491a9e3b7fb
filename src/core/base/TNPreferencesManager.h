#pragma once

#include "base/TNPreferences.h"

#include <QObject>
#include <QRecursiveMutex>

#include <memory>
#include <vector>

class SettingsStore;
class SecretStore;
class ProfileDataStore;

// Owns the configured locations and knows which one is current.
class TNPreferencesManager : public QObject
{
    Q_OBJECT
public:
    // profiles may be null: no call database means no profile numbers in use.
    TNPreferencesManager(SettingsStore& store, SecretStore& secrets, ProfileDataStore* profiles = nullptr,
                         QObject* parent = nullptr);

    // The start-up sequence: fixDefaultsIfNeeded, convertToUniqueProfiles, updateProfiles.
    void start();

    void setProfileDataStore(ProfileDataStore* profiles) { m_profiles = profiles; }

    bool fixDefaultsIfNeeded();
    bool convertToUniqueProfiles();
    void updateProfiles();
    void activateCurrentLocation();
    void activateCurrentLocationForID(const QString& uid);
    bool isUIDCurrentLocation(const QString& uid) const;

    QString addNewLocation();
    int newProfileNumber() const;
    void removeLocationForID(const QString& uid);

    std::shared_ptr<TNPreferences> locationPreferencesForUID(const QString& uid) const;
    std::shared_ptr<TNPreferences> locationPreferencesForProfile(const QString& activeProfile) const;
    QString UIDForLocation(const TNPreferences* prefs) const;
    QString UIDForProfileNumber(long profile) const;

    void saveCurrentLocationValue(const QVariant& value, const QString& key);
    void saveLocationValue(const QVariant& value, const QString& key, const QString& uid);
    // Several keys of one existing location in one write; the other keys stay as stored.
    // False for an unknown location or when the file cannot be written.
    bool saveLocationValues(const QVariantMap& values, const QString& uid);

    bool isConfigured() const;

    std::shared_ptr<TNPreferences> currentPreferences() const;
    void setCurrentPreferences(std::shared_ptr<TNPreferences> prefs);
    std::vector<std::shared_ptr<TNPreferences>> locations() const;
    QString currentUID() const;
    void setCurrentUID(const QString& uid);

    SettingsStore& store() const { return m_store; }
    SecretStore& secrets() const { return m_secrets; }

signals:
    void currentLocationChanged(const QString& uid);

private:
    void sortLocations();

    SettingsStore& m_store;
    SecretStore& m_secrets;
    ProfileDataStore* m_profiles;
    mutable QRecursiveMutex m_mutex;
    std::vector<std::shared_ptr<TNPreferences>> m_locations;
    std::shared_ptr<TNPreferences> m_current;
    QString m_currentUID;
};
