#include "phonebook/PhonebookContactDialog.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QRegularExpression>
#include <QRegularExpressionValidator>

PhonebookContactDialog::PhonebookContactDialog(QWidget* parent)
    : QDialog(parent), m_name(new QLineEdit(this)), m_home(new QLineEdit(this)),
      m_mobile(new QLineEdit(this)), m_work(new QLineEdit(this)),
      m_important(new QCheckBox(tr("Important person (rings even when calls are blocked)"), this)),
      m_buttons(new QDialogButtonBox(QDialogButtonBox::Save | QDialogButtonBox::Cancel, this))
{
    setWindowTitle(tr("New contact on the router"));
    // Numbers as the telephones dial them: digits, a leading +, blanks and the usual separators.
    static const QRegularExpression number(QStringLiteral("[+0-9*#][0-9 ()/-]*"));
    for (QLineEdit* field : {m_home, m_mobile, m_work}) {
        field->setValidator(new QRegularExpressionValidator(number, field));
        connect(field, &QLineEdit::textChanged, this, &PhonebookContactDialog::update);
    }
    connect(m_name, &QLineEdit::textChanged, this, &PhonebookContactDialog::update);
    auto* form = new QFormLayout(this);
    form->addRow(tr("Name:"), m_name);
    form->addRow(tr("Home:"), m_home);
    form->addRow(tr("Mobile:"), m_mobile);
    form->addRow(tr("Work:"), m_work);
    form->addRow(m_important);
    form->addRow(m_buttons);
    connect(m_buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(m_buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    update();
}

bool PhonebookContactDialog::canSave() const
{
    const bool anyNumber = !m_home->text().trimmed().isEmpty() || !m_mobile->text().trimmed().isEmpty() ||
                           !m_work->text().trimmed().isEmpty();
    return !m_name->text().trimmed().isEmpty() && anyNumber;
}

void PhonebookContactDialog::update()
{
    m_buttons->button(QDialogButtonBox::Save)->setEnabled(canSave());
}

BoxContactEntry PhonebookContactDialog::entry() const
{
    BoxContactEntry e;
    e.name = m_name->text().trimmed();
    e.home = m_home->text().trimmed();
    e.mobile = m_mobile->text().trimmed();
    e.work = m_work->text().trimmed();
    e.important = m_important->isChecked();
    return e;
}
