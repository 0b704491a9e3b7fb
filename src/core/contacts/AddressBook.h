#pragma once

#include <QString>
#include <QStringList>
#include <QVector>

#include <memory>

// The labels a phone entry can carry.
namespace PhoneLabel {
inline const QString Home = QStringLiteral("home");
inline const QString Work = QStringLiteral("work");
inline const QString Mobile = QStringLiteral("mobile");
inline const QString Main = QStringLiteral("main");
inline const QString IPhone = QStringLiteral("iPhone");
inline const QString Other = QStringLiteral("other");
} // namespace PhoneLabel

struct ABPhone
{
    QString label;
    QString value;
};

struct ABPerson
{
    QString uid;
    QString firstName;
    QString lastName;
    QString organization;
    QVector<ABPhone> phones;
    QStringList groups;
};

// The people of an address book at one moment, in the book's own order. Immutable once made,
// so lookups on any thread can share it.
struct AddressBookSnapshot
{
    QVector<ABPerson> people;
};

// The user's address book. Stores other than vCard can follow behind this interface.
class AddressBook
{
public:
    virtual ~AddressBook() = default;

    // False when the book cannot be read at all (no path, missing file).
    virtual bool isAvailable() const = 0;
    // The current people; re-read only when the underlying files changed.
    virtual std::shared_ptr<const AddressBookSnapshot> snapshot() const = 0;
    // Adds a person (a uid is made when empty); false with a reason when it cannot be stored.
    virtual bool addPerson(ABPerson& person, QString* error) = 0;
};
