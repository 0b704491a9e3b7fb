#pragma once

#include "contacts/FBPhonebookExchange.h"

class TNPreferences;

// The phone book exchange over a location's router session.
namespace FBPhonebookBox {

// The callbacks hold a reference to prefs: it must outlive the exchange.
FBPhonebookExchange exchangeForPreferences(TNPreferences& prefs);

} // namespace FBPhonebookBox
