#include "base/SettingsStore.h"

#include "base/Logging.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>
#include <QJsonObject>
#include <QSaveFile>

SettingsStore::SettingsStore(QString filePath) : m_path(std::move(filePath)) {}

SettingsStore::LoadResult SettingsStore::load()
{
    QMutexLocker lock(&m_mutex);
    m_values.clear();
    m_corrupt = false;
    m_corruptDetail.clear();
    m_corruptCopy.clear();

    QFile file(m_path);
    if (!file.exists())
        return LoadResult::Missing;
    if (!file.open(QIODevice::ReadOnly)) {
        m_corrupt = true;
        m_corruptDetail = file.errorString();
        return LoadResult::Corrupt;
    }
    const QByteArray data = file.readAll();
    if (data.trimmed().isEmpty())
        return LoadResult::Loaded; // an empty file is what a repaired first start leaves
    QJsonParseError error{};
    const QJsonDocument doc = QJsonDocument::fromJson(data, &error);
    if (error.error != QJsonParseError::NoError || !doc.isObject()) {
        m_corrupt = true;
        m_corruptDetail = error.error != QJsonParseError::NoError
                              ? QStringLiteral("%1 at offset %2").arg(error.errorString()).arg(error.offset)
                              : QStringLiteral("not a JSON object");
        m_corruptCopy = m_path + QStringLiteral(".corrupt-") +
                        QDateTime::currentDateTimeUtc().toString(QStringLiteral("yyyyMMdd-HHmmss"));
        if (!QFile::exists(m_corruptCopy))
            QFile::copy(m_path, m_corruptCopy);
        qCWarning(lcApp) << "Settings file is corrupt:" << m_path << m_corruptDetail << "copy kept at"
                         << m_corruptCopy;
        return LoadResult::Corrupt;
    }
    m_values = doc.object().toVariantMap();
    return LoadResult::Loaded;
}

bool SettingsStore::isCorrupt() const
{
    QMutexLocker lock(&m_mutex);
    return m_corrupt;
}

QString SettingsStore::corruptionDetail() const
{
    QMutexLocker lock(&m_mutex);
    return m_corruptDetail;
}

QString SettingsStore::corruptCopyPath() const
{
    QMutexLocker lock(&m_mutex);
    return m_corruptCopy;
}

void SettingsStore::resetAfterCorruption()
{
    QMutexLocker lock(&m_mutex);
    m_corrupt = false;
    m_values.clear();
}

bool SettingsStore::contains(const QString& key) const
{
    QMutexLocker lock(&m_mutex);
    return m_values.contains(key);
}

QVariant SettingsStore::value(const QString& key, const QVariant& fallback) const
{
    QMutexLocker lock(&m_mutex);
    return m_values.value(key, fallback);
}

void SettingsStore::setValue(const QString& key, const QVariant& value)
{
    QMutexLocker lock(&m_mutex);
    m_values.insert(key, value);
}

void SettingsStore::remove(const QString& key)
{
    QMutexLocker lock(&m_mutex);
    m_values.remove(key);
}

QVariantMap SettingsStore::snapshot() const
{
    QMutexLocker lock(&m_mutex);
    return m_values;
}

void SettingsStore::clear()
{
    QMutexLocker lock(&m_mutex);
    m_values.clear();
}

bool SettingsStore::sync()
{
    QMutexLocker lock(&m_mutex);
    return writeLocked();
}

bool SettingsStore::writeLocked()
{
    if (m_corrupt) {
        qCWarning(lcApp) << "Not writing settings over a corrupt file:" << m_path;
        return false;
    }
    QDir().mkpath(QFileInfo(m_path).absolutePath());
    QSaveFile file(m_path);
    if (!file.open(QIODevice::WriteOnly)) {
        qCWarning(lcApp) << "Cannot write settings:" << m_path << file.errorString();
        return false;
    }
    file.write(QJsonDocument(QJsonObject::fromVariantMap(m_values)).toJson(QJsonDocument::Indented));
    if (!file.commit()) {
        qCWarning(lcApp) << "Cannot write settings:" << m_path << file.errorString();
        return false;
    }
    return true;
}
