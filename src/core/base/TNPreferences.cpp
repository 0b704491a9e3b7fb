#include "base/TNPreferences.h"

#include "base/LocationKeys.h"
#include "base/Logging.h"
#include "base/SecretStore.h"
#include "base/SettingsStore.h"

#include <QDateTime>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLocale>
#include <QRegularExpression>

namespace {

template <typename... Ts> struct Overloaded : Ts...
{
    using Ts::operator()...;
};
template <typename... Ts> Overloaded(Ts...) -> Overloaded<Ts...>;

// The user's date and time pattern with a four-digit year.
QString localeDateTimePattern()
{
    const QLocale locale;
    if (locale.language() == QLocale::C)
        return QStringLiteral("dd.MM.yyyy HH:mm");
    QString date = locale.dateFormat(QLocale::ShortFormat);
    static const QRegularExpression shortYear(QStringLiteral("(?<!y)yy(?!y)"));
    date.replace(shortYear, QStringLiteral("yyyy"));
    return date + QStringLiteral(" HH:mm");
}

} // namespace

TNPreferences::TNPreferences(SettingsStore& store, SecretStore& secrets) : m_store(store), m_secrets(secrets)
{
    resetRuntimeFields();
}

std::shared_ptr<TNPreferences> TNPreferences::initWithLocationUID(const QString& uid, SettingsStore& store,
                                                                  SecretStore& secrets)
{
    auto prefs = std::make_shared<TNPreferences>(store, secrets);
    prefs->loadPreferencesWithLocationUID(uid);
    return prefs;
}

std::shared_ptr<TNPreferences> TNPreferences::initWithDummy(SettingsStore& store, SecretStore& secrets)
{
    auto prefs = std::make_shared<TNPreferences>(store, secrets);
    prefs->loadNonConfiguredPreferences();
    return prefs;
}

void TNPreferences::resetRuntimeFields()
{
    keyChainError = false;
    dateFormatString = localeDateTimePattern();
}

void TNPreferences::applyDictionary(const QVariantMap& dict)
{
    for (const LocationKeyDef& def : locationKeyTable()) {
        QVariant value;
        if (dict.contains(def.key))
            value = dict.value(def.key);
        else if (!def.legacyKey.isEmpty() && dict.contains(def.legacyKey))
            value = dict.value(def.legacyKey);
        else
            value = def.missingValue;
        if (def.zeroReadsAsMissing && value.toInt() == 0)
            value = def.missingValue;

        std::visit(Overloaded{
                       [](std::monostate) {},
                       [&](QString TNPreferences::*f) { this->*f = value.toString(); },
                       [&](bool TNPreferences::*f) { this->*f = value.toBool(); },
                       [&](int TNPreferences::*f) { this->*f = value.toInt(); },
                       [&](QVariantList TNPreferences::*f) { this->*f = value.toList(); },
                       [&](QVariantMap TNPreferences::*f) { this->*f = value.toMap(); },
                       [&](QStringList TNPreferences::*f) { this->*f = value.toStringList(); },
                       [&](QVariant TNPreferences::*f) { this->*f = value; },
                   },
                   def.field);
    }
    activeProfile = QString::number(activeProfileInt);
    dialPort = QString::number(dialPortInt);
}

void TNPreferences::loadPasswords()
{
    const auto readKey = [&](const QString& key) {
        const auto secret = m_secrets.read(SecretStore::keychainServiceForKey(key, uid),
                                           SecretStore::keychainAccountForKey(key));
        if (!secret) {
            keyChainError = true;
            return QString();
        }
        return *secret;
    };
    passWord = readKey(keys::Pass);
    remotePassWord = readKey(keys::RemotePass);
    FTPPassWord = readKey(keys::FTPPass);
}

void TNPreferences::loadPreferencesWithLocationUID(const QString& locationUid)
{
    m_dummy = false;
    resetRuntimeFields();
    uid = locationUid;
    const QVariantMap dict = m_store.value(keys::Locations).toMap().value(uid).toMap();
    applyDictionary(dict);
    loadPasswords();
}

void TNPreferences::loadNonConfiguredPreferences()
{
    m_dummy = true;
    resetRuntimeFields();
    uid.clear();
    applyDictionary({});
    passWord.clear();
    remotePassWord.clear();
    FTPPassWord.clear();
}

QVariantMap TNPreferences::toLocationDictionary() const
{
    QVariantMap dict = m_store.value(keys::Locations).toMap().value(uid).toMap();
    for (const LocationKeyDef& def : locationKeyTable()) {
        std::visit(Overloaded{
                       [](std::monostate) {},
                       [&](QVariant TNPreferences::*f) {
                           if ((this->*f).isValid())
                               dict.insert(def.key, this->*f);
                           else
                               dict.remove(def.key);
                       },
                       [&](auto f) { dict.insert(def.key, QVariant::fromValue(this->*f)); },
                   },
                   def.field);
    }
    return dict;
}

bool TNPreferences::save()
{
    if (m_dummy || uid.isEmpty()) {
        qCWarning(lcApp) << "Not saving the settings of an unconfigured location";
        return false;
    }
    QVariantMap dict = toLocationDictionary();
    dict.insert(keys::SaveDate, QDateTime::currentDateTimeUtc().toString(Qt::ISODate));
    QVariantMap locations = m_store.value(keys::Locations).toMap();
    locations.insert(uid, dict);
    m_store.setValue(keys::Locations, locations);
    const bool written = m_store.sync();
    const bool secretsOk = storePasswords();
    return written && secretsOk;
}

bool TNPreferences::storePasswords()
{
    if (m_dummy || uid.isEmpty())
        return false;
    const auto storeKey = [&](const QString& key, const QString& secret) {
        const QString service = SecretStore::keychainServiceForKey(key, uid);
        const QString account = SecretStore::keychainAccountForKey(key);
        if (secret.isEmpty()) {
            m_secrets.remove(service, account);
            return true;
        }
        if (!m_secrets.write(service, account, secret)) {
            keyChainError = true;
            return false;
        }
        return true;
    };
    bool ok = storeKey(keys::Pass, passWord);
    ok = storeKey(keys::RemotePass, remotePassWord) && ok;
    ok = storeKey(keys::FTPPass, FTPPassWord) && ok;
    return ok;
}

QString TNPreferences::dump() const
{
    // Passwords and session ids are only said to be set, never shown.
    const auto text = [](const QVariant& v) -> QString {
        if (v.typeId() == QMetaType::QVariantList || v.typeId() == QMetaType::QStringList)
            return QString::fromUtf8(
                QJsonDocument(QJsonArray::fromVariantList(v.toList())).toJson(QJsonDocument::Compact));
        if (v.typeId() == QMetaType::QVariantMap)
            return QString::fromUtf8(
                QJsonDocument(QJsonObject::fromVariantMap(v.toMap())).toJson(QJsonDocument::Compact));
        return v.toString();
    };
    const auto secret = [](const QString& s) { return s.isEmpty() ? QString() : QStringLiteral("<set>"); };
    const QVariantMap dict = toLocationDictionary();
    QString out = QStringLiteral("uid = %1\n").arg(uid);
    for (const LocationKeyDef& def : locationKeyTable())
        if (dict.contains(def.key))
            out += QStringLiteral("%1 = %2\n").arg(def.key, text(dict.value(def.key)));
    out += QStringLiteral("passWord = %1\n").arg(secret(passWord));
    out += QStringLiteral("remotePassWord = %1\n").arg(secret(remotePassWord));
    out += QStringLiteral("FTPPassWord = %1\n").arg(secret(FTPPassWord));
    out += QStringLiteral("keyChainError = %1\n").arg(keyChainError);
    out += QStringLiteral("dateFormatString = %1\n").arg(dateFormatString);
    return out;
}
