#include "CallMemoDialog.h"

#include "calllist/TNCallinglist.h"

#include <QLineEdit>
#include <QPlainTextEdit>

CallMemoDialog::CallMemoDialog(TNCallinglist& calls, int profile, const CallRow& call,
                               const QString& dateText, QWidget* parent)
    : MemoForm(parent), m_calls(calls), m_profile(profile), m_call(call)
{
    const QString number = call.phonenumber.isEmpty() ? tr("withheld number") : call.phonenumber;
    const QString who = call.name.isEmpty() ? number : QStringLiteral("%1 (%2)").arg(call.name, number);
    if (const auto memo = calls.memos().memoForCall(profile, call.phonenumber, call.calldate)) {
        m_memoID = memo->rowid;
        subjectField()->setText(memo->subject);
        bodyField()->setPlainText(memo->body);
    } else {
        subjectField()->setText(tr("Call with %1").arg(who));
    }
    setWindowTitle(tr("Memo – %1").arg(who));
    layOut(tr("Call:"), QStringLiteral("%1, %2").arg(dateText, who));
}

bool CallMemoDialog::save()
{
    bool ok = false;
    if (m_memoID > 0) {
        ok = m_calls.updateMemoWithID(m_memoID, subjectField()->text(), bodyField()->toPlainText());
    } else {
        m_memoID = m_calls.setMemoForProfile(m_profile, m_call.phonenumber, m_call.calldate,
                                             subjectField()->text(), bodyField()->toPlainText());
        ok = m_memoID > 0;
    }
    if (!ok)
        showError(tr("The memo could not be saved: the call database refused it."));
    return ok;
}
