#include "base/LocationKeys.h"

#include "base/Localization.h"

namespace {
using P = TNPreferences;
const QVariant kNotWritten;

QVariantList fiveOnes()
{
    return {1, 1, 1, 1, 1};
}

QVariantMap defaultContactFormat()
{
    return {{QStringLiteral("Firstname"), 0}, {QStringLiteral("Surname"), 1}, {QStringLiteral("Company"), 2}};
}
} // namespace

const std::vector<LocationKeyDef>& locationKeyTable()
{
    using T = SettingType;
    // clang-format off
    static const std::vector<LocationKeyDef> table = {
        // key                    type       property                 new location            missing
        {keys::Profile,           T::Int,    &P::activeProfileInt,    0,                      0},
        {keys::Name,              T::String, &P::locationName,        QString(),              QString()},
        {keys::Host,              T::String, &P::hostName,            QStringLiteral("fritz.box"), QString()},
        {keys::UserName,          T::String, &P::userName,            QString(),              QString()},
        {keys::Lines,             T::Array,  &P::lines,               QVariantList(),         QVariantList(), keys::CallMonitorFilter},
        {keys::Extensions,        T::Array,  &P::extensions,          QVariantList(),         QVariantList(), keys::Ports},
        {keys::Prefixis,          T::Array,  &P::prefixis,            QStringList{QString(), QString(), QString(), QString()}, QStringList()},
        {keys::AppleScript,       T::Array,  &P::appleScripts,        QVariantList(),         QVariantList()},
        {keys::AppleScriptParams, T::Dict,   &P::appleScriptsParams,  QVariantMap(),          QVariantMap()},
        {keys::BoxLanguage,       T::String, &P::boxLanguage,         QString(),              QString()},
        {keys::CallMonitor,       T::Bool,   &P::useCallmonitor,      true,                   false},
        {keys::CallAutoClose,     T::Bool,   &P::callAutoClose,       false,                  false},
        {keys::ConfirmDial,       T::Bool,   &P::confirmDial,         true,                   false},
        {keys::ShowCallOptions,   T::Bool,   &P::showCallOptions,     true,                   false},
        {keys::ShowGrowlMonitor,  T::Bool,   &P::useGrowl,            false,                  false},
        {keys::ShowUserNC,        T::Bool,   &P::useNotifications,    false,                  false},
        {keys::ReverseSearch,     T::Bool,   &P::useReverseSearch,    true,                   false},
        {keys::HideOwnNumber,     T::Bool,   &P::hideOwnNumber,       false,                  false},
        {keys::CbcUse,            T::Bool,   &P::cbcUse,              false,                  false},
        {keys::Cbc,               T::Array,  &P::cbcNumbers,          QVariantList(),         QVariantList()},
        // A new location stores its call kind under the lower-case key while loading and saving
        // use "DefaultCallArt": a new location reads 0 either way. Kept as the stored files have it.
        {keys::DefaultCallArtNewLocation, T::Int, std::monostate(),   0,                      kNotWritten},
        {keys::DefaultCallArt,    T::Int,    &P::defaultCallArt,      kNotWritten,            0},
        {keys::Dialport,          T::Int,    &P::dialPortInt,         1,                      0},
        {keys::ContactFormat,     T::Dict,   &P::contactFormat,       kNotWritten,            defaultContactFormat()},
        {keys::FaxHeader,         T::String, &P::faxHeader,           QString(),              QString()},
        {keys::FaxID,             T::String, &P::faxID,               kNotWritten,            QString()},
        {keys::FaxLines,          T::Array,  &P::faxLines,            QVariantList(),         QVariantList()},
        {keys::LoadVoicemails,    T::Array,  &P::loadVoicemails,      kNotWritten,            fiveOnes()},
        {keys::RemoteAccess,      T::Bool,   &P::remoteAccess,        false,                  false},
        {keys::AutoRemoteAccess,  T::Bool,   &P::autoRemoteAccess,    false,                  false},
        {keys::RemoteHost,        T::String, &P::remoteHostName,      QString(),              QString()},
        {keys::RemoteUser,        T::String, &P::remoteUserName,      QString(),              QString()},
        {keys::RemoteSSLPort,     T::Int,    &P::remotesslPort,       443,                    443, QString(), true},
        {keys::RemoteCertificateKey, T::String, &P::remoteCertificateKey, QString(),    QString()},
        {keys::Broadcast,         T::String, &P::broadcastaddress,    QString(),              QString()},
        {keys::MAC,               T::String, &P::macaddress,          QString(),              QString()},
        {keys::WakeOnLan,         T::Array,  &P::wakeOnLan,           QVariantList(),         kNotWritten},
        {keys::FTPUserName,       T::String, &P::FTPUsername,         QString(),              QString()},
        // True for a new location, false when missing: older locations never used TLS.
        {keys::FTPSSL,            T::Bool,   &P::FTPSSL,              true,                   false},
        {keys::WebPort,           T::Int,    &P::webPort,             80,                     80, QString(), true},
        {keys::CallMonitorPort,   T::Int,    &P::callMonitorPort,     1012,                   1012, QString(), true},
        {keys::TR064Port,         T::Int,    &P::tr064Port,           49000,                  49000, QString(), true},
        {keys::FTPPort,           T::Int,    &P::ftpPort,             21,                     21, QString(), true},
        {keys::SaveDate,          T::Date,   std::monostate(),        kNotWritten,            kNotWritten},
    };
    // clang-format on
    return table;
}

const LocationKeyDef* findLocationKey(const QString& key)
{
    for (const auto& def : locationKeyTable())
        if (def.key == key)
            return &def;
    return nullptr;
}

QVariantMap newLocationDictionary()
{
    QVariantMap dict;
    for (const auto& def : locationKeyTable())
        if (def.newValue.isValid())
            dict.insert(def.key, def.newValue);
    return dict;
}

QVariantList defaultDeviceList()
{
    QVariantList devices;
    const auto add = [&](const QString& name) { devices.append(QVariant(QVariantList{name, true})); };
    for (int i = 1; i <= 3; ++i)
        add(QStringLiteral("Analog %1").arg(i));
    add(Localization::localized(QStringLiteral("ISDNDevices")));
    for (int i = 1; i <= 8; ++i)
        add(QStringLiteral("ISDN %1").arg(i));
    for (int i = 1; i <= 6; ++i)
        add(QStringLiteral("DECT %1").arg(i));
    return devices;
}
