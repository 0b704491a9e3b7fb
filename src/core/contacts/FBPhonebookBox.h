#pragma once

#include "box/RouterFailure.h"
#include "contacts/FBPhonebookExchange.h"

class RouterSession;
class TNPreferences;

// The phone book exchange over a location's router session.
namespace FBPhonebookBox {

// The callbacks hold references to prefs, session and reported: they must outlive the exchange.
// Failures of the login and the requests go to *reported when given.
FBPhonebookExchange exchangeForPreferences(TNPreferences& prefs, RouterSession& session,
                                           RouterFailure* reported = nullptr);

// The three exchanges a user asks for, each logging in first. They block: run them on a worker
// thread. False with the one-line reason when the router refused or could not be reached.
bool loadPhoneBook(TNPreferences& prefs, RouterSession& session, QVector<BoxPhonebook>* books,
                   QString* error);
bool addContact(TNPreferences& prefs, RouterSession& session, const BoxContactEntry& entry, QString* error);
// The book (as made from an address-book group) replaces the router's phone book.
bool replacePhoneBook(TNPreferences& prefs, RouterSession& session, const QString& bookXML, QString* error);

} // namespace FBPhonebookBox
