#include "base/SecretStore.h"

#include "base/Logging.h"
#include "base/SettingsKeys.h"

#include <QDir>
#include <QEventLoop>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSaveFile>
#include <QVariantMap>

#include <qt6keychain/keychain.h>

#include <sys/stat.h>

QString SecretStore::keychainServiceForKey(const QString& key, const QString& uid)
{
    if (key == keys::RemotePass)
        return QStringLiteral("%1.RemotePass.%2").arg(servicePrefix(), uid);
    if (key == keys::FTPPass)
        return QStringLiteral("%1.FTPPass.%2").arg(servicePrefix(), uid);
    return QStringLiteral("%1.Profile.%2").arg(servicePrefix(), uid);
}

QString SecretStore::keychainAccountForKey(const QString&)
{
    return QStringLiteral("Fritz!Box Pass");
}

bool SecretStore::convertKeychainService(const QString& from, const QString& to, const QString& account)
{
    const auto secret = read(from, account);
    if (!secret)
        return false;
    if (!write(to, account, *secret))
        return false;
    remove(from, account);
    return true;
}

std::unique_ptr<SecretStore> SecretStore::create(const QString& kind, const QString& configDir,
                                                 QString* error)
{
    if (kind.isEmpty() || kind == u"keyring")
        return std::make_unique<KeychainSecretStore>();
    if (kind == u"file")
        return std::make_unique<FileSecretStore>(QDir(configDir).filePath(QStringLiteral("secrets.json")));
    if (error)
        *error = QStringLiteral("unknown password store '%1' (use keyring or file)").arg(kind);
    return nullptr;
}

// --- memory

std::optional<QString> MemorySecretStore::read(const QString& service, const QString& account)
{
    QMutexLocker lock(&m_mutex);
    const auto it = m_items.constFind(service + QChar(u'\n') + account);
    if (it == m_items.constEnd())
        return std::nullopt;
    return *it;
}

bool MemorySecretStore::write(const QString& service, const QString& account, const QString& secret)
{
    QMutexLocker lock(&m_mutex);
    m_items.insert(service + QChar(u'\n') + account, secret);
    return true;
}

bool MemorySecretStore::remove(const QString& service, const QString& account)
{
    QMutexLocker lock(&m_mutex);
    return m_items.remove(service + QChar(u'\n') + account) > 0;
}

int MemorySecretStore::size() const
{
    QMutexLocker lock(&m_mutex);
    return int(m_items.size());
}

// --- file

FileSecretStore::FileSecretStore(QString path) : m_path(std::move(path)) {}

QVariantMap FileSecretStore::loadLocked()
{
    QFile file(m_path);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    const QJsonDocument doc = QJsonDocument::fromJson(file.readAll());
    return doc.object().toVariantMap();
}

bool FileSecretStore::saveLocked(const QVariantMap& items)
{
    QDir().mkpath(QFileInfo(m_path).absolutePath());
    QSaveFile file(m_path);
    if (!file.open(QIODevice::WriteOnly)) {
        m_error = file.errorString();
        return false;
    }
    // Owner-only before a single byte is written.
    if (::fchmod(file.handle(), S_IRUSR | S_IWUSR) != 0) {
        m_error = QStringLiteral("cannot restrict the permissions of %1").arg(m_path);
        file.cancelWriting();
        return false;
    }
    file.write(QJsonDocument(QJsonObject::fromVariantMap(items)).toJson(QJsonDocument::Indented));
    if (!file.commit()) {
        m_error = file.errorString();
        return false;
    }
    return true;
}

std::optional<QString> FileSecretStore::read(const QString& service, const QString& account)
{
    QMutexLocker lock(&m_mutex);
    const QVariantMap items = loadLocked();
    const QVariantMap accounts = items.value(service).toMap();
    if (!accounts.contains(account))
        return std::nullopt;
    return accounts.value(account).toString();
}

bool FileSecretStore::write(const QString& service, const QString& account, const QString& secret)
{
    QMutexLocker lock(&m_mutex);
    QVariantMap items = loadLocked();
    QVariantMap accounts = items.value(service).toMap();
    accounts.insert(account, secret);
    items.insert(service, accounts);
    return saveLocked(items);
}

bool FileSecretStore::remove(const QString& service, const QString& account)
{
    QMutexLocker lock(&m_mutex);
    QVariantMap items = loadLocked();
    QVariantMap accounts = items.value(service).toMap();
    if (!accounts.remove(account))
        return false;
    if (accounts.isEmpty())
        items.remove(service);
    else
        items.insert(service, accounts);
    return saveLocked(items);
}

QString FileSecretStore::lastError() const
{
    QMutexLocker lock(&m_mutex);
    return m_error;
}

// --- keyring

namespace {
// QtKeychain jobs are asynchronous; callers here are synchronous, so wait on a local loop.
bool runJob(QKeychain::Job& job, QString* error)
{
    job.setAutoDelete(false);
    QEventLoop loop;
    QObject::connect(&job, &QKeychain::Job::finished, &loop, &QEventLoop::quit);
    job.start();
    loop.exec();
    if (job.error() != QKeychain::NoError) {
        if (error)
            *error = job.errorString();
        return false;
    }
    return true;
}
} // namespace

std::optional<QString> KeychainSecretStore::read(const QString& service, const QString& account)
{
    QKeychain::ReadPasswordJob job(service);
    job.setKey(account);
    job.setInsecureFallback(false);
    QString error;
    if (!runJob(job, &error)) {
        if (job.error() != QKeychain::EntryNotFound) {
            QMutexLocker lock(&m_mutex);
            m_error = error;
            qCWarning(lcApp) << "Keyring read failed for" << service << error;
        }
        return std::nullopt;
    }
    return job.textData();
}

bool KeychainSecretStore::write(const QString& service, const QString& account, const QString& secret)
{
    QKeychain::WritePasswordJob job(service);
    job.setKey(account);
    job.setInsecureFallback(false);
    job.setTextData(secret);
    QString error;
    if (!runJob(job, &error)) {
        QMutexLocker lock(&m_mutex);
        m_error = error;
        qCWarning(lcApp) << "Keyring write failed for" << service << error;
        return false;
    }
    return true;
}

bool KeychainSecretStore::remove(const QString& service, const QString& account)
{
    QKeychain::DeletePasswordJob job(service);
    job.setKey(account);
    job.setInsecureFallback(false);
    QString error;
    return runJob(job, &error);
}

QString KeychainSecretStore::lastError() const
{
    QMutexLocker lock(&m_mutex);
    return m_error;
}
