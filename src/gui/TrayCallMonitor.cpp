#include "TrayCallMonitor.h"

#include "app/AppEnvironment.h"
#include "app/ServiceAdapters.h"
#include "app/SettingsStore.h"
#include "app/TNPreferencesManager.h"

#include <QIcon>

TrayCallMonitor::TrayCallMonitor(AppEnvironment& env, QSystemTrayIcon& tray, QAction& toggle, QObject* parent)
    : QObject(parent), m_tray(tray), m_toggle(toggle), m_scripts(env.paths().scriptsDir())
{
    StreamListenerServices services;
    services.settings = &env.settings();
    services.presenter = &m_presenter;
    services.scripts = &m_scripts;
    services.names = &env.callerNames();
    // A click on a notification dials back through the program's own URL handling.
    services.openURL = [this](const QString& url) {
        if (m_conductor)
            m_conductor->handleURL(url);
    };
    services.setStatusItemState = [this](int state) {
        m_tray.setIcon(QIcon(state == 1 ? QStringLiteral(":/icons/fritzboxg.svg") : QStringLiteral(":/icons/fritzboxb.svg")));
    };
    m_listener = std::make_unique<StreamListener>(services);
    StreamListener::setSharedInstance(m_listener.get());
    m_conductor = std::make_unique<AppConductor>(env.manager(), *m_listener, &m_reachability);
    m_conductor->attachSleepWatcher(m_sleep);

    m_toggle.setCheckable(true);
    connect(&m_toggle, &QAction::triggered, this, [this] { m_toggle.setChecked(m_conductor->toggleCallMonitor()); });
    connect(m_conductor.get(), &AppConductor::callMonitorChecked, &m_toggle, &QAction::setChecked);
    if (env.manager().isConfigured())
        m_conductor->activateSettingsAndCallMonitor();
}
