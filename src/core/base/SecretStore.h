#pragma once

#include <QHash>
#include <QMutex>
#include <QString>

#include <memory>
#include <optional>

// Where the router passwords live. Items are addressed as in the keychain: a service name and
// an account.
class SecretStore
{
public:
    virtual ~SecretStore() = default;
    // nullopt when there is no such item (or the store cannot be reached).
    virtual std::optional<QString> read(const QString& service, const QString& account) = 0;
    virtual bool write(const QString& service, const QString& account, const QString& secret) = 0;
    virtual bool remove(const QString& service, const QString& account) = 0;
    virtual QString lastError() const { return {}; }

    // Keychain service and account names of the three passwords of a location.
    static QString servicePrefix() { return QStringLiteral("Tondrel"); }
    static QString keychainServiceForKey(const QString& key, const QString& uid);
    static QString keychainAccountForKey(const QString& key);

    // Moves an item to another service name (old numbered profiles to location UIDs).
    bool convertKeychainService(const QString& from, const QString& to, const QString& account);

    // "keyring" or "file"; nullptr and an error text for anything else.
    static std::unique_ptr<SecretStore> create(const QString& kind, const QString& configDir, QString* error);
};

// For tests.
class MemorySecretStore final : public SecretStore
{
public:
    std::optional<QString> read(const QString& service, const QString& account) override;
    bool write(const QString& service, const QString& account, const QString& secret) override;
    bool remove(const QString& service, const QString& account) override;
    int size() const;

private:
    mutable QMutex m_mutex;
    QHash<QString, QString> m_items;
};

// "secrets.json" with mode 0600, for hosts without a Secret Service; only on request.
class FileSecretStore final : public SecretStore
{
public:
    explicit FileSecretStore(QString path);
    std::optional<QString> read(const QString& service, const QString& account) override;
    bool write(const QString& service, const QString& account, const QString& secret) override;
    bool remove(const QString& service, const QString& account) override;
    QString lastError() const override;

private:
    QVariantMap loadLocked();
    bool saveLocked(const QVariantMap& items);

    QString m_path;
    mutable QMutex m_mutex;
    QString m_error;
};

// The desktop keyring (Secret Service, KWallet, macOS Keychain) through QtKeychain.
class KeychainSecretStore final : public SecretStore
{
public:
    std::optional<QString> read(const QString& service, const QString& account) override;
    bool write(const QString& service, const QString& account, const QString& secret) override;
    bool remove(const QString& service, const QString& account) override;
    QString lastError() const override;

private:
    mutable QMutex m_mutex;
    QString m_error;
};
