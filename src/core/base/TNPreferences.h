#pragma once

#include <QString>
#include <QStringList>
#include <QVariant>
#include <QVariantList>
#include <QVariantMap>

#include <memory>

class SettingsStore;
class SecretStore;

// The settings of one location (router), loaded from its dictionary under "Locations", and its
// passwords. The live router session is a RouterSession. Fields carry the names other parts
// know them by.
class TNPreferences
{
public:
    TNPreferences(SettingsStore& store, SecretStore& secrets);

    // initWithLocationUID: / loadPreferencesWithLocationUID:
    static std::shared_ptr<TNPreferences> initWithLocationUID(const QString& uid, SettingsStore& store,
                                                              SecretStore& secrets);
    void loadPreferencesWithLocationUID(const QString& uid);

    // The stand-in when no location is configured: every part keeps working with empty values.
    static std::shared_ptr<TNPreferences> initWithDummy(SettingsStore& store, SecretStore& secrets);
    void loadNonConfiguredPreferences();

    // Writes every stored key back, sets "SaveDate", then stores the three passwords.
    bool save();
    // Stores only the three passwords (an empty one removes its item); false when one could not
    // be written, with keyChainError set.
    bool storePasswords();
    QString dump() const;

    QString currentFTPUser() const { return FTPUsername.isEmpty() ? QStringLiteral("ftpuser") : FTPUsername; }
    bool isDummy() const { return m_dummy; }

    // Stored in the location dictionary.
    QString uid;
    int activeProfileInt = 0;
    QString activeProfile;
    QString locationName;
    QString hostName;
    QString userName;
    QVariantList lines;
    QVariantList extensions;
    QStringList prefixis;
    QVariantList appleScripts;
    QVariantMap appleScriptsParams;
    QString boxLanguage;
    bool useCallmonitor = false;
    bool callAutoClose = false;
    bool confirmDial = false;
    bool showCallOptions = false;
    bool useGrowl = false;
    bool useNotifications = false;
    bool useReverseSearch = false;
    bool hideOwnNumber = false;
    bool cbcUse = false;
    QVariantList cbcNumbers;
    int defaultCallArt = 0;
    int dialPortInt = 0;
    QString dialPort;
    QVariantMap contactFormat;
    QString faxHeader;
    QString faxID;
    QVariantList faxLines;
    QVariantList loadVoicemails;
    bool remoteAccess = false;
    bool autoRemoteAccess = false;
    QString remoteHostName;
    QString remoteUserName;
    int remotesslPort = 443;
    QString broadcastaddress;
    QString macaddress;
    QVariant wakeOnLan;
    QString FTPUsername;
    bool FTPSSL = false;
    int webPort = 80;
    int callMonitorPort = 1012;
    int tr064Port = 49000;
    int ftpPort = 21;
    // SHA-256 of the remote router's public key, "sha256//" + base 64; empty until first seen.
    QString remoteCertificateKey;

    // In the keychain.
    QString passWord;
    QString remotePassWord;
    QString FTPPassWord;

    // Set on every load, never stored: a password could not be read or written.
    bool keyChainError = false;
    // The locale's date and time pattern, set on every load.
    QString dateFormatString;

    // The location's dictionary as it would be stored now (no passwords).
    QVariantMap toLocationDictionary() const;

private:
    void resetRuntimeFields();
    void applyDictionary(const QVariantMap& dict);
    void loadPasswords();

    SettingsStore& m_store;
    SecretStore& m_secrets;
    bool m_dummy = false;
};
