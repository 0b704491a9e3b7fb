#include "CallMemoDialog.h"

#include "calllist/TNCallinglist.h"

#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>

CallMemoDialog::CallMemoDialog(TNCallinglist& calls, int profile, const CallRow& call, const QString& dateText,
                               QWidget* parent)
    : QDialog(parent), m_calls(calls), m_profile(profile), m_call(call)
{
    m_subject = new QLineEdit(this);
    m_body = new QPlainTextEdit(this);
    m_error = new QLabel(this);
    m_error->setStyleSheet(QStringLiteral("color: #c8372d"));
    m_error->setWordWrap(true);
    m_error->hide();
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Save | QDialogButtonBox::Cancel, this);
    connect(buttons, &QDialogButtonBox::accepted, this, &CallMemoDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &CallMemoDialog::reject);

    const QString number = call.phonenumber.isEmpty() ? tr("withheld number") : call.phonenumber;
    const QString who = call.name.isEmpty() ? number : QStringLiteral("%1 (%2)").arg(call.name, number);
    if (const auto memo = calls.memos().memoForCall(profile, call.phonenumber, call.calldate)) {
        m_memoID = memo->rowid;
        m_subject->setText(memo->subject);
        m_body->setPlainText(memo->body);
    } else {
        m_subject->setText(tr("Call with %1").arg(who));
    }
    setWindowTitle(tr("Memo – %1").arg(who));

    auto* form = new QFormLayout(this);
    form->addRow(tr("Call:"), new QLabel(QStringLiteral("%1, %2").arg(dateText, who), this));
    form->addRow(tr("Subject:"), m_subject);
    form->addRow(tr("Note:"), m_body);
    form->addRow(m_error);
    form->addRow(buttons);
    resize(420, 300);
}

bool CallMemoDialog::save()
{
    bool ok = false;
    if (m_memoID > 0) {
        ok = m_calls.updateMemoWithID(m_memoID, m_subject->text(), m_body->toPlainText());
    } else {
        m_memoID = m_calls.setMemoForProfile(m_profile, m_call.phonenumber, m_call.calldate, m_subject->text(),
                                             m_body->toPlainText());
        ok = m_memoID > 0;
    }
    if (!ok) {
        m_error->setText(tr("The memo could not be saved: the call database refused it."));
        m_error->show();
    }
    return ok;
}

void CallMemoDialog::accept()
{
    if (save())
        QDialog::accept();
}
