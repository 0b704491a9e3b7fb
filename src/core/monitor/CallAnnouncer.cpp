#include "monitor/CallAnnouncer.h"

#include "base/NotificationCenter.h"
#include "base/NotificationNames.h"
#include "base/TNPreferences.h"
#include "monitor/CallNotificationText.h"
#include "monitor/NotificationPresenter.h"
#include "monitor/TNScriptManager.h"

CallAnnouncer::CallAnnouncer(CallTable& table, NotificationCenter& center,
                             std::function<std::shared_ptr<TNPreferences>()> preferences,
                             CallAnnouncerHooks hooks, QObject* sender)
    : QObject(sender), m_table(table), m_center(center), m_preferences(std::move(preferences)),
      m_hooks(std::move(hooks)), m_sender(sender)
{
    if (m_hooks.presenter) {
        connect(m_hooks.presenter, &NotificationPresenter::activated, this, [this](const QString& uid) {
            // A click dials the caller back through the program's URL handling.
            const qsizetype i = m_table.indexForUID(uid);
            if (i == CallTable::NotFound || m_table.calls().at(i).number.isEmpty() || !m_hooks.openURL)
                return;
            m_hooks.openURL(QStringLiteral("dial://%1").arg(m_table.calls().at(i).number));
        });
    }
}

bool CallAnnouncer::notificationsEnabled() const
{
    const auto p = m_preferences ? m_preferences() : nullptr;
    return p && (p->useGrowl || p->useNotifications);
}

void CallAnnouncer::requestWindow()
{
    if (m_hooks.openCallmonitorWindow)
        m_hooks.openCallmonitorWindow();
    m_center.post(Notifications::UPDATECALLMONITORDETAILS, m_sender);
}

void CallAnnouncer::lineApplied(const CallTable::Change& change)
{
    if (change.index != CallTable::NotFound) {
        if (change.announce)
            showGrowlForCall(m_table.calls().at(change.index));
        if (change.scriptState)
            runScripts(*change.scriptState, m_table.at(change.index));
    }
    if (change.showCall && !m_table.calls().isEmpty() && !notificationsEnabled())
        requestWindow();
}

void CallAnnouncer::runScripts(int state, CallRecord& call)
{
    if (state == TNScriptManager::IncomingEnded || state == TNScriptManager::OutgoingEnded) {
        // The scripts of an ended call get the memo written during it.
        if (call.MemoID && m_hooks.memoDetails) {
            std::tie(call.MemoSubject, call.MemoBody) = m_hooks.memoDetails(*call.MemoID);
        } else {
            call.MemoSubject.clear();
            call.MemoBody.clear();
        }
    }
    const auto p = m_preferences ? m_preferences() : nullptr;
    if (m_hooks.scripts && p)
        m_hooks.scripts->executeAppleScriptsWithCallState(state, call, p->appleScripts,
                                                          p->appleScriptsParams);
}

void CallAnnouncer::callDialled(const CallRecord& call)
{
    if (notificationsEnabled())
        showGrowlForCall(call);
    else
        requestWindow();
}

void CallAnnouncer::nameArrived(const QString& uid)
{
    const qsizetype i = m_table.indexForUID(uid);
    if (i == CallTable::NotFound)
        return;
    m_center.post(Notifications::UPDATECALLMONITORDETAILS, m_sender);
    m_center.post(Notifications::RELOADCURRENTCALLS, m_sender);
    showGrowlForCall(m_table.calls().at(i));
}

void CallAnnouncer::showGrowlForCall(const CallRecord& call)
{
    // With notifications off the call monitor window takes their place, where there is one.
    NotificationPresenter* presenter = m_hooks.presenter;
    if (!presenter || (!notificationsEnabled() && m_hooks.openCallmonitorWindow) || !presenter->isAvailable())
        return;
    const std::optional<CallNotification> note = methods::notificationForCall(call);
    if (!note)
        return;
    const QString uid = call.UID;
    const QVariant handle = presenter->deliver(*note, call.UILocalNote);
    // The next notification of the same call replaces this one.
    if (const qsizetype i = m_table.indexForUID(uid); i != CallTable::NotFound)
        m_table.at(i).UILocalNote = handle;
}
