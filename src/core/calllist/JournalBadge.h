#pragma once

#include <QString>

#include <optional>

class SettingsStore;

namespace JournalBadge {

// The status item's title after a download that imported calls: the new-calls count
// ("badgeNewCalls"), the count of missed calls just imported ("badgeNewAbsentiaCalls"), both as
// "new | missed", or no title.
std::optional<QString> title(const SettingsStore& settings, qint64 newCalls, int importedMissed);

} // namespace JournalBadge
