#pragma once

#include "app/AppConductor.h"
#include "app/NetworkReachability.h"
#include "app/SleepWatcher.h"
#include "monitor/DBusNotificationPresenter.h"
#include "monitor/StreamListener.h"
#include "monitor/TNScriptManager.h"

#include <QAction>
#include <QObject>
#include <QSystemTrayIcon>

#include <memory>

class AppEnvironment;

// The call monitor as the tray shows it: the icon follows the connection, a checkable menu item
// switches it, notifications go to the desktop. The decisions stay in the core.
class TrayCallMonitor : public QObject
{
    Q_OBJECT
public:
    TrayCallMonitor(AppEnvironment& env, QSystemTrayIcon& tray, QAction& toggle, QObject* parent = nullptr);

    AppConductor& conductor() { return *m_conductor; }

private:
    QSystemTrayIcon& m_tray;
    QAction& m_toggle;
    DBusNotificationPresenter m_presenter;
    TNScriptManager m_scripts;
    std::unique_ptr<StreamListener> m_listener;
    SystemNetworkReachability m_reachability;
    SleepWatcher m_sleep;
    std::unique_ptr<AppConductor> m_conductor;
};
