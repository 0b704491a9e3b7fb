#include "app/AppEnvironment.h"

#include "app/CallListSync.h"
#include "app/ServiceAdapters.h"
#include "base/Clock.h"
#include "base/NotificationCenter.h"
#include "base/NotificationNames.h"
#include "base/SecretStore.h"
#include "base/SettingsStore.h"
#include "base/TNPreferencesManager.h"
#include "box/RouterSession.h"
#include "box/RouterSessions.h"
#include "calllist/JournalDownload.h"
#include "calllist/TNCallinglist.h"
#include "contacts/ContactsServices.h"
#include "contacts/VCardAddressBook.h"

AppEnvironment::AppEnvironment(AppPaths paths, QString secretsKind)
    : m_center(std::make_unique<NotificationCenter>()), m_paths(std::move(paths)),
      m_secretsKind(std::move(secretsKind))
{
}

AppEnvironment::~AppEnvironment()
{
    // Imports use the address book and the database.
    m_callListSync.reset();
    // Contacts use the cache, which goes with the database.
    m_callerNames.reset();
    m_contacts.reset();
}

bool AppEnvironment::open(bool resetCorruptSettings, QString* error)
{
    if (m_manager)
        return true;
    if (!m_secrets) {
        m_secrets = SecretStore::create(m_secretsKind, m_paths.configDir, error);
        if (!m_secrets)
            return false;
    }
    if (!m_settings) {
        m_settings = std::make_unique<SettingsStore>(m_paths.settingsFile());
        m_corrupt = m_settings->load() == SettingsStore::LoadResult::Corrupt;
        m_corruptCopy = m_settings->corruptCopyPath();
    }
    if (m_corrupt) {
        if (!resetCorruptSettings) {
            if (error)
                *error = QStringLiteral("the settings file %1 cannot be read (%2); a copy is kept at %3")
                             .arg(m_settings->filePath(), m_settings->corruptionDetail(), m_corruptCopy);
            return false;
        }
        m_settings->resetAfterCorruption();
        m_settings->sync();
        m_corrupt = false;
    }
    if (!m_callinglist) {
        m_callinglist = std::make_unique<TNCallinglist>(m_paths.databaseFile(), *m_settings, *m_center);
        if (!m_callinglist->isValid())
            m_callinglist.reset();
    }
    m_manager = std::make_unique<TNPreferencesManager>(*m_settings, *m_secrets, m_callinglist.get());
    if (m_callinglist) {
        m_callinglist->setPreferencesManager(m_manager.get());
    }
    m_manager->start();
    m_routerSessions = std::make_unique<RouterSessions>(*m_center, Clock::system(), m_manager.get());

    if (m_callinglist) {
        m_callerCache = std::make_unique<DatabaseCallerCache>(*m_callinglist);
        m_voicemailMarkers = std::make_unique<DatabaseVoicemailMarkers>(*m_callinglist, *m_manager);
    }
    m_contacts = std::make_unique<ContactsServices>(m_paths.dataDir, m_paths.scriptsDir(), *m_settings,
                                                    m_callerCache.get(), Clock::system(), *m_center);
    m_callerNames = std::make_unique<ContactsCallerNames>(*m_manager, *m_contacts);
    if (m_callinglist) {
        ContactsServices* contacts = m_contacts.get();
        m_callListSync = std::make_unique<CallListSync>(*m_callinglist, *m_manager, *m_settings,
                                                        [contacts] { return contacts->addressBook(); });
        // Changed badge settings change the badge.
        CallListSync* sync = m_callListSync.get();
        // The journal comes over the location's own router session.
        sync->setDownload([sessions = m_routerSessions.get()](const std::shared_ptr<TNPreferences>& prefs,
                                                              const QString& cancel, RouterFailure* failure) {
            return prefs ? JournalLoading::downloadFromRouter(prefs, *sessions->forLocation(*prefs), cancel,
                                                              failure)
                         : QString();
        });
        m_center->addObserver(sync, Notifications::ACTIVATESETTINGS,
                              [sync](const Notification&) { sync->refreshBadge(); });
    }
    return true;
}
