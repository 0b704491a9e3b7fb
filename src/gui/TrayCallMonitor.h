#pragma once

#include "app/AppConductor.h"
#include "monitor/NetworkReachability.h"
#include "monitor/SleepWatcher.h"
#include "monitor/StreamListener.h"
#include "monitor/TNScriptManager.h"

#include <QObject>

#include <functional>
#include <memory>

class AppEnvironment;
class NotificationPresenter;

// The call monitor as the tray runs it: the listener with names from the address book, scripts
// and desktop notifications, and the conductor that keeps it connected. The tray only supplies
// where the state and the window go; the decisions stay in the core.
class TrayCallMonitor : public QObject
{
    Q_OBJECT
public:
    struct Hooks
    {
        std::function<void(int state)> setStatusItemState;
        std::function<void()> openCallmonitorWindow;
        // A "dial://" URL from a clicked notification, or any other URL the program is handed.
        std::function<void(const QString& url)> openURL;
        AppConductor::Hooks conductor;
    };

    TrayCallMonitor(AppEnvironment& env, NotificationPresenter* presenter, Hooks hooks, QObject* parent = nullptr);
    ~TrayCallMonitor() override;

    AppConductor& conductor() { return *m_conductor; }
    StreamListener& listener() { return *m_listener; }

private:
    TNScriptManager m_scripts;
    std::unique_ptr<StreamListener> m_listener;
    SystemNetworkReachability m_reachability;
    SleepWatcher m_sleep;
    std::unique_ptr<AppConductor> m_conductor;
};
