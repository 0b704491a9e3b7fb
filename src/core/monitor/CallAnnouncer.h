#pragma once

#include "monitor/CallTable.h"

#include <QObject>

#include <functional>
#include <memory>

class NotificationCenter;
class NotificationPresenter;
class TNPreferences;
class TNScriptManager;

// Where calls are announced; every member may stay unset.
struct CallAnnouncerHooks
{
    NotificationPresenter* presenter = nullptr;
    TNScriptManager* scripts = nullptr;
    // Subject and body of a memo attached during the call.
    std::function<std::pair<QString, QString>(qint64 memoID)> memoDetails;
    // Shows the call monitor window when no notifications are enabled.
    std::function<void()> openCallmonitorWindow;
    // Opens a URL through the program's own URL handling ("dial://<number>" on a click).
    std::function<void(const QString& url)> openURL;
};

// Tells the user and the user's scripts about the calls in a table: desktop notifications when
// the location wants them, the call monitor window when it does not.
class CallAnnouncer : public QObject
{
    Q_OBJECT
public:
    // sender is what the posted notifications name as their object.
    CallAnnouncer(CallTable& table, NotificationCenter& center,
                  std::function<std::shared_ptr<TNPreferences>()> preferences, CallAnnouncerHooks hooks,
                  QObject* sender);

    // After a monitor line changed the table.
    void lineApplied(const CallTable::Change& change);
    // After the program dialled a call itself.
    void callDialled(const CallRecord& call);
    // A caller's name arrived late: the notification is shown again with it.
    void nameArrived(const QString& uid);

    // The call's notification, delivered through the presenter when the location wants them or
    // when there is no window to show instead (a terminal).
    void showGrowlForCall(const CallRecord& call);
    bool notificationsEnabled() const;

private:
    void requestWindow();
    void runScripts(int state, CallRecord& call);

    CallTable& m_table;
    NotificationCenter& m_center;
    std::function<std::shared_ptr<TNPreferences>()> m_preferences;
    CallAnnouncerHooks m_hooks;
    QObject* m_sender;
};
