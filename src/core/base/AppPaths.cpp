#include "base/AppPaths.h"

#include <QDir>
#include <QStandardPaths>

namespace {
QString pick(const QString& option, const char* env, QStandardPaths::StandardLocation location)
{
    if (!option.isEmpty())
        return QDir(option).absolutePath();
    const QString fromEnv = qEnvironmentVariable(env);
    if (!fromEnv.isEmpty())
        return QDir(fromEnv).absolutePath();
    return QStandardPaths::writableLocation(location);
}
} // namespace

AppPaths AppPaths::resolve(const QString& configOption, const QString& dataOption)
{
    return {pick(configOption, "TONDREL_CONFIG_DIR", QStandardPaths::AppConfigLocation),
            pick(dataOption, "TONDREL_DATA_DIR", QStandardPaths::AppDataLocation)};
}

QString AppPaths::settingsFile() const
{
    return QDir(configDir).filePath(QStringLiteral("settings.json"));
}

QString AppPaths::secretsFile() const
{
    return QDir(configDir).filePath(QStringLiteral("secrets.json"));
}

QString AppPaths::databaseFile() const
{
    return QDir(dataDir).filePath(QStringLiteral("Tondrel.db"));
}

QString AppPaths::scriptsDir() const
{
    return QDir(dataDir).filePath(QStringLiteral("scripts"));
}
