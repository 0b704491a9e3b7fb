#include "contacts/FBReverseSearch.h"

#include "base/Clock.h"
#include "base/Logging.h"
#include "base/SettingsKeys.h"
#include "base/SettingsStore.h"
#include "base/StringAdditions.h"
#include "contacts/BoundedRegex.h"
#include "contacts/CallerCache.h"
#include "contacts/HtmlText.h"
#include "contacts/HttpTransport.h"
#include "contacts/ReverseSearchDefinitions.h"

#include <QDir>
#include <QSaveFile>

FBReverseSearch::FBReverseSearch(QString dataDir, SettingsStore& settings, HttpTransport& http,
                                 CallerCache* cache, Clock& clock)
    : m_dataDir(std::move(dataDir)), m_settings(settings), m_http(http), m_cache(cache), m_clock(clock),
      m_appVersion(QStringLiteral(TONDREL_VERSION))
{
}

QString FBReverseSearch::definitionsPath() const
{
    return QDir(m_dataDir).filePath(ReverseSearchDefinitions::FileName);
}

FBReverseSearch::Query FBReverseSearch::queryFor(const QString& number, const Prefixis& p,
                                                 const ReverseSearchDefinitions& definitions)
{
    if (number.startsWith(u"00")) {
        // The first key in the file's order that begins the number; its "prefix" makes the
        // national form the directory expects.
        for (const auto& def : definitions.definitions())
            if (!def.key.isEmpty() && number.startsWith(def.key))
                return {def.key, FBStringHelper::replaceStringTarget(def.key, def.prefix, number)};
        return {};
    }
    if (number.startsWith(u'0'))
        return {p.internationalCountry(), number};
    // A local number gets the own area code in front.
    return {p.internationalCountry(), p.trunkArea() + number};
}

QString FBReverseSearch::reverseSearch(const QString& number, const Prefixis& p, BoundedRegex::Budget* budget)
{
    const auto definitions = ReverseSearchDefinitions::load(m_dataDir);
    if (!definitions)
        return {};
    const Query query = queryFor(number, p, *definitions);
    const ReverseSearchDefinition* def = query.key.isEmpty() ? nullptr : definitions->find(query.key);
    if (!def)
        return {};

    const QString data =
        FBStringHelper::replaceStringTarget(QStringLiteral("##NUMBER##"), query.number, def->data);
    HttpRequest request;
    request.method = def->method.toLatin1();
    request.timeoutMs = m_timeoutMs;
    request.headers = {{"Content-Type", "application/x-www-form-urlencoded"}, {"User-Agent", UserAgent}};
    if (def->method == u"GET") {
        // A GET definition asks url?data, so the directory sees the number.
        request.url = data.isEmpty() ? def->url : QStringLiteral("%1?%2").arg(def->url, data);
    } else {
        request.url = def->url;
        request.body = data.toLatin1();
        request.sendBody = true;
    }
    qCDebug(lcContacts).noquote() << "reverse lookup via" << def->key;
    const HttpResponse response = m_http.send(request);
    if (!response.ok) {
        qCInfo(lcContacts).noquote() << "reverse lookup failed:" << response.error;
        return {};
    }
    const QString page = QString::fromUtf8(response.body);
    BoundedRegex::Budget own;
    const QString name =
        HtmlText::toPlainText(BoundedRegex::firstCapture(def->match, page, budget ? *budget : own));
    if (name.isEmpty())
        return {};
    if (m_cache)
        m_cache->insertCallerWithName(name, number, QString(), QString());
    return name;
}

bool FBReverseSearch::updateReverseSearchPlist()
{
    const QString url = m_settings.value(keys::ReverseSearchUpdateURL).toString();
    if (url.isEmpty()) {
        qCInfo(lcContacts) << "reverse lookup definitions: no update location configured";
        return false;
    }
    HttpRequest request;
    request.url = url;
    request.timeoutMs = m_timeoutMs;
    request.headers = {{"User-Agent", UserAgent}};
    const HttpResponse response = m_http.send(request);
    if (!response.ok || response.status != 200) {
        qCWarning(lcContacts).noquote()
            << "reverse lookup definitions not downloaded:"
            << (response.ok ? QStringLiteral("HTTP %1").arg(response.status) : response.error);
        return false;
    }
    QString why;
    if (!ReverseSearchDefinitions::fromPlist(response.body, &why)) {
        qCWarning(lcContacts).noquote() << "reverse lookup definitions not used:" << why;
        return false;
    }
    QDir().mkpath(m_dataDir);
    QSaveFile file(definitionsPath());
    if (!file.open(QIODevice::WriteOnly) || file.write(response.body) != response.body.size() ||
        !file.commit()) {
        qCWarning(lcContacts).noquote() << "reverse lookup definitions not written:" << file.errorString();
        return false;
    }
    m_settings.setValue(keys::UpdateDateReverseSearch, m_clock.now().toUTC().toString(Qt::ISODate));
    m_settings.sync();
    return true;
}

bool FBReverseSearch::threadUpdateReverseSearchPlist()
{
    if (!m_settings.value(keys::AutoUpdateReverseSearch, false).toBool())
        return false;
    if (!m_settings.contains(keys::ReverseSearchUpdateInterval)) {
        m_settings.setValue(keys::ReverseSearchUpdateInterval, DefaultUpdateInterval);
        m_settings.sync();
    }
    const qint64 interval =
        m_settings.value(keys::ReverseSearchUpdateInterval, DefaultUpdateInterval).toLongLong();
    const QDateTime last =
        QDateTime::fromString(m_settings.value(keys::UpdateDateReverseSearch).toString(), Qt::ISODate);
    const bool sameVersion = m_settings.value(keys::Version).toString() == m_appVersion;
    if (last.isValid() && m_clock.now() <= last.addSecs(interval) && sameVersion)
        return false;
    return updateReverseSearchPlist();
}
