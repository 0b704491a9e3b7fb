#include "calllist/JournalLoading.h"

#include "base/Logging.h"
#include "base/SettingsStore.h"
#include "base/TNPreferences.h"
#include "base/TNPreferencesManager.h"
#include "calllist/JournalImporter.h"
#include "calllist/TNCallinglist.h"
#include "contacts/AddressBook.h"

#include <QMutex>
#include <QThreadPool>

namespace {
QMutex g_mutex;
JournalLoading::Download g_download;
std::function<void(const QString&)> g_badge;
} // namespace

namespace JournalLoading {

void setDownload(Download download)
{
    QMutexLocker lock(&g_mutex);
    g_download = std::move(download);
}

Download download()
{
    QMutexLocker lock(&g_mutex);
    return g_download;
}

void setBadgeHandler(std::function<void(const QString&)> handler)
{
    QMutexLocker lock(&g_mutex);
    g_badge = std::move(handler);
}

std::function<void(const QString&)> badgeHandler()
{
    QMutexLocker lock(&g_mutex);
    return g_badge;
}

} // namespace JournalLoading

int TNCallinglist::getCSVListFromHost(const QString& path, int profile)
{
    SettingsStore* settings = m_settings ? m_settings : SettingsStore::standard();
    if (!settings)
        return -1;
    JournalImporter importer(*this, *settings, AddressBook::shared(), m_clock);
    if (auto fetch = JournalLoading::download()) {
        const auto prefs = prefsForProfile(profile);
        importer.setDownloader([fetch, prefs](const QString& cancel) { return prefs ? fetch(prefs, cancel) : QString(); });
    }
    importer.setBadgeHandler(JournalLoading::badgeHandler());
    return importer.getCSVListFromHost(path, profile).result;
}

namespace methods {

int loadCSVListData(const QString& path)
{
    TNCallinglist* calls = TNCallinglist::sharedInstance();
    TNPreferencesManager* manager = TNPreferencesManager::sharedManager();
    const auto prefs = manager ? manager->currentPreferences() : nullptr;
    if (!calls || !prefs || prefs->isDummy())
        return 0;
    return calls->getCSVListFromHost(path, prefs->activeProfileInt);
}

void loadCSVListDatainBackground(const QString& path)
{
    QThreadPool::globalInstance()->start([path] { loadCSVListData(path); });
}

} // namespace methods
