#include "TrayCallMonitor.h"

#include "app/AppEnvironment.h"
#include "app/ServiceAdapters.h"
#include "app/SettingsStore.h"
#include "app/SettingsKeys.h"
#include "app/TNPreferencesManager.h"
#include "calllist/JournalLoading.h"

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
    // After every call the router's journal brings the call into the list, when the user wants that.
    SettingsStore* settings = &env.settings();
    services.loadCallList = [settings] {
        if (settings->value(keys::ListAferCall).toBool())
            methods::loadCSVListDatainBackground(QString());
    };
    // The badge of new and missed calls stands in the tray's tool tip.
    JournalLoading::setBadgeHandler([this](const QString& title) {
        QMetaObject::invokeMethod(this, [this, title] { m_tray.setToolTip(title); }, Qt::QueuedConnection);
    });
    m_listener = std::make_unique<StreamListener>(services);
    StreamListener::setSharedInstance(m_listener.get());
    AppConductor::Hooks hooks;
    hooks.loadCallList = [] { methods::loadCSVListDatainBackground(QString()); };
    m_conductor = std::make_unique<AppConductor>(env.manager(), *m_listener, &m_reachability, hooks);
    m_conductor->attachSleepWatcher(m_sleep);

    m_toggle.setCheckable(true);
    connect(&m_toggle, &QAction::triggered, this, [this] { m_toggle.setChecked(m_conductor->toggleCallMonitor()); });
    connect(m_conductor.get(), &AppConductor::callMonitorChecked, &m_toggle, &QAction::setChecked);
    if (env.manager().isConfigured())
        m_conductor->activateSettingsAndCallMonitor();
}
