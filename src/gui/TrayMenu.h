#pragma once

#include <QMenu>
#include <QObject>
#include <QStringList>

#include <functional>

class AppConductor;
class ExtensionsMenu;
class LatestCallsMenu;
class LocationsMenu;
class NotificationCenter;
class StreamListener;
class TNCallinglist;
class RouterSessions;
class TNPreferencesManager;

// The status item's menu: windows, latest calls, extensions, the switches (Wi-Fi, call monitor,
// remote access), locations and quit. The switches' check marks follow "WLANSTATUS",
// "CALLMONITORSTATUS" and "ACTIVATESETTINGS".
class TrayMenu : public QObject
{
    Q_OBJECT
public:
    struct Hooks
    {
        // Sends "WLANon" or "WLANoff" to the router in the background; unset: no Wi-Fi switch.
        std::function<void(const QString& command)> switchWLAN;
        // Asks before the Wi-Fi goes off: Yes, No or Cancel (a dialog unless set).
        std::function<int()> askWLANoff;
        // Sends "DECTon" or "DECToff" in the background; unset: no DECT switch.
        std::function<void(const QString& command)> switchDECT;
        // Asks before DECT goes off: true to switch (a dialog unless set).
        std::function<bool()> askDECToff;
    };

    TrayMenu(NotificationCenter& center, TNPreferencesManager& manager, RouterSessions& sessions,
             StreamListener& listener, AppConductor& conductor, TNCallinglist* calls, Hooks hooks,
             QObject* parent = nullptr);
    ~TrayMenu() override;

    QMenu* menu() { return &m_menu; }
    QAction* wlanItem() const { return m_wlan; }
    QAction* dectItem() const { return m_dect; }
    QAction* callMonitorItem() const { return m_callMonitor; }
    QAction* remoteAccessItem() const { return m_remote; }
    QAction* monitorWindowItem() const { return m_monitorWindow; }
    QAction* newCallItem() const { return m_newCall; }
    QAction* setupItem() const { return m_setup; }
    QAction* trafficItem() const { return m_traffic; }
    QAction* callListItem() const { return m_callList; }
    QAction* settingsItem() const { return m_settings; }
    QAction* voicemailItem() const { return m_voicemail; }
    QAction* phonebookItem() const { return m_phonebook; }
    ExtensionsMenu* extensionsMenu() const { return m_extensions; }
    LatestCallsMenu* latestCallsMenu() const { return m_latest; }
    LocationsMenu* locationsMenu() const { return m_locations; }

    // setWLANStatus: enabled once the router's state is known, checked when a band is on.
    void setWLANStatus();
    void setCallmonitorStatus();
    // Enabled once the router's DECT state is known, checked while it is on.
    void setDECTStatus();
    // The remote-access item: enabled only with a remote host, checked from remoteAccess.
    void setRemoteAccessStatus();

signals:
    void openCallMonitor();
    void openCallList();
    void openVoicemail();
    void openPhonebook();
    void newCall(const QString& number, const QStringList& contact);
    void setupRouter();
    void openTrafficMonitor();
    void openSettings();
    void quitRequested();

private:
    void toggleWLAN();
    void toggleDECT();
    void toggleRemoteAccess();

    NotificationCenter& m_center;
    TNPreferencesManager& m_manager;
    RouterSessions& m_sessions;
    StreamListener& m_listener;
    AppConductor& m_conductor;
    Hooks m_hooks;
    QMenu m_menu;
    QAction* m_monitorWindow = nullptr;
    QAction* m_newCall = nullptr;
    QAction* m_callList = nullptr;
    QAction* m_voicemail = nullptr;
    QAction* m_phonebook = nullptr;
    QAction* m_wlan = nullptr;
    QAction* m_dect = nullptr;
    QAction* m_callMonitor = nullptr;
    QAction* m_remote = nullptr;
    QAction* m_setup = nullptr;
    QAction* m_traffic = nullptr;
    QAction* m_settings = nullptr;
    ExtensionsMenu* m_extensions = nullptr;
    LatestCallsMenu* m_latest = nullptr;
    LocationsMenu* m_locations = nullptr;
};
