#pragma once

#include "base/AppPaths.h"

#include <QString>

#include <memory>

class NotificationCenter;
class SettingsStore;
class SecretStore;
class TNPreferencesManager;
class TNCallinglist;
class CallListSync;
class RouterSessions;
class ContactsServices;
class DatabaseCallerCache;
class DatabaseVoicemailMarkers;
class ContactsCallerNames;
class TNCallinglist;

// The composition root shared by the tray application and the command line: paths, settings,
// passwords, the locations and the notification centre, each made once and handed on.
class AppEnvironment
{
public:
    AppEnvironment(AppPaths paths, QString secretsKind);
    ~AppEnvironment();

    // False with an error text when the password store is unknown or the settings file cannot
    // be read; with resetCorruptSettings a corrupt file (already copied aside) is replaced by
    // defaults.
    bool open(bool resetCorruptSettings, QString* error);
    bool settingsCorrupt() const { return m_corrupt; }
    QString corruptCopyPath() const { return m_corruptCopy; }

    const AppPaths& paths() const { return m_paths; }
    // The one notification centre the windows and the core services talk through.
    NotificationCenter& notifications() const { return *m_center; }
    SettingsStore& settings() const { return *m_settings; }
    SecretStore& secrets() const { return *m_secrets; }
    TNPreferencesManager& manager() const { return *m_manager; }
    // The live router session of each location.
    RouterSessions& routerSessions() const { return *m_routerSessions; }
    // Null when the call database cannot be opened.
    TNCallinglist* callinglist() const { return m_callinglist.get(); }
    ContactsServices& contacts() const { return *m_contacts; }
    ContactsCallerNames& callerNames() const { return *m_callerNames; }
    // Every journal import; null without a call database.
    CallListSync* callListSync() const { return m_callListSync.get(); }
    // Null without a call database.
    DatabaseVoicemailMarkers* voicemailMarkers() const { return m_voicemailMarkers.get(); }

private:
    // First, so that it goes last: every service and window observes through it.
    std::unique_ptr<NotificationCenter> m_center;
    AppPaths m_paths;
    QString m_secretsKind;
    bool m_corrupt = false;
    QString m_corruptCopy;
    std::unique_ptr<SettingsStore> m_settings;
    std::unique_ptr<SecretStore> m_secrets;
    std::unique_ptr<TNCallinglist> m_callinglist;
    std::unique_ptr<TNPreferencesManager> m_manager;
    std::unique_ptr<RouterSessions> m_routerSessions;
    std::unique_ptr<DatabaseCallerCache> m_callerCache;
    std::unique_ptr<DatabaseVoicemailMarkers> m_voicemailMarkers;
    std::unique_ptr<ContactsServices> m_contacts;
    std::unique_ptr<ContactsCallerNames> m_callerNames;
    std::unique_ptr<CallListSync> m_callListSync;
};
