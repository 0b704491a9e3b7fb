#include "MemoForm.h"

#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>

MemoForm::MemoForm(QWidget* parent)
    : QDialog(parent), m_subject(new QLineEdit(this)), m_body(new QPlainTextEdit(this)),
      m_error(new QLabel(this))
{
    m_error->setStyleSheet(QStringLiteral("color: #c8372d"));
    m_error->setWordWrap(true);
    m_error->hide();
}

void MemoForm::layOut(const QString& callLabel, const QString& callText)
{
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Save | QDialogButtonBox::Cancel, this);
    connect(buttons, &QDialogButtonBox::accepted, this, &MemoForm::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &MemoForm::reject);
    auto* form = new QFormLayout(this);
    if (!callText.isEmpty())
        form->addRow(callLabel, new QLabel(callText, this));
    form->addRow(tr("Subject:"), m_subject);
    form->addRow(tr("Note:"), m_body);
    form->addRow(m_error);
    form->addRow(buttons);
    resize(420, 300);
}

void MemoForm::showError(const QString& text)
{
    m_error->setText(text);
    m_error->show();
}

void MemoForm::accept()
{
    if (save())
        QDialog::accept();
}
