#include "contacts/AddressBook.h"
#include "contacts/CallerCache.h"

#include <atomic>

namespace {
std::atomic<CallerCache*> g_callerCache{nullptr};
std::atomic<AddressBook*> g_addressBook{nullptr};
} // namespace

CallerCache* CallerCache::shared()
{
    return g_callerCache.load();
}

void CallerCache::setShared(CallerCache* cache)
{
    g_callerCache.store(cache);
}

AddressBook* AddressBook::shared()
{
    return g_addressBook.load();
}

void AddressBook::setShared(AddressBook* book)
{
    g_addressBook.store(book);
}
