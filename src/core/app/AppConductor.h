#pragma once

#include "monitor/CallMonitorReconnector.h"

#include <QObject>
#include <QStringList>
#include <QTimer>

#include <functional>

class NetworkReachability;
class NotificationCenter;
class SleepWatcher;
class SettingsStore;
class StreamListener;
class TNPreferencesManager;

// The headless half of the application delegate: activates the current location, keeps the
// call monitor connected (back-off, reachability, sleep and wake), runs the router status timer
// and turns "callto"/"dial" URLs into numbers. The tray adds menus and windows on top.
class AppConductor : public QObject
{
    Q_OBJECT
public:
    struct Hooks
    {
        std::function<void()> checkRouterStatus; // router status (WLAN, DECT) in the background
        std::function<void()> loadCallList;      // journal import in the background
    };

    AppConductor(TNPreferencesManager& manager, StreamListener& listener, NotificationCenter& center,
                 NetworkReachability* reachability, Hooks hooks = {}, QObject* parent = nullptr);

    static constexpr int StatusIntervalMs = 600 * 1000;
    void setStatusIntervalMs(int ms) { m_statusTimer.setInterval(ms); }
    void setBackoff(ReconnectBackoff backoff);

    void activateSettingsAndCallMonitor();
    void activateCallMonitor();
    void checkInternetConnection();
    void prepareSleep();
    void handleWakeUp();
    void checkWLANStatus();
    // Sleep and wake of the machine drive prepareSleep and handleWakeUp.
    void attachSleepWatcher(SleepWatcher& watcher);

    // The menu's call monitor switch: stores "CallMonitor" for the current location only and
    // returns the new state (the check mark).
    bool toggleCallMonitor();

    // handleURLEvent: callto/dial open the new-call window, anything else goes to the system.
    void handleURL(const QString& url);

    bool isStatusTimerActive() const { return m_statusTimer.isActive(); }
    CallMonitorReconnector& reconnector() { return m_reconnector; }

signals:
    void newCallRequested(const QString& number, const QStringList& contact);
    void openURLExternally(const QString& url);
    void callMonitorChecked(bool on);

private:
    void connectListener();
    bool hasCurrentLocation() const;

    TNPreferencesManager& m_manager;
    StreamListener& m_listener;
    NotificationCenter& m_center;
    NetworkReachability* m_reachability;
    Hooks m_hooks;
    CallMonitorReconnector m_reconnector;
    QTimer m_statusTimer;
    bool m_asleep = false;
};
