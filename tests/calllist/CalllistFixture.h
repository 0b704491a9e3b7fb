#pragma once

// A real call database in a temp folder with real settings, a location and a clock that tests set.
#include "base/Clock.h"
#include "base/NotificationCenter.h"
#include "base/SecretStore.h"
#include "base/SettingsStore.h"
#include "base/TNPreferences.h"
#include "base/TNPreferencesManager.h"
#include "calllist/TNCallinglist.h"

#include <QTemporaryDir>

#include <memory>

struct CalllistFixture
{
    explicit CalllistFixture(const QDateTime& now = QDateTime(QDate(2026, 3, 15), QTime(12, 0)))
        : store(dir.filePath(QStringLiteral("config/settings.json"))), clock(now)
    {
        store.load();
        calls = std::make_unique<TNCallinglist>(dbPath(), store, center, &clock);
        manager = std::make_unique<TNPreferencesManager>(store, secrets, calls.get());
        manager->start();
        calls->setPreferencesManager(manager.get());
    }

    QString dbPath() const { return dir.filePath(QStringLiteral("data/Tondrel.db")); }

    // A new location (with its default smart list); lines as [Line, HideList] pairs.
    int addLocation(const QList<std::pair<QString, int>>& lines = {})
    {
        const QString uid = manager->addNewLocation();
        auto prefs = manager->locationPreferencesForUID(uid);
        for (const auto& [line, hide] : lines)
            prefs->lines.append(
                QVariantMap{{QStringLiteral("Line"), line}, {QStringLiteral("HideList"), hide}});
        prefs->save();
        return prefs->activeProfileInt;
    }

    qint64 call(int profile, int state, const QDateTime& when,
                const QString& number = QStringLiteral("030123"),
                const QString& line = QStringLiteral("5550001"),
                const QString& duration = QStringLiteral("0:01"),
                const QString& extension = QStringLiteral("Küche"))
    {
        return calls->insertCall(
            {profile, state, when.toSecsSinceEpoch(), number, extension, line, duration});
    }

    NotificationCenter center;
    QTemporaryDir dir;
    SettingsStore store;
    MemorySecretStore secrets;
    ManualClock clock;
    std::unique_ptr<TNCallinglist> calls;
    std::unique_ptr<TNPreferencesManager> manager;
};

inline QDateTime at(int y, int mo, int d, int h = 10, int mi = 0)
{
    return QDateTime(QDate(y, mo, d), QTime(h, mi));
}
