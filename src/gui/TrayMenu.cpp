#include "TrayMenu.h"

#include "ExtensionsMenu.h"
#include "LatestCallsMenu.h"
#include "LocationsMenu.h"
#include "MenuRebuild.h"

#include "app/AppConductor.h"
#include "base/Localization.h"
#include "base/NotificationNames.h"
#include "base/SettingsKeys.h"
#include "base/TNPreferencesManager.h"
#include "box/RouterSession.h"
#include "box/RouterSessions.h"
#include "monitor/StreamListener.h"

#include <QAbstractButton>
#include <QApplication>
#include <QMessageBox>
#include <QMutexLocker>

namespace {
// Bits of the router's Wi-Fi state: 8 2.4 GHz off, 16 on, 64 5 GHz off, 128 on.
constexpr int WlanKnown = 8 | 16;
constexpr int WlanOn = 16 | 128;

int wlanStatusOf(const RouterSession& session)
{
    QMutexLocker lock(&session.mutex());
    return session.WLANStatus;
}

// The router's DECT state: 8 off, 16 on, anything else not known.
constexpr int DectOff = 8;
constexpr int DectOn = 16;

int dectStatusOf(const RouterSession& session)
{
    QMutexLocker lock(&session.mutex());
    return session.DECTStatus;
}
} // namespace

TrayMenu::TrayMenu(NotificationCenter& center, TNPreferencesManager& manager, RouterSessions& sessions,
                   StreamListener& listener, AppConductor& conductor, TNCallinglist* calls, Hooks hooks,
                   QObject* parent)
    : QObject(parent), m_center(center), m_manager(manager), m_sessions(sessions), m_listener(listener),
      m_conductor(conductor), m_hooks(std::move(hooks))
{
    m_monitorWindow = m_menu.addAction(tr("Call monitor window"));
    connect(m_monitorWindow, &QAction::triggered, this, &TrayMenu::openCallMonitor);
    m_newCall = m_menu.addAction(tr("New call…"));
    connect(m_newCall, &QAction::triggered, this, [this] { emit newCall(QString(), {}); });
    m_callList = m_menu.addAction(tr("Call list"));
    connect(m_callList, &QAction::triggered, this, &TrayMenu::openCallList);
    m_voicemail = m_menu.addAction(tr("Answering machine and fax"));
    connect(m_voicemail, &QAction::triggered, this, &TrayMenu::openVoicemail);
    m_phonebook = m_menu.addAction(tr("Router phone book"));
    connect(m_phonebook, &QAction::triggered, this, &TrayMenu::openPhonebook);
    m_traffic = m_menu.addAction(tr("Online monitor"));
    connect(m_traffic, &QAction::triggered, this, &TrayMenu::openTrafficMonitor);

    m_latest = new LatestCallsMenu(center, manager, calls, &m_menu);
    m_menu.addMenu(m_latest);
    connect(m_latest, &LatestCallsMenu::dialNumber, this, &TrayMenu::newCall);
    m_extensions = new ExtensionsMenu(center, manager, listener, &m_menu);
    m_menu.addMenu(m_extensions);
    // callExtension: an internal call is "**" and the extension's number.
    connect(m_extensions, &ExtensionsMenu::callExtension, this,
            [this](const QString& intern, const QString& title) {
                emit newCall(QStringLiteral("**") + intern, {QString(), title, QString()});
            });

    m_menu.addSeparator();
    m_wlan = m_menu.addAction(tr("Wi-Fi"));
    m_wlan->setCheckable(true);
    connect(m_wlan, &QAction::triggered, this, &TrayMenu::toggleWLAN);
    m_dect = m_menu.addAction(tr("DECT"));
    m_dect->setCheckable(true);
    connect(m_dect, &QAction::triggered, this, &TrayMenu::toggleDECT);
    m_callMonitor = m_menu.addAction(tr("Call monitor"));
    m_callMonitor->setCheckable(true);
    connect(m_callMonitor, &QAction::triggered, this,
            [this] { m_callMonitor->setChecked(m_conductor.toggleCallMonitor()); });
    connect(&m_conductor, &AppConductor::callMonitorChecked, m_callMonitor, &QAction::setChecked);
    m_remote = m_menu.addAction(tr("Remote access"));
    m_remote->setCheckable(true);
    connect(m_remote, &QAction::triggered, this, &TrayMenu::toggleRemoteAccess);
    m_locations = new LocationsMenu(center, manager, &m_menu);
    m_menu.addMenu(m_locations);

    m_setup = m_menu.addAction(tr("Set up a router…"));
    connect(m_setup, &QAction::triggered, this, &TrayMenu::setupRouter);
    m_settings = m_menu.addAction(tr("Settings…"));
    connect(m_settings, &QAction::triggered, this, &TrayMenu::openSettings);

    m_menu.addSeparator();
    QAction* quit = m_menu.addAction(tr("Quit Tondrel"));
    connect(quit, &QAction::triggered, this, &TrayMenu::quitRequested);

    rebuildOn(m_center, this, {Notifications::WLANSTATUS}, [this] { setWLANStatus(); });
    rebuildOn(m_center, this, {Notifications::CALLMONITORSTATUS}, [this] { setCallmonitorStatus(); });
    rebuildOn(m_center, this, {Notifications::DECTSTATUS}, [this] { setDECTStatus(); });
    rebuildOn(m_center, this, {Notifications::ACTIVATESETTINGS}, [this] {
        setWLANStatus();
        setDECTStatus();
        setCallmonitorStatus();
        setRemoteAccessStatus();
    });
    setWLANStatus();
    setDECTStatus();
    setCallmonitorStatus();
    setRemoteAccessStatus();
}

TrayMenu::~TrayMenu() = default;

void TrayMenu::setWLANStatus()
{
    const auto prefs = m_manager.currentPreferences();
    const int status = prefs ? wlanStatusOf(*m_sessions.forLocation(*prefs)) : 0;
    m_wlan->setEnabled(m_hooks.switchWLAN && prefs && !prefs->isDummy() && (status & WlanKnown));
    m_wlan->setChecked(status & WlanOn);
}

void TrayMenu::setDECTStatus()
{
    const auto prefs = m_manager.currentPreferences();
    const int status = prefs ? dectStatusOf(*m_sessions.forLocation(*prefs)) : 0;
    m_dect->setEnabled(m_hooks.switchDECT && prefs && !prefs->isDummy() &&
                       (status == DectOff || status == DectOn));
    m_dect->setChecked(status == DectOn);
}

void TrayMenu::toggleDECT()
{
    const auto prefs = m_manager.currentPreferences();
    if (!prefs || !m_hooks.switchDECT)
        return;
    if (dectStatusOf(*m_sessions.forLocation(*prefs)) != DectOn) {
        m_hooks.switchDECT(QStringLiteral("DECTon"));
        return;
    }
    // Cordless telephones go silent: asked first, like the Wi-Fi.
    const bool off = m_hooks.askDECToff
                         ? m_hooks.askDECToff()
                         : QMessageBox::question(nullptr, tr("DECT"),
                                                 tr("Switch DECT off? Cordless telephones can then "
                                                    "neither ring nor make calls.")) == QMessageBox::Yes;
    if (off)
        m_hooks.switchDECT(QStringLiteral("DECToff"));
    else
        m_dect->setChecked(true);
}

void TrayMenu::setCallmonitorStatus()
{
    const auto prefs = m_manager.currentPreferences();
    m_callMonitor->setEnabled(prefs && !prefs->isDummy() && !prefs->hostName.isEmpty());
    // The check mark is the switch (stored per location); the icon shows the connection.
    m_callMonitor->setChecked(prefs && prefs->useCallmonitor);
}

void TrayMenu::setRemoteAccessStatus()
{
    const auto prefs = m_manager.currentPreferences();
    m_remote->setEnabled(prefs && !prefs->remoteHostName.isEmpty());
    m_remote->setChecked(prefs && prefs->remoteAccess);
}

void TrayMenu::toggleWLAN()
{
    const auto prefs = m_manager.currentPreferences();
    if (!prefs || !m_hooks.switchWLAN)
        return;
    const bool on = wlanStatusOf(*m_sessions.forLocation(*prefs)) & WlanOn;
    if (!on) {
        m_hooks.switchWLAN(QStringLiteral("WLANon"));
        return;
    }
    int answer = 0;
    if (m_hooks.askWLANoff) {
        answer = m_hooks.askWLANoff();
    } else {
        QMessageBox box(QMessageBox::Question, Localization::localized(QStringLiteral("WLANoff")),
                        Localization::localized(QStringLiteral("askWLANoff")),
                        QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel);
        box.button(QMessageBox::Yes)->setText(Localization::localized(QStringLiteral("Yes")));
        box.button(QMessageBox::No)->setText(Localization::localized(QStringLiteral("No")));
        box.button(QMessageBox::Cancel)->setText(Localization::localized(QStringLiteral("Cancel")));
        box.setDefaultButton(QMessageBox::No);
        box.activateWindow();
        answer = box.exec();
    }
    if (answer == QMessageBox::Yes)
        m_hooks.switchWLAN(QStringLiteral("WLANoff"));
    // Until the router answers, the mark shows what it was.
    setWLANStatus();
}

void TrayMenu::toggleRemoteAccess()
{
    const auto prefs = m_manager.currentPreferences();
    if (!prefs || prefs->remoteHostName.isEmpty()) {
        setRemoteAccessStatus();
        return;
    }
    prefs->remoteAccess = !prefs->remoteAccess;
    m_manager.saveCurrentLocationValue(prefs->remoteAccess, keys::RemoteAccess);
    setRemoteAccessStatus();
}
