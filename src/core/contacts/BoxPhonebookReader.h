#pragma once

#include <QString>
#include <QVector>

// The router's phone book as it comes from its configuration page.

struct BoxPhonebookNumber
{
    QString type; // home, mobile, work, intern, fax_work ...
    QString number;
    QString id;
    QString prio;
    QString quickDial;
    QString vanity;
};

struct BoxPhonebookContact
{
    QString name;
    QString category;
    QVector<BoxPhonebookNumber> numbers;
};

struct BoxPhonebook
{
    QString name;
    QString owner;
    QVector<BoxPhonebookContact> contacts;
};

namespace BoxPhonebookReader {

// The answer's bytes (carried one byte per character) decoded by the encoding the book declares
// (the router's is ISO Latin-1) and without the declaration, ready to be changed and uploaded.
QString bookFromDownload(const QString& answerBytes);

// False with a reason unless the text is a well-formed <phonebooks> with at least one
// <phonebook>: only such a book may be changed and written back.
bool parse(const QString& xml, QVector<BoxPhonebook>* books, QString* error);

} // namespace BoxPhonebookReader
