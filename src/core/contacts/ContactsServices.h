#pragma once

#include <QString>

#include <memory>
#include <vector>

class CallerCache;
class Clock;
class CurlHttpTransport;
class FBReverseSearch;
class NotificationCenter;
class ReverseLookup;
class SettingsStore;
class VCardAddressBook;

// The contacts side of the composition root: the address book named in the settings, the web
// transport, the reverse lookup and its definitions, made from the data folder and settings.
class ContactsServices
{
public:
    // cache may be null (no call database).
    ContactsServices(const QString& dataDir, const QString& scriptsDir, SettingsStore& settings,
                     CallerCache* cache, Clock& clock, NotificationCenter& center);
    ~ContactsServices();

    // The address book after the "AddressBook" setting changed.
    void reloadAddressBookSetting();
    // Instead of the configured book (the command line's --address-book).
    void useAddressBook(const QString& path);

    VCardAddressBook* addressBook() const { return m_book.get(); }
    FBReverseSearch& reverseSearch() const { return *m_search; }
    ReverseLookup& reverseLookup() const { return *m_lookup; }
    CallerCache* callerCache() const { return m_cache; }
    void setTimeoutMs(int ms);

private:
    void replaceBook(std::unique_ptr<VCardAddressBook> book);

    SettingsStore& m_settings;
    CallerCache* m_cache;
    std::unique_ptr<VCardAddressBook> m_book;
    std::vector<std::unique_ptr<VCardAddressBook>> m_retired;
    std::unique_ptr<CurlHttpTransport> m_http;
    std::unique_ptr<FBReverseSearch> m_search;
    std::unique_ptr<ReverseLookup> m_lookup;
};
