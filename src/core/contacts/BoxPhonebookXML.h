#pragma once

#include "base/NumberForms.h"
#include "contacts/AddressBook.h"

#include <QString>
#include <QVariantMap>

// The router's phone book format as we write it: contact elements, whole books for a group
// export, and one contact added to a downloaded book.

// One contact typed on the export sheet of the call list.
struct BoxContactEntry
{
    enum class QuickDialOn { None, Home, Mobile, Work };

    QString name;
    QString home;
    QString mobile;
    QString work;
    bool important = false;
    QuickDialOn quickDialOn = QuickDialOn::None;
    QString quickDial;
    QString vanity;
};

namespace adressbooksearch {

// Text content escaped so that the router's parser sees exactly the text.
QString xmlEscaped(const QString& text);

// ISO Latin-1 (lossy), "?" to "." and "&" to "+": the names the router's handsets can show.
QString boxContactName(const QString& name);

// The text to append to followed by one contact element (name, home, mobile, work; empty
// numbers are left out). The name and numbers are escaped here.
QString XMLContactWithName(const QString& name, const QString& home, const QString& work,
                           const QString& mobile, const QString& appendTo);

// The whole book for a group export, without the XML declaration (the upload adds it). People
// are taken in book order; the format decides the names and one contact per number or per person.
QString peoplesForGroupWithFormat(const QString& group, const QVariantMap& format, const AddressBook* book,
                                  const Prefixis& prefixis);

// The contact element of the export sheet: numbered ids, prio and the quick-dial number.
QString contactElementForBox(const BoxContactEntry& entry);

// The contact inserted before every "</phonebook>" of a downloaded book.
QString insertContactIntoPhonebook(const QString& book, const QString& contactElement);

} // namespace adressbooksearch
