#pragma once

#include "app/AppConductor.h"
#include "monitor/StreamListener.h"
#include "monitor/TNScriptManager.h"

#include <QObject>

#include <functional>
#include <memory>

class AppEnvironment;
class NetworkReachability;
class NotificationPresenter;
class SleepWatcher;
class TNPreferences;

// The call monitor as a use case, the same for the tray and the command line: the listener with
// caller names, call scripts and announcements, the conductor that keeps it connected, and the
// journal import after each call. Front ends only say where announcements and state go.
class CallMonitorService : public QObject
{
    Q_OBJECT
public:
    struct Hooks
    {
        NotificationPresenter* presenter = nullptr;
        std::function<void(int state)> setStatusItemState;
        std::function<void()> openCallmonitorWindow;
        // A "dial://" URL from a clicked notification.
        std::function<void(const QString& url)> openURL;
        std::function<void()> checkRouterStatus;
        // Imports the router's journal in the background; when is decided here. Unset, the
        // environment's call list sync imports the watched location's journal.
        std::function<void()> importJournal;
        // The location to watch; unset, the current one (which may change while running).
        std::shared_ptr<TNPreferences> location;
        // Reconnect on network changes and around sleep, as a program that stays running does.
        bool followNetworkAndSleep = false;
    };

    CallMonitorService(AppEnvironment& env, Hooks hooks, QObject* parent = nullptr);
    ~CallMonitorService() override;

    StreamListener& listener() { return *m_listener; }
    AppConductor& conductor() { return *m_conductor; }
    CallMonitorReconnector& reconnector() { return m_conductor->reconnector(); }

    // Connects to the watched location's router and keeps the connection up until stop().
    void start();
    void stop();

    // "ListAferCall": a finished call brings the router's journal into the call list.
    bool importsAfterCall() const;

private:
    std::shared_ptr<TNPreferences> location() const;

    AppEnvironment& m_env;
    Hooks m_hooks;
    TNScriptManager m_scripts;
    std::unique_ptr<StreamListener> m_listener;
    std::unique_ptr<NetworkReachability> m_reachability;
    std::unique_ptr<SleepWatcher> m_sleep;
    std::unique_ptr<AppConductor> m_conductor;
};
