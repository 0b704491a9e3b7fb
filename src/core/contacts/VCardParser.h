#pragma once

#include "contacts/AddressBook.h"

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <QVector>

// Reads and writes vCards 2.1, 3.0 and 4.0 as the contacts apps export them.
namespace VCardParser {

struct Result
{
    QVector<ABPerson> people;
    QStringList problems; // one line per skipped card, with the source and line number
};

// `source` names the file in problem lines. Cards without UID get a stable one from their text.
Result parse(const QByteArray& data, const QString& source);

// A vCard 3.0 of the person (folded, escaped, UTF-8). Line breaks in values are written as the escape \n
// and so read back as LF, whatever their form was (CR LF, CR, LF).
QByteArray serialize(const ABPerson& person);

// The label for a TEL line's types (HOME, CELL, IPHONE ...).
QString labelForTypes(const QStringList& types);

} // namespace VCardParser
