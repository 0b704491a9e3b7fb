#pragma once

#include <QString>

// Where settings and data live. Options beat the environment, which beats the platform default.
struct AppPaths
{
    QString configDir; // settings.json, secrets.json
    QString dataDir;   // Tondrel.db, reverseSearch.plist, scripts/

    static AppPaths resolve(const QString& configOption = {}, const QString& dataOption = {});

    QString settingsFile() const;
    QString secretsFile() const;
    QString databaseFile() const;
    QString scriptsDir() const;
};
