#pragma once

#include "contacts/BoxPhonebookXML.h"

#include <QDialog>

class QCheckBox;
class QDialogButtonBox;
class QLineEdit;

// A new contact for the router's phone book: a name and at least one number.
class PhonebookContactDialog : public QDialog
{
    Q_OBJECT
public:
    explicit PhonebookContactDialog(QWidget* parent = nullptr);

    BoxContactEntry entry() const;
    QLineEdit* nameField() const { return m_name; }
    QLineEdit* mobileField() const { return m_mobile; }
    bool canSave() const;

private:
    void update();

    QLineEdit* m_name;
    QLineEdit* m_home;
    QLineEdit* m_mobile;
    QLineEdit* m_work;
    QCheckBox* m_important;
    QDialogButtonBox* m_buttons;
};
