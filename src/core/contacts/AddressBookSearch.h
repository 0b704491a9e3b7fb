#pragma once

#include "base/NumberForms.h"
#include "contacts/AddressBook.h"

#include <QStringList>
#include <QVariantMap>

// Matching numbers against the address book and turning a contact into a display name.
namespace adressbooksearch {

// [abid, name, label] of the first entry in book order that matches, or three empty texts.
QStringList searchAdressbookForPhoneNew(const QString& number, const Prefixis& prefixis,
                                        const AddressBook* book, const QVariantMap& format);

// `numbers` holds each cached number followed by its form without the trunk prefix. Gives one
// [number, abid, name, label] per matched number; the first contact in book order wins.
QVector<QStringList> searchAdressbookForPhoneArray(const QStringList& numbers, const Prefixis& prefixis,
                                                   const AddressBook* book, const QVariantMap& format);

// Places first name, last name and company into the three slots the format names.
QString formatedOutputForContactWithFirstname(const QString& first, const QString& last,
                                              const QString& company, const QVariantMap& format);

// Group names (CATEGORIES) in first-seen order, and a group's members in book order.
QStringList addressbookGroups(const AddressBook* book);
QVector<ABPerson> peoplesForGroup(const QString& group, const AddressBook* book);

} // namespace adressbooksearch
