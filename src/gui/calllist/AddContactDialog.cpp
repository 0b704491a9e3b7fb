#include "AddContactDialog.h"

#include "contacts/AddressBook.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>

AddContactDialog::AddContactDialog(AddressBook& book, const QString& number, QWidget* parent)
    : QDialog(parent), m_book(book)
{
    setWindowTitle(tr("Add to address book"));
    m_first = new QLineEdit(this);
    m_last = new QLineEdit(this);
    m_company = new QLineEdit(this);
    m_number = new QLineEdit(number, this);
    m_label = new QComboBox(this);
    m_label->addItem(tr("home"), PhoneLabel::Home);
    m_label->addItem(tr("work"), PhoneLabel::Work);
    m_label->addItem(tr("mobile"), PhoneLabel::Mobile);
    m_label->addItem(tr("main"), PhoneLabel::Main);
    m_label->addItem(tr("other"), PhoneLabel::Other);
    m_error = new QLabel(this);
    m_error->setWordWrap(true);
    m_error->setStyleSheet(QStringLiteral("color: #b00020"));
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Save | QDialogButtonBox::Cancel, this);

    auto* form = new QFormLayout(this);
    form->addRow(tr("First name:"), m_first);
    form->addRow(tr("Last name:"), m_last);
    form->addRow(tr("Company:"), m_company);
    form->addRow(tr("Number:"), m_number);
    form->addRow(tr("Label:"), m_label);
    form->addRow(m_error);
    form->addRow(buttons);
    connect(buttons, &QDialogButtonBox::accepted, this, &AddContactDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &AddContactDialog::reject);
    m_first->setFocus();
}

bool AddContactDialog::save()
{
    ABPerson person;
    person.firstName = m_first->text().trimmed();
    person.lastName = m_last->text().trimmed();
    person.organization = m_company->text().trimmed();
    const QString number = m_number->text().trimmed();
    if (person.firstName.isEmpty() && person.lastName.isEmpty() && person.organization.isEmpty()) {
        m_error->setText(tr("Enter a name or a company."));
        return false;
    }
    if (number.isEmpty()) {
        m_error->setText(tr("Enter the number."));
        return false;
    }
    person.phones.append({m_label->currentData().toString(), number});
    QString why;
    if (!m_book.addPerson(person, &why)) {
        m_error->setText(tr("The contact could not be added: %1").arg(why));
        return false;
    }
    return true;
}

void AddContactDialog::accept()
{
    if (save())
        QDialog::accept();
}
