#pragma once

#include "base/NumberForms.h"

#include <QStringList>
#include <QVariantMap>

class AddressBook;
class CallerCache;

namespace methods {

// [abid, name, label] for a number: the caller cache first, then the address book, whose
// found names are written into the cache. Three empty texts when unknown. Either source may be
// null (no call database yet, no address book configured).
QStringList searchNameForPhonenumber(const QString& number, CallerCache* cache, const AddressBook* book,
                                     const Prefixis& prefixis, const QVariantMap& format);

// Where the answer of a lookup came from, for the command line.
enum class CallerSource { None, Cache, AddressBook };
QStringList searchNameForPhonenumber(const QString& number, CallerCache* cache, const AddressBook* book,
                                     const Prefixis& prefixis, const QVariantMap& format,
                                     CallerSource* source);

} // namespace methods
