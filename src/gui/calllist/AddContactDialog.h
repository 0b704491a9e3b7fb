#pragma once

#include <QDialog>

class AddressBook;
class QComboBox;
class QLabel;
class QLineEdit;

// A new contact for a number of the call list: first name, last name, company and the number
// with its label, written into the user's address book.
class AddContactDialog : public QDialog
{
    Q_OBJECT
public:
    AddContactDialog(AddressBook& book, const QString& number, QWidget* parent = nullptr);

    QLineEdit* firstNameField() const { return m_first; }
    QLineEdit* lastNameField() const { return m_last; }
    QLineEdit* companyField() const { return m_company; }
    QLineEdit* numberField() const { return m_number; }
    QComboBox* labelBox() const { return m_label; }
    QLabel* errorLabel() const { return m_error; }

    // Writes the contact; false with the reason shown in the dialog.
    bool save();

public slots:
    void accept() override;

private:
    AddressBook& m_book;
    QLineEdit* m_first = nullptr;
    QLineEdit* m_last = nullptr;
    QLineEdit* m_company = nullptr;
    QLineEdit* m_number = nullptr;
    QComboBox* m_label = nullptr;
    QLabel* m_error = nullptr;
};
