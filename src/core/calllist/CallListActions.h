#pragma once

#include <QList>
#include <QString>
#include <QStringList>

#include <memory>

class AddressBook;
class ContactsServices;
class TNCallinglist;
class TNPreferences;

// What the call list does with its calls, for the window and the command line alike: delete,
// export, ask the web for a name, take a new contact's name.
class CallListActions
{
public:
    CallListActions(TNCallinglist& calls, ContactsServices& contacts) : m_calls(calls), m_contacts(contacts)
    {
    }

    struct Deletion
    {
        int deleted = 0;       // -1: the database refused
        QList<qint64> foreign; // not calls of the profile: nothing was deleted
    };
    // All or nothing: rowids of another profile (or marker rows) refuse the whole deletion.
    Deletion deleteCalls(int profile, const QList<qint64>& rowids);

    // The delimited export has the fixed lists; any other list exports all calls.
    static int exportableSelector(int selector);
    // All fields, ";" between them, each in quotes, as UTF-8; false with the reason.
    bool exportToFile(int profile, int selector, const QString& path, QString* error);

    // Null when no book is configured: no contacts can be added.
    AddressBook* addressBook() const;
    bool hasAddressBook() const { return addressBook() != nullptr; }
    // Asks the web directories (or the user's script) for the number; blocks on the network. A
    // name found goes into the caller cache. "" when none.
    QString lookUp(const QString& number, const std::shared_ptr<TNPreferences>& prefs);
    // After the number was added to the address book: a name cached earlier (a web lookup) would
    // hide the contact, so the book is asked afresh. [abid, name, label].
    QStringList contactAdded(const QString& number, const std::shared_ptr<TNPreferences>& prefs);

private:
    TNCallinglist& m_calls;
    ContactsServices& m_contacts;
};
