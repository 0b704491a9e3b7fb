#include "MemoEditor.h"

#include "calllist/TNCallinglist.h"
#include "monitor/CallMemo.h"
#include "monitor/StreamListener.h"

#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>

MemoEditor::MemoEditor(StreamListener& listener, TNCallinglist& calls, int profile, const QString& uid,
                       QWidget* parent)
    : QDialog(parent), m_listener(listener), m_calls(calls), m_profile(profile), m_uid(uid)
{
    m_subject = new QLineEdit(this);
    m_body = new QPlainTextEdit(this);
    m_error = new QLabel(this);
    m_error->setStyleSheet(QStringLiteral("color: #c8372d"));
    m_error->hide();
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Save | QDialogButtonBox::Cancel, this);
    connect(buttons, &QDialogButtonBox::accepted, this, &MemoEditor::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &MemoEditor::reject);

    QString who;
    if (const qsizetype i = listener.indexForUID(uid); i != StreamListener::NotFound) {
        const CallRecord& call = listener.monitorCalls().at(i);
        who = call.contactName().isEmpty() ? call.number : QStringLiteral("%1 (%2)").arg(call.contactName(), call.number);
        // A memo saved earlier in this call is opened again.
        if (call.MemoID)
            if (const auto memo = calls.memos().getDetailMemoWithID(*call.MemoID)) {
                m_subject->setText(memo->subject);
                m_body->setPlainText(memo->body);
            }
    }
    if (m_subject->text().isEmpty())
        m_subject->setText(who.isEmpty() ? tr("Call") : tr("Call with %1").arg(who));
    setWindowTitle(tr("Memo – %1").arg(who.isEmpty() ? tr("withheld number") : who));

    auto* form = new QFormLayout(this);
    form->addRow(tr("Subject:"), m_subject);
    form->addRow(tr("Note:"), m_body);
    form->addRow(m_error);
    form->addRow(buttons);
    resize(420, 300);
}

bool MemoEditor::save()
{
    const qint64 id = methods::saveMemoForCall(m_listener, m_calls, m_profile, m_uid, m_subject->text(),
                                               m_body->toPlainText());
    if (id < 0) {
        m_error->setText(tr("The memo could not be saved: the call is no longer listed or the call "
                            "database refused it."));
        m_error->show();
        return false;
    }
    return true;
}

void MemoEditor::accept()
{
    if (save())
        QDialog::accept();
}
