#include "Scenario.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>

Scenario::Scenario()
{
    m_data = QJsonObject{
        {QStringLiteral("firmware"), QStringLiteral("lua")}, // "lua", "form" or "nologin"
        {QStringLiteral("model"), QStringLiteral("FRITZ!Box 7590")},
        {QStringLiteral("firmwareVersion"), QStringLiteral("154.07.57")},
        {QStringLiteral("language"), QStringLiteral("de")},
        {QStringLiteral("users"),
         QJsonArray{QJsonObject{{QStringLiteral("name"), QStringLiteral("")},
                                {QStringLiteral("password"), QStringLiteral("secret")}}}},
    };
}

bool Scenario::loadFile(const QString& path, QString* error)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        *error = QStringLiteral("cannot read %1: %2").arg(path, file.errorString());
        return false;
    }
    QJsonParseError pe{};
    const QJsonDocument doc = QJsonDocument::fromJson(file.readAll(), &pe);
    if (pe.error != QJsonParseError::NoError || !doc.isObject()) {
        *error = QStringLiteral("%1 is not a JSON object: %2").arg(path, pe.errorString());
        return false;
    }
    QMutexLocker lock(&m_mutex);
    const QJsonObject loaded = doc.object();
    for (auto it = loaded.begin(); it != loaded.end(); ++it)
        m_data.insert(it.key(), it.value());
    return true;
}

QJsonObject Scenario::data() const
{
    QMutexLocker lock(&m_mutex);
    return m_data;
}

QJsonValue Scenario::value(const QString& key) const
{
    QMutexLocker lock(&m_mutex);
    return m_data.value(key);
}

void Scenario::setValue(const QString& key, const QJsonValue& value)
{
    QMutexLocker lock(&m_mutex);
    m_data.insert(key, value);
}
