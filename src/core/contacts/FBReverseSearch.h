#pragma once

#include "base/NumberForms.h"
#include "contacts/BoundedRegex.h"

#include <QString>

class CallerCache;
class ReverseSearchDefinitions;
class Clock;
class HttpTransport;
class SettingsStore;

// Asks a web directory for a number's subscriber, by the definitions property list, and keeps
// those definitions up to date.
class FBReverseSearch
{
public:
    static inline const QByteArray UserAgent =
        "Mozilla/5.0 (Macintosh; U; Intel Mac OS X 10.7; de; rv:1.9.2.23) Gecko/20110920 Firefox/3.6.23";
    static constexpr int DefaultTimeoutMs = 10000;
    static constexpr int DefaultUpdateInterval = 86400;

    // cache may be null: the name is then only returned.
    FBReverseSearch(QString dataDir, SettingsStore& settings, HttpTransport& http, CallerCache* cache,
                    Clock& clock);

    void setTimeoutMs(int ms) { m_timeoutMs = ms; }
    int timeoutMs() const { return m_timeoutMs; }
    // The application version compared with "Version" (a new version forces a download).
    void setApplicationVersion(const QString& version) { m_appVersion = version; }

    // The name for a number, or "". A found name is written to the caller cache. The pattern
    // spends from budget (a fresh one when null).
    QString reverseSearch(const QString& number, const Prefixis& prefixis,
                          BoundedRegex::Budget* budget = nullptr);

    // Which definition and query number a lookup uses; key "" when there is none.
    struct Query
    {
        QString key;
        QString number;
    };
    static Query queryFor(const QString& number, const Prefixis& prefixis,
                          const ReverseSearchDefinitions& definitions);

    // Downloads the definitions from "ReverseSearchUpdateURL"; false keeps the old file.
    bool updateReverseSearchPlist();
    // The start-up refresh: only when enabled, and when the interval has passed or the
    // application version changed. True when a download succeeded.
    bool threadUpdateReverseSearchPlist();

    QString definitionsPath() const;

private:
    QString m_dataDir;
    SettingsStore& m_settings;
    HttpTransport& m_http;
    CallerCache* m_cache;
    Clock& m_clock;
    int m_timeoutMs = DefaultTimeoutMs;
    QString m_appVersion;
};
