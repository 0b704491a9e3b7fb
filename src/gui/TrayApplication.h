#pragma once

#include "DialWindow.h"

#include <QObject>
#include <QPointer>
#include <QStringList>

#include <memory>

class AppEnvironment;
class CallListWindow;
class CallMonitorWindow;
class NotificationPresenter;
class PhonebookWindow;
class SettingsWindow;
class SetupWizard;
class TrafficDisplay;
class TrafficSampler;
class TrafficWindow;
class TNStatusMenu;
class CallMonitorService;
class TrayMenu;
class VoicemailWindow;

// The tray application put together: the call monitor and its conductor, the status item and
// its menu, the call monitor and new-call windows, and what a second start hands over.
class TrayApplication : public QObject
{
    Q_OBJECT
public:
    struct Options
    {
        // Where call notifications go; the desktop's notification service when null.
        NotificationPresenter* presenter = nullptr;
        // Runs router commands for dialling and switches; none: those stay disabled.
        DialWindow::RouterCommand routerCommand;
        // Sends "WLANon"/"WLANoff" in the background; none: no Wi-Fi switch.
        std::function<void(const QString& command)> switchWLAN;
        // Answers the question before the Wi-Fi goes off (tests); a dialog unless set.
        std::function<int()> askWLANoff;
        // Sends "DECTon"/"DECToff" in the background; none: no DECT switch.
        std::function<void(const QString& command)> switchDECT;
        // Answers the question before DECT goes off (tests); a dialog unless set.
        std::function<bool()> askDECToff;
        // Asks the router for its status in the background (every 600 s and on activation).
        std::function<void()> checkRouterStatus;
        // Reads traffic variables with a session (on a pool thread); none: the charts show zero.
        std::function<QStringList(const QStringList& variables)> trafficQuery;
        // Tests and screenshots: neither status item nor taskbar window, whatever
        // "MENU_DOCK_STATE" says.
        bool headless = false;
    };

    // Shows what went wrong in router work (wrong password, missing rights); any thread.
    using FailurePresenter = std::function<void(const RouterFailure&)>;
    // The router's own commands for the current location: dialling, the Wi-Fi switch and the
    // status check, each on a background thread. Their failures go to showFailure when set.
    static Options routerOptions(AppEnvironment& env, FailurePresenter showFailure = {});

    TrayApplication(AppEnvironment& env, Options options, QObject* parent = nullptr);
    ~TrayApplication() override;

    // Start-up after construction: activation when configured, the taskbar window, arguments.
    void start(const QStringList& arguments);
    // A URL ("tel:", "callto:", "dial:"), "--new-call", "--calllist" or "--voicemail", from this
    // start or a later one.
    void handleArguments(const QStringList& arguments);

    CallMonitorService& callMonitor() { return *m_monitor; }
    TrayMenu& menu() { return *m_menu; }
    TNStatusMenu& statusMenu() { return *m_status; }
    CallMonitorWindow& monitorWindow();
    DialWindow& dialWindow();
    // Null when the call database could not be opened.
    CallListWindow* callListWindow();

    void openCallmonitorWindow();
    void openCallList();
    // The answering machine and fax window; one at a time.
    VoicemailWindow& voicemailWindow();
    void openVoicemail();
    PhonebookWindow& phonebookWindow();
    void openPhonebook();
    void openNewCall(const QString& number, const QStringList& contact);
    void openMemoEditor(const QString& uid);
    // The setup assistant; one window at a time.
    void openSetupAssistant();
    SetupWizard* setupWizard() const;
    // The online monitor: the panel and the sampling behind it and the tray's traffic display.
    void openTrafficWindow();
    TrafficWindow& trafficWindow();
    TrafficSampler& trafficSampler();
    // The settings window; one at a time.
    void openSettings();
    SettingsWindow* settingsWindow() const;

private:
    void updateLocationName();
    // At start: the web directories' definitions, refreshed in the background when wanted.
    void refreshLookupDefinitions();

    AppEnvironment& m_env;
    Options m_options;
    std::unique_ptr<NotificationPresenter> m_ownPresenter;
    std::unique_ptr<TNStatusMenu> m_status;
    std::unique_ptr<CallMonitorService> m_monitor;
    std::unique_ptr<TrayMenu> m_menu;
    std::unique_ptr<CallMonitorWindow> m_monitorWindow;
    std::unique_ptr<DialWindow> m_dialWindow;
    QPointer<SetupWizard> m_setupWizard;
    std::unique_ptr<TrafficDisplay> m_traffic;
    std::unique_ptr<CallListWindow> m_callListWindow;
    QPointer<SettingsWindow> m_settingsWindow;
    std::unique_ptr<VoicemailWindow> m_voicemailWindow;
    std::unique_ptr<PhonebookWindow> m_phonebookWindow;
};
