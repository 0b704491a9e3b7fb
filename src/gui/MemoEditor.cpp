#include "MemoEditor.h"

#include "app/CallMemo.h"
#include "calllist/TNCallinglist.h"
#include "monitor/StreamListener.h"

#include <QLineEdit>
#include <QPlainTextEdit>

MemoEditor::MemoEditor(StreamListener& listener, TNCallinglist& calls, int profile, const QString& uid,
                       QWidget* parent)
    : MemoForm(parent), m_listener(listener), m_calls(calls), m_profile(profile), m_uid(uid)
{
    QString who;
    if (const qsizetype i = listener.indexForUID(uid); i != StreamListener::NotFound) {
        const CallRecord& call = listener.monitorCalls().at(i);
        who = call.contactName().isEmpty() ? call.number
                                           : QStringLiteral("%1 (%2)").arg(call.contactName(), call.number);
        // A memo saved earlier in this call is opened again.
        if (call.MemoID)
            if (const auto memo = calls.memos().getDetailMemoWithID(*call.MemoID)) {
                subjectField()->setText(memo->subject);
                bodyField()->setPlainText(memo->body);
            }
    }
    if (subjectField()->text().isEmpty())
        subjectField()->setText(who.isEmpty() ? tr("Call") : tr("Call with %1").arg(who));
    setWindowTitle(tr("Memo – %1").arg(who.isEmpty() ? tr("withheld number") : who));
    layOut(QString(), QString());
}

bool MemoEditor::save()
{
    const qint64 id = methods::saveMemoForCall(m_listener, m_calls, m_profile, m_uid, subjectField()->text(),
                                               bodyField()->toPlainText());
    if (id < 0) {
        showError(
            tr("The memo could not be saved: the call is no longer listed or the call database refused it."));
        return false;
    }
    return true;
}
