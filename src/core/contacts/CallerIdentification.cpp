#include "contacts/CallerIdentification.h"

#include "base/TNPreferencesManager.h"
#include "contacts/AddressBook.h"
#include "contacts/AddressBookSearch.h"
#include "contacts/CallerCache.h"

namespace methods {

QStringList searchNameForPhonenumber(const QString& number, CallerCache* cache, const AddressBook* book,
                                     const Prefixis& prefixis, const QVariantMap& format,
                                     CallerSource* source)
{
    if (source)
        *source = CallerSource::None;
    if (number.isEmpty())
        return {QString(), QString(), QString()};
    const QString n = numberWithoutParenthesisPart(number);
    if (cache) {
        const QStringList cached = cache->searchCallerNameForPhoneNumber(n);
        if (!cached.isEmpty()) {
            if (source)
                *source = CallerSource::Cache;
            return cached;
        }
    }
    const QStringList found = adressbooksearch::searchAdressbookForPhoneNew(n, prefixis, book, format);
    if (!found.value(1).isEmpty()) {
        if (source)
            *source = CallerSource::AddressBook;
        if (cache)
            cache->insertCallerWithName(found.at(1), n, found.at(0), found.at(2));
    }
    return found;
}

QStringList searchNameForPhonenumber(const QString& number, CallerCache* cache, const AddressBook* book,
                                     const Prefixis& prefixis, const QVariantMap& format)
{
    return searchNameForPhonenumber(number, cache, book, prefixis, format, nullptr);
}

} // namespace methods
