#include "TrayCallMonitor.h"

#include "app/AppEnvironment.h"
#include "app/ServiceAdapters.h"
#include "base/SettingsStore.h"
#include "base/SettingsKeys.h"
#include "base/TNPreferencesManager.h"
#include "app/CallListSync.h"
#include "calllist/TNCallinglist.h"

TrayCallMonitor::TrayCallMonitor(AppEnvironment& env, NotificationPresenter* presenter, Hooks hooks, QObject* parent)
    : QObject(parent), m_scripts(env.paths().scriptsDir())
{
    StreamListenerServices services;
    services.settings = &env.settings();
    services.presenter = presenter;
    services.scripts = &m_scripts;
    services.names = &env.callerNames();
    services.openURL = std::move(hooks.openURL);
    services.setStatusItemState = std::move(hooks.setStatusItemState);
    services.openCallmonitorWindow = std::move(hooks.openCallmonitorWindow);
    services.memoDetails = [calls = env.callinglist()](qint64 id) -> std::pair<QString, QString> {
        if (calls)
            if (const auto memo = calls->memos().getDetailMemoWithID(id))
                return {memo->subject, memo->body};
        return {};
    };
    // After every call the router's journal brings the call into the list, when the user wants that.
    SettingsStore* settings = &env.settings();
    CallListSync* sync = env.callListSync();
    services.loadCallList = [settings, sync] {
        if (sync && settings->value(keys::ListAferCall).toBool())
            sync->importFromRouter();
    };
    m_listener = std::make_unique<StreamListener>(services);
    StreamListener::setSharedInstance(m_listener.get());
    if (!hooks.conductor.loadCallList)
        hooks.conductor.loadCallList = [sync] {
            if (sync)
                sync->importFromRouter();
        };
    m_conductor = std::make_unique<AppConductor>(env.manager(), *m_listener, &m_reachability, std::move(hooks.conductor));
    m_conductor->attachSleepWatcher(m_sleep);
}

TrayCallMonitor::~TrayCallMonitor()
{
    m_conductor.reset();
    if (StreamListener::sharedInstance() == m_listener.get())
        StreamListener::setSharedInstance(nullptr);
}
