#include "calllist/JournalBadge.h"

#include "base/SettingsKeys.h"
#include "base/SettingsStore.h"

namespace JournalBadge {

std::optional<QString> title(const SettingsStore& settings, qint64 newCalls, int importedMissed)
{
    const bool missedBadge = settings.contains(keys::BadgeNewAbsentiaCalls) &&
                             settings.value(keys::BadgeNewAbsentiaCalls).toBool() && importedMissed > 0;
    const bool newBadge =
        settings.contains(keys::BadgeNewCalls) && settings.value(keys::BadgeNewCalls).toBool();
    if (newBadge && missedBadge)
        return QStringLiteral("%1 | %2").arg(newCalls).arg(importedMissed);
    if (missedBadge)
        return QString::number(importedMissed);
    if (newBadge)
        return QString::number(newCalls);
    return std::nullopt;
}

} // namespace JournalBadge
