#pragma once

#include <QString>

#include <functional>
#include <memory>

class TNPreferences;

// Starting journal imports for the current location, and what the composition root plugs in:
// the router download and the badge display.
namespace JournalLoading {

// Fetches the journal of a location from its router ("refreshFoncalls", then "csv" with the
// cancel string); "" or a page when that fails.
using Download = std::function<QString(const std::shared_ptr<TNPreferences>& prefs, const QString& cancelString)>;
// Tests and other front ends may replace the router download.
void setDownload(Download download);
Download download();

// Shows the badge title (status item and dock icon); called on the importing thread.
void setBadgeHandler(std::function<void(const QString&)> handler);
std::function<void(const QString&)> badgeHandler();

} // namespace JournalLoading

namespace methods {
// getCSVListFromHost:forProfile: for the active profile of the current location, on the
// calling thread; path empty downloads from the router.
int loadCSVListData(const QString& path);
// The same on a new background thread.
void loadCSVListDatainBackground(const QString& path);
} // namespace methods
