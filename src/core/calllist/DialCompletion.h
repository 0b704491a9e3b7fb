#pragma once

#include <QList>
#include <QString>
#include <QVariantMap>

class AddressBook;
class CallDatabase;

// One number the dialing window offers while the user types.
struct DialCompletion
{
    QString number;
    QString name;
    QString label; // shown as given (already localised for address book labels)

    // "Name (label) – number", or the number alone.
    QString text() const;
};

namespace methods {

// A phone label as the user reads it: the known labels ("mobile", "work", ...) localised, others
// as written.
QString phoneLabelText(const QString& label);

// The address book's numbers (names in the location's contact format), then the named numbers
// of the call database's caller cache; one entry per number as written, book first. Either
// source may be null.
QList<DialCompletion> dialCompletions(const AddressBook* book, const CallDatabase* db,
                                      const QVariantMap& format);

} // namespace methods
