#pragma once

#include "contacts/FBPhonebookExchange.h"

class TNPreferences;

// The phone book exchange over a location's router session.
namespace FBPhonebookBox {

// The callbacks hold a reference to prefs: it must outlive the exchange.
FBPhonebookExchange exchangeForPreferences(TNPreferences& prefs);

// The three exchanges a user asks for, each logging in first. They block: run them on a worker
// thread. False with the one-line reason when the router refused or could not be reached.
bool loadPhoneBook(TNPreferences& prefs, QVector<BoxPhonebook>* books, QString* error);
bool addContact(TNPreferences& prefs, const BoxContactEntry& entry, QString* error);
// The book (as made from an address-book group) replaces the router's phone book.
bool replacePhoneBook(TNPreferences& prefs, const QString& bookXML, QString* error);

} // namespace FBPhonebookBox
