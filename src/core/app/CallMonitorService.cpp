#include "app/CallMonitorService.h"

#include "app/AppEnvironment.h"
#include "app/CallListSync.h"
#include "app/ServiceAdapters.h"
#include "base/Clock.h"
#include "base/SettingsKeys.h"
#include "base/SettingsStore.h"
#include "base/TNPreferencesManager.h"
#include "calllist/TNCallinglist.h"
#include "monitor/NetworkReachability.h"
#include "monitor/SleepWatcher.h"

CallMonitorService::CallMonitorService(AppEnvironment& env, Hooks hooks, QObject* parent)
    : QObject(parent), m_env(env), m_hooks(std::move(hooks)), m_scripts(env.paths().scriptsDir())
{
    // Without a call database there is nothing to import into.
    if (!m_hooks.importJournal && env.callListSync())
        m_hooks.importJournal = [this] {
            if (const auto prefs = location())
                m_env.callListSync()->importFromRouter(prefs);
        };
    m_listener = std::make_unique<StreamListener>(StreamListenerServices{
        .preferences = [this] { return location(); },
        .settings = env.settings(),
        .center = env.notifications(),
        .clock = Clock::system(),
        .names = &env.callerNames(),
        .presenter = m_hooks.presenter,
        .scripts = &m_scripts,
        .memoDetails = [calls = env.callinglist()](qint64 id) -> std::pair<QString, QString> {
            if (calls)
                if (const auto memo = calls->memos().getDetailMemoWithID(id))
                    return {memo->subject, memo->body};
            return {};
        },
        .openCallmonitorWindow = m_hooks.openCallmonitorWindow,
        .openURL = m_hooks.openURL,
        .setStatusItemState = m_hooks.setStatusItemState,
    });
    connect(m_listener.get(), &StreamListener::lineProcessed, this, [this](const QString& event) {
        if (event == u"DISCONNECT" && importsAfterCall() && m_hooks.importJournal)
            m_hooks.importJournal();
    });

    if (m_hooks.followNetworkAndSleep) {
        m_reachability = std::make_unique<SystemNetworkReachability>();
        m_sleep = std::make_unique<SleepWatcher>();
    }
    m_conductor =
        std::make_unique<AppConductor>(env.manager(), *m_listener, env.notifications(), m_reachability.get(),
                                       AppConductor::Hooks{.checkRouterStatus = m_hooks.checkRouterStatus,
                                                           .loadCallList = m_hooks.importJournal});
    if (m_sleep)
        m_conductor->attachSleepWatcher(*m_sleep);
}

CallMonitorService::~CallMonitorService()
{
    // The conductor holds the listener; it goes first.
    m_conductor.reset();
}

std::shared_ptr<TNPreferences> CallMonitorService::location() const
{
    return m_hooks.location ? m_hooks.location : m_env.manager().currentPreferences();
}

bool CallMonitorService::importsAfterCall() const
{
    return m_env.settings().value(keys::ListAferCall).toBool();
}

void CallMonitorService::start()
{
    const auto prefs = location();
    if (!prefs || prefs->hostName.isEmpty())
        return;
    reconnector().start(prefs->hostName, quint16(prefs->callMonitorPort));
}

void CallMonitorService::stop()
{
    reconnector().stop();
    m_listener->disconnectFromHost();
}
