#include "TrayApplication.h"

#include "CallMonitorWindow.h"
#include "MemoEditor.h"
#include "MenuRebuild.h"
#include "RouterFailureAlert.h"
#include "TNStatusMenu.h"
#include "TrayMenu.h"
#include "calllist/CallListWindow.h"
#include "phonebook/PhonebookWindow.h"
#include "settings/SettingsWindow.h"
#include "setup/SetupWizard.h"
#include "traffic/TrafficDisplay.h"
#include "traffic/TrafficWindow.h"
#include "voicemail/VoicemailWindow.h"

#include "app/AppEnvironment.h"
#include "app/CallListSync.h"
#include "app/CallMonitorService.h"
#include "app/ServiceAdapters.h"
#include "base/Defaults.h"
#include "base/DialURL.h"
#include "base/Logging.h"
#include "base/NotificationNames.h"
#include "base/SettingsKeys.h"
#include "base/SettingsStore.h"
#include "base/TNPreferencesManager.h"
#include "box/FBBoxSystemHelper.h"
#include "box/RouterCommand.h"
#include "box/RouterSession.h"
#include "box/RouterSessions.h"
#include "calllist/TNCallinglist.h"
#include "contacts/ContactsServices.h"
#include "contacts/FBReverseSearch.h"
#include "monitor/DBusNotificationPresenter.h"

#include <QApplication>
#include <QDesktopServices>
#include <QMessageBox>
#include <QPointer>
#include <QSet>
#include <QSystemTrayIcon>
#include <QThreadPool>
#include <QUrl>

TrayApplication::Options TrayApplication::routerOptions(AppEnvironment& env, FailurePresenter showFailure)
{
    TNPreferencesManager* manager = &env.manager();
    RouterSessions* sessions = &env.routerSessions();
    Options options;
    options.routerCommand = [manager, sessions, showFailure](const QString& action, const QString& number,
                                                             const QString& port) {
        const auto prefs = manager->currentPreferences();
        if (!prefs)
            return RouterCommandResult();
        const auto session = sessions->forLocation(*prefs);
        const RouterCommandResult result =
            FBBoxConnectionHelper::runRouterCommand(action, number, port, prefs.get(), *session);
        if (showFailure && result.failure)
            showFailure(result.failure);
        return result;
    };
    options.switchWLAN = [manager, sessions, showFailure](const QString& command) {
        if (auto prefs = manager->currentPreferences())
            FBBoxSystemHelper::setWLANStatusInBackground(prefs, sessions->forLocation(*prefs), command,
                                                         showFailure);
    };
    options.switchDECT = [manager, sessions, showFailure](const QString& command) {
        if (auto prefs = manager->currentPreferences())
            FBBoxSystemHelper::setDECTStatusInBackground(prefs, sessions->forLocation(*prefs), command,
                                                         showFailure);
    };
    options.trafficQuery = [manager, sessions](const QStringList& variables) {
        const auto prefs = manager->currentPreferences();
        if (!prefs || prefs->isDummy() || prefs->hostName.isEmpty())
            return QStringList();
        return FBBoxConnectionHelper::queryWithSession(variables, prefs.get(),
                                                       *sessions->forLocation(*prefs));
    };
    options.checkRouterStatus = [manager, sessions, showFailure] {
        // Settings and session stay alive until the check ends.
        if (auto prefs = manager->currentPreferences())
            QThreadPool::globalInstance()->start(
                [prefs, session = sessions->forLocation(*prefs), showFailure] {
                    const RouterFailure failure =
                        FBBoxConnectionHelper::checkRouterStatusWithSession(prefs.get(), *session);
                    if (showFailure && failure)
                        showFailure(failure);
                });
    };
    return options;
}

TrayApplication::TrayApplication(AppEnvironment& env, Options options, QObject* parent)
    : QObject(parent), m_env(env), m_options(std::move(options))
{
    NotificationPresenter* presenter = m_options.presenter;
    if (!presenter) {
        m_ownPresenter = std::make_unique<DBusNotificationPresenter>();
        presenter = m_ownPresenter.get();
    }
    m_status = std::make_unique<TNStatusMenu>();
    CallMonitorService::Hooks hooks;
    hooks.presenter = presenter;
    hooks.setStatusItemState = [this](int state) { m_status->setStatusItemState(state); };
    hooks.openCallmonitorWindow = [this] { openCallmonitorWindow(); };
    // A clicked notification comes back as "dial://<number>".
    hooks.openURL = [this](const QString& url) { handleArguments({url}); };
    hooks.checkRouterStatus = m_options.checkRouterStatus;
    hooks.followNetworkAndSleep = true;
    m_monitor = std::make_unique<CallMonitorService>(env, std::move(hooks));
    connect(&m_monitor->conductor(), &AppConductor::newCallRequested, this, &TrayApplication::openNewCall);
    connect(&m_monitor->conductor(), &AppConductor::openURLExternally, this,
            [](const QString& url) { QDesktopServices::openUrl(QUrl(url)); });

    TrayMenu::Hooks menuHooks;
    menuHooks.switchWLAN = m_options.switchWLAN;
    menuHooks.askWLANoff = m_options.askWLANoff;
    menuHooks.switchDECT = m_options.switchDECT;
    menuHooks.askDECToff = m_options.askDECToff;
    m_menu = std::make_unique<TrayMenu>(env.notifications(), env.manager(), env.routerSessions(),
                                        m_monitor->listener(), m_monitor->conductor(), env.callinglist(),
                                        std::move(menuHooks));
    connect(m_menu.get(), &TrayMenu::openCallMonitor, this, &TrayApplication::openCallmonitorWindow);
    connect(m_menu.get(), &TrayMenu::newCall, this, &TrayApplication::openNewCall);
    connect(m_menu.get(), &TrayMenu::setupRouter, this, &TrayApplication::openSetupAssistant);
    connect(m_menu.get(), &TrayMenu::openTrafficMonitor, this, &TrayApplication::openTrafficWindow);
    connect(m_menu.get(), &TrayMenu::openCallList, this, &TrayApplication::openCallList);
    connect(m_menu.get(), &TrayMenu::openSettings, this, &TrayApplication::openSettings);
    connect(m_menu.get(), &TrayMenu::openVoicemail, this, &TrayApplication::openVoicemail);
    connect(m_menu.get(), &TrayMenu::openPhonebook, this, &TrayApplication::openPhonebook);
    connect(m_menu.get(), &TrayMenu::quitRequested, qApp, &QCoreApplication::quit);
    connect(m_status.get(), &TNStatusMenu::clicked, this, &TrayApplication::openCallmonitorWindow);

    rebuildOn(env.notifications(), this,
              {Notifications::REFRESHLATESTCALLSMENU, Notifications::ACTIVATESETTINGS},
              [this] { updateLocationName(); });
    // The core decides the badge; the status item shows it.
    if (CallListSync* sync = env.callListSync())
        connect(sync, &CallListSync::badgeChanged, this,
                [this](const QString& title) { m_status->setTitle(title); });
    rebuildOn(env.notifications(), this, {Notifications::ACTIVATESETTINGS}, [this] {
        if (m_dialWindow)
            m_dialWindow->reloadSources();
    });

    m_traffic = std::make_unique<TrafficDisplay>(env.settings(), *m_status, m_options.trafficQuery);
    rebuildOn(env.notifications(), this, {Notifications::ACTIVATESETTINGS},
              [this] { m_traffic->applySettings(); });
}

TrayApplication::~TrayApplication()
{
    delete m_setupWizard;
    delete m_settingsWindow;
    // Windows and menus observe the listener: they go before it.
    m_callListWindow.reset();
    m_voicemailWindow.reset();
    m_phonebookWindow.reset();
    m_traffic.reset();
    // Router work on pool threads (samples, status checks, commands) uses the settings of the
    // environment, which goes after us: let it end first. Requests time out well within this.
    QThreadPool::globalInstance()->waitForDone(20000);
    m_dialWindow.reset();
    m_monitorWindow.reset();
    m_menu.reset();
    m_monitor.reset();
}

void TrayApplication::start(const QStringList& arguments)
{
    auto dock = TNStatusMenu::dockState(m_env.settings());
    if (TNStatusMenu::showsStatusItem(dock) && !m_options.headless &&
        !QSystemTrayIcon::isSystemTrayAvailable()) {
        // A desktop without a tray: the window carries the menu instead.
        qCInfo(lcApp) << "No system tray here; the call monitor window carries the menu";
        dock = TNStatusMenu::TaskbarOnly;
    }
    if (TNStatusMenu::showsStatusItem(dock) && !m_options.headless)
        m_status->allocStatusItem(m_menu->menu());
    if (m_env.manager().isConfigured()) {
        m_monitor->conductor().activateSettingsAndCallMonitor();
        refreshLookupDefinitions();
        m_traffic->applySettings();
        if (m_env.settings().value(keys::ShowTrafficMonitorWindow).toBool() && !m_options.headless)
            openTrafficWindow();
    } else {
        // First start: the defaults, then the setup assistant.
        methods::writeFirstStartDefaults(m_env.settings());
        qCInfo(lcApp) << "No router configured yet; opening the setup assistant";
        if (!m_options.headless)
            openSetupAssistant();
    }
    updateLocationName();
    if (CallListSync* sync = m_env.callListSync()) {
        sync->refreshBadge();
        m_status->setTitle(sync->badge());
    }
    if (m_env.settings().value(keys::ShowCallinglistOnStart).toInt() == 1)
        openCallList();
    if (TNStatusMenu::showsTaskbarWindow(dock) && !m_options.headless) {
        // The taskbar entry is the call monitor window; with a tray icon as well it starts
        // minimised, without one it carries the menu.
        if (TNStatusMenu::showsStatusItem(dock)) {
            monitorWindow().showMinimized();
        } else {
            monitorWindow().setMenu(m_menu->menu());
            monitorWindow().show();
        }
    }
    handleArguments(arguments);
}

void TrayApplication::refreshLookupDefinitions()
{
    SettingsStore& settings = m_env.settings();
    if (!settings.contains(keys::AutoUpdateReverseSearch)) {
        settings.setValue(keys::AutoUpdateReverseSearch, true);
        settings.sync();
    }
    if (!settings.value(keys::AutoUpdateReverseSearch).toBool())
        return;
    // The download's interval and version checks decide whether anything is fetched.
    FBReverseSearch* search = &m_env.contacts().reverseSearch();
    QThreadPool::globalInstance()->start([search] { search->threadUpdateReverseSearchPlist(); });
}

void TrayApplication::handleArguments(const QStringList& arguments)
{
    for (const QString& argument : arguments) {
        if (argument == u"--new-call") {
            openNewCall(QString(), {});
        } else if (argument == u"--calllist") {
            openCallList();
        } else if (argument == u"--voicemail") {
            openVoicemail();
        } else if (const auto tel = methods::numberFromTelURL(argument)) {
            openNewCall(*tel, {});
        } else if (argument.contains(u':')) {
            m_monitor->conductor().handleURL(argument);
        } else if (!argument.isEmpty()) {
            qCInfo(lcApp).noquote() << "ignored argument:" << argument;
        }
    }
}

CallMonitorWindow& TrayApplication::monitorWindow()
{
    if (!m_monitorWindow) {
        m_monitorWindow = std::make_unique<CallMonitorWindow>(m_env.notifications(), m_monitor->listener(),
                                                              m_env.settings());
        connect(m_monitorWindow.get(), &CallMonitorWindow::memoRequested, this,
                &TrayApplication::openMemoEditor);
    }
    return *m_monitorWindow;
}

DialWindow& TrayApplication::dialWindow()
{
    if (!m_dialWindow)
        m_dialWindow =
            std::make_unique<DialWindow>(m_env.manager(), m_monitor->listener(), m_env.callinglist(),
                                         m_env.contacts(), m_options.routerCommand);
    return *m_dialWindow;
}

void TrayApplication::openCallmonitorWindow()
{
    monitorWindow().openCallmonitorWindow();
}

CallListWindow* TrayApplication::callListWindow()
{
    if (!m_callListWindow && m_env.callinglist()) {
        m_callListWindow =
            std::make_unique<CallListWindow>(m_env.manager(), *m_env.callinglist(), *m_env.callListSync(),
                                             m_env.contacts(), m_monitor->listener(), m_env.settings());
        connect(m_callListWindow.get(), &CallListWindow::callRequested, this, &TrayApplication::openNewCall);
    }
    return m_callListWindow.get();
}

void TrayApplication::openCallList()
{
    if (CallListWindow* window = callListWindow())
        window->openCallList();
    else
        qCWarning(lcApp) << "The call list cannot be shown: the call database is not open";
}

VoicemailWindow& TrayApplication::voicemailWindow()
{
    if (!m_voicemailWindow)
        m_voicemailWindow = std::make_unique<VoicemailWindow>(m_env.notifications(), m_env.manager(),
                                                              m_env.voicemailMarkers(), &m_env.callerNames());
    return *m_voicemailWindow;
}

PhonebookWindow& TrayApplication::phonebookWindow()
{
    if (!m_phonebookWindow)
        m_phonebookWindow = std::make_unique<PhonebookWindow>(m_env.notifications(), m_env.manager(),
                                                              m_env.routerSessions(), m_env.settings());
    return *m_phonebookWindow;
}

void TrayApplication::openPhonebook()
{
    phonebookWindow().show();
    m_phonebookWindow->raise();
    m_phonebookWindow->activateWindow();
}

void TrayApplication::openVoicemail()
{
    voicemailWindow().openVoicemail();
}

void TrayApplication::openNewCall(const QString& number, const QStringList& contact)
{
    dialWindow().openWithNumber(number, contact);
}

void TrayApplication::openMemoEditor(const QString& uid)
{
    const auto prefs = m_env.manager().currentPreferences();
    if (!m_env.callinglist() || !prefs || uid.isEmpty())
        return;
    auto* editor = new MemoEditor(m_monitor->listener(), *m_env.callinglist(), prefs->activeProfileInt, uid,
                                  m_monitorWindow.get());
    editor->setAttribute(Qt::WA_DeleteOnClose);
    editor->setWindowFlag(Qt::Window);
    editor->show();
}

SetupWizard* TrayApplication::setupWizard() const
{
    return m_setupWizard.data();
}

void TrayApplication::openSetupAssistant()
{
    if (!m_setupWizard) {
        m_setupWizard = new SetupWizard(m_env);
        m_setupWizard->setAttribute(Qt::WA_DeleteOnClose);
    }
    m_setupWizard->show();
    m_setupWizard->raise();
    m_setupWizard->activateWindow();
}

TrafficWindow& TrayApplication::trafficWindow()
{
    return m_traffic->window();
}

TrafficSampler& TrayApplication::trafficSampler()
{
    return m_traffic->sampler();
}

void TrayApplication::openTrafficWindow()
{
    m_traffic->openWindow();
}

SettingsWindow* TrayApplication::settingsWindow() const
{
    return m_settingsWindow.data();
}

void TrayApplication::openSettings()
{
    if (!m_settingsWindow) {
        m_settingsWindow = new SettingsWindow(m_env.notifications(), m_env.manager());
        m_settingsWindow->setAttribute(Qt::WA_DeleteOnClose);
    }
    m_settingsWindow->show();
    m_settingsWindow->raise();
    m_settingsWindow->activateWindow();
}

void TrayApplication::updateLocationName()
{
    const auto prefs = m_env.manager().currentPreferences();
    m_status->setLocationName(prefs && !prefs->isDummy() ? prefs->locationName : QString());
}
