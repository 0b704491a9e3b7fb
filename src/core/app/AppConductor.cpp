#include "app/AppConductor.h"

#include "base/DialURL.h"
#include "base/Logging.h"
#include "base/NotificationCenter.h"
#include "base/NotificationNames.h"
#include "base/SettingsKeys.h"
#include "base/SettingsStore.h"
#include "base/TNPreferencesManager.h"
#include "monitor/NetworkReachability.h"
#include "monitor/SleepWatcher.h"
#include "monitor/StreamListener.h"

AppConductor::AppConductor(TNPreferencesManager& manager, StreamListener& listener,
                           NotificationCenter& center, NetworkReachability* reachability, Hooks hooks,
                           QObject* parent)
    : QObject(parent), m_manager(manager), m_listener(listener), m_center(center),
      m_reachability(reachability), m_hooks(std::move(hooks)),
      m_reconnector(listener, ReconnectBackoff(), this)
{
    m_statusTimer.setInterval(StatusIntervalMs);
    connect(&m_statusTimer, &QTimer::timeout, this, &AppConductor::checkWLANStatus);
    if (m_reachability)
        connect(m_reachability, &NetworkReachability::reachabilityChanged, this,
                &AppConductor::checkInternetConnection);
    m_center.addObserver(this, Notifications::ACTIVATESETTINGS,
                         [this](const Notification&) { activateSettingsAndCallMonitor(); });
    m_center.addObserver(this, Notifications::CALLMONITORSTATUS,
                         [this](const Notification&) { emit callMonitorChecked(m_listener.isConnected()); });
}

void AppConductor::setBackoff(ReconnectBackoff backoff)
{
    m_reconnector.setBackoff(backoff);
}

bool AppConductor::hasCurrentLocation() const
{
    return m_manager.store().contains(keys::CurrentLocation) && m_manager.currentPreferences();
}

void AppConductor::activateSettingsAndCallMonitor()
{
    m_manager.activateCurrentLocation();
    m_center.post(Notifications::UPDATEABFAXLISTCLEAN, this);
    activateCallMonitor();
    checkWLANStatus();
    const auto prefs = m_manager.currentPreferences();
    if (m_manager.store().value(keys::ListAtStartup).toBool()) {
        if (m_hooks.loadCallList)
            m_hooks.loadCallList();
        m_center.post(Notifications::UPDATEABFAXLIST, this);
    }
    m_statusTimer.stop();
    if (prefs && !prefs->hostName.isEmpty())
        m_statusTimer.start();
}

void AppConductor::connectListener()
{
    const auto prefs = m_manager.currentPreferences();
    if (!prefs || prefs->hostName.isEmpty())
        return;
    m_reconnector.start(prefs->hostName, quint16(prefs->callMonitorPort));
}

void AppConductor::activateCallMonitor()
{
    const auto prefs = m_manager.currentPreferences();
    m_reconnector.stop();
    if (m_listener.isConnected())
        m_listener.disconnectFromHost();
    if (!prefs || !prefs->useCallmonitor)
        return;
    connectListener();
    if (m_manager.store().value(keys::ListAferCall).toBool() && m_hooks.loadCallList)
        m_hooks.loadCallList();
}

void AppConductor::checkInternetConnection()
{
    if (m_asleep || !hasCurrentLocation())
        return;
    const auto prefs = m_manager.currentPreferences();
    if (!prefs->useCallmonitor || m_listener.isConnected() || m_listener.isConnecting() ||
        prefs->hostName.isEmpty())
        return;
    if (m_reachability && !m_reachability->isReachable(prefs->hostName)) {
        qCInfo(lcApp) << "Router not reachable; the call monitor waits for the network";
        return;
    }
    connectListener();
    if (m_hooks.loadCallList)
        m_hooks.loadCallList();
    m_center.post(Notifications::UPDATEABFAXLIST, this);
}

void AppConductor::prepareSleep()
{
    m_asleep = true;
    m_statusTimer.stop();
    m_reconnector.stop();
    if (m_listener.isConnected())
        m_listener.disconnectFromHost();
}

void AppConductor::handleWakeUp()
{
    m_asleep = false;
    checkInternetConnection();
    m_statusTimer.start();
}

void AppConductor::attachSleepWatcher(SleepWatcher& watcher)
{
    connect(&watcher, &SleepWatcher::aboutToSleep, this, &AppConductor::prepareSleep);
    connect(&watcher, &SleepWatcher::wokeUp, this, &AppConductor::handleWakeUp);
}

void AppConductor::checkWLANStatus()
{
    if (!hasCurrentLocation() || m_manager.currentPreferences()->hostName.isEmpty())
        return;
    // The router status work lands with the router's own classes; until then there is nothing to ask.
    if (m_hooks.checkRouterStatus)
        m_hooks.checkRouterStatus();
}

bool AppConductor::toggleCallMonitor()
{
    const auto prefs = m_manager.currentPreferences();
    if (!prefs)
        return false;
    prefs->useCallmonitor = !prefs->useCallmonitor;
    m_manager.saveCurrentLocationValue(prefs->useCallmonitor, keys::CallMonitor);
    if (prefs->useCallmonitor) {
        connectListener();
    } else {
        m_reconnector.stop();
        m_listener.disconnectFromHost();
    }
    emit callMonitorChecked(prefs->useCallmonitor);
    return prefs->useCallmonitor;
}

void AppConductor::handleURL(const QString& url)
{
    if (const auto number = methods::numberFromDialURL(url))
        emit newCallRequested(*number, {QString(), QString(), QString()});
    else
        emit openURLExternally(url);
}
