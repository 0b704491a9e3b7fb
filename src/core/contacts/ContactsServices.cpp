#include "contacts/ContactsServices.h"

#include "contacts/CallerCache.h"
#include "contacts/FBReverseSearch.h"
#include "contacts/HttpTransport.h"
#include "contacts/ReverseLookup.h"
#include "contacts/VCardAddressBook.h"

#include <QDir>

ContactsServices::ContactsServices(const QString& dataDir, const QString& scriptsDir, SettingsStore& settings,
                                   CallerCache* cache, Clock& clock, NotificationCenter& center)
    : m_settings(settings), m_cache(cache), m_book(VCardAddressBook::fromSettings(settings)),
      m_http(std::make_unique<CurlHttpTransport>()),
      m_search(std::make_unique<FBReverseSearch>(dataDir, settings, *m_http, cache, clock)),
      m_lookup(std::make_unique<ReverseLookup>(*m_search, settings, *m_http, center,
                                               ReverseLookup::scriptRunnerForFolder(scriptsDir)))
{
}

ContactsServices::~ContactsServices() = default;

void ContactsServices::reloadAddressBookSetting()
{
    replaceBook(VCardAddressBook::fromSettings(m_settings));
}

void ContactsServices::useAddressBook(const QString& path)
{
    replaceBook(std::make_unique<VCardAddressBook>(QDir::cleanPath(path)));
}

void ContactsServices::replaceBook(std::unique_ptr<VCardAddressBook> book)
{
    // A lookup on another thread may still be asking the old book: it stays until the end.
    if (m_book)
        m_retired.push_back(std::move(m_book));
    m_book = std::move(book);
}

void ContactsServices::setTimeoutMs(int ms)
{
    m_search->setTimeoutMs(ms);
    m_lookup->setTimeoutMs(ms);
}
