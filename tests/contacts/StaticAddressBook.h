#pragma once

#include "contacts/AddressBook.h"

// A fixed list of people, for the matching rules on their own (the vCard side has its tests).
class StaticAddressBook final : public AddressBook
{
public:
    explicit StaticAddressBook(QVector<ABPerson> people)
        : m_snapshot(std::make_shared<AddressBookSnapshot>(AddressBookSnapshot{std::move(people)}))
    {
    }
    bool isAvailable() const override { return true; }
    std::shared_ptr<const AddressBookSnapshot> snapshot() const override { return m_snapshot; }
    bool addPerson(ABPerson&, QString*) override { return false; }

private:
    std::shared_ptr<const AddressBookSnapshot> m_snapshot;
};

// "uid:First Last:label=number,label=number"
inline ABPerson person(const QString& text)
{
    const QStringList parts = text.split(u':');
    ABPerson p;
    p.uid = parts.value(0);
    const QStringList names = parts.value(1).split(u' ');
    p.firstName = names.value(0);
    p.lastName = names.value(1);
    for (const QString& phone : parts.value(2).split(u',', Qt::SkipEmptyParts)) {
        const qsizetype eq = phone.indexOf(u'=');
        p.phones.append({phone.left(eq), phone.mid(eq + 1)});
    }
    return p;
}
