#include "contacts/ReverseLookup.h"

#include "base/Logging.h"
#include "base/NotificationCenter.h"
#include "base/NotificationNames.h"
#include "base/SettingsKeys.h"
#include "base/SettingsStore.h"
#include "base/StringAdditions.h"
#include "base/TNPreferencesManager.h"
#include "contacts/BoundedRegex.h"
#include "contacts/FBReverseSearch.h"
#include "contacts/HtmlText.h"
#include "contacts/HttpTransport.h"

#include <QDir>
#include <QFileInfo>
#include <QProcess>
#include <QThreadPool>
#include <QUrl>

ReverseLookup::ReverseLookup(FBReverseSearch& search, SettingsStore& settings, HttpTransport& http,
                             NotificationCenter& center, ScriptRunner scripts)
    : m_search(search), m_settings(settings), m_http(http), m_center(center), m_scripts(std::move(scripts))
{
}

ReverseSearchResult ReverseLookup::reverseSearchMain(const QString& number, const Prefixis& prefixis)
{
    const QString n = methods::numberWithoutParenthesisPart(number);
    BoundedRegex::Budget budget;
    const QVariant custom = m_settings.value(keys::ReverseSearchCustom);
    if (custom.isValid()) {
        const QVariantMap options = custom.toMap();
        if (options.value(QStringLiteral("useScript")).toBool()) {
            const ReverseSearchResult result = reverseSearchCustomScript(n);
            if (!result.name.isEmpty())
                return result;
        }
        if (options.value(QStringLiteral("useURL")).toBool()) {
            const ReverseSearchResult result = reverseSearchCustomURL(n, &budget);
            if (!result.name.isEmpty())
                return result;
        }
    }
    return {m_search.reverseSearch(n, prefixis, &budget), QString()};
}

ReverseSearchResult ReverseLookup::reverseSearchCustomScript(const QString& number)
{
    const QString script =
        m_settings.value(keys::ReverseSearchCustom).toMap().value(QStringLiteral("script")).toString();
    if (script.isEmpty() || !m_scripts)
        return {};
    const QString output = m_scripts(script, {number});
    if (output.isEmpty())
        return {};
    const QStringList pieces = output.split(QStringLiteral("||##||"));
    if (pieces.size() >= 2)
        return {pieces.at(0), pieces.at(1)};
    return {output, QString()};
}

ReverseSearchResult ReverseLookup::reverseSearchCustomURL(const QString& number, BoundedRegex::Budget* budget)
{
    const QVariantMap options = m_settings.value(keys::ReverseSearchCustom).toMap();
    const QString url = options.value(QStringLiteral("url")).toString();
    if (url.isEmpty())
        return {};
    QString method = options.value(QStringLiteral("method")).toString();
    if (method.isEmpty())
        method = QStringLiteral("POST");
    const QString body = FBStringHelper::replaceStringTarget(
        QStringLiteral("##NUMBER##"), number, options.value(QStringLiteral("data")).toString());
    HttpRequest request;
    request.url = url;
    request.method = method.toLatin1();
    request.body = body.toLatin1();
    request.sendBody = true;
    request.timeoutMs = m_timeoutMs;
    request.headers = {{"Content-type", "application/x-www-form-urlencoded"},
                       {"User-Agent", FBReverseSearch::UserAgent}};
    const HttpResponse response = m_http.send(request);
    if (!response.ok) {
        qCInfo(lcContacts).noquote() << "custom reverse lookup failed:" << response.error;
        return {};
    }
    const QString page = QString::fromUtf8(response.body);
    // The page itself is not logged: it may carry more than the name.
    qCDebug(lcContacts) << "-->" << page.size() << "characters";
    BoundedRegex::Budget own;
    BoundedRegex::Budget& patterns = budget ? *budget : own;
    ReverseSearchResult result;
    result.name = HtmlText::toPlainText(
        BoundedRegex::firstCapture(options.value(QStringLiteral("matchName")).toString(), page, patterns));
    qCDebug(lcContacts).noquote() << QStringLiteral("name:%1").arg(result.name);
    const QString labelPattern = options.value(QStringLiteral("matchLabel")).toString();
    if (!labelPattern.isEmpty())
        result.label = HtmlText::toPlainText(BoundedRegex::firstCapture(labelPattern, page, patterns));
    qCDebug(lcContacts).noquote() << QStringLiteral("label:%1").arg(result.label);
    return result;
}

QString ReverseLookup::threadReverseSearch(const QString& connID, const QString& number,
                                           const Prefixis& prefixis, QObject* context,
                                           const NameFound& onFound)
{
    if (number.isEmpty())
        return {};
    const ReverseSearchResult result = reverseSearchMain(number, prefixis);
    if (result.name.isEmpty())
        return {};
    qCDebug(lcContacts) << "setReverseSearchedName um label erweitern";
    if (context && onFound) {
        const QString name = result.name;
        QMetaObject::invokeMethod(
            context, [onFound, name, connID] { onFound(name, connID); }, Qt::QueuedConnection);
    }
    m_center.post(Notifications::RELOADCALLINGLIST);
    return result.name;
}

void ReverseLookup::reverseSearchInBackground(const QString& connID, const QString& number,
                                              const Prefixis& prefixis, QObject* context, NameFound onFound)
{
    QPointer<QObject> guard(context);
    m_pool.start([this, connID, number, prefixis, guard, onFound = std::move(onFound)] {
        threadReverseSearch(connID, number, prefixis, guard.data(), onFound);
    });
}

ReverseLookup::ScriptRunner ReverseLookup::scriptRunnerForFolder(const QString& scriptsDir, int timeoutMs)
{
    return [scriptsDir, timeoutMs](const QString& script, const QStringList& arguments) -> QString {
        if (script.contains(u'/') || script.contains(u'\\') || script.startsWith(u'.'))
            return {};
        const QString path = QDir(scriptsDir).filePath(script);
        if (!QFileInfo(path).isExecutable()) {
            qCInfo(lcContacts).noquote() << "lookup script not found or not executable:" << script;
            return {};
        }
        QProcess process;
        process.setProcessChannelMode(QProcess::SeparateChannels);
        process.start(path, arguments);
        if (!process.waitForFinished(timeoutMs)) {
            process.kill();
            process.waitForFinished(1000);
            qCInfo(lcContacts).noquote() << "lookup script did not finish:" << script;
            return {};
        }
        QString output = QString::fromUtf8(process.readAllStandardOutput());
        while (output.endsWith(u'\n') || output.endsWith(u'\r'))
            output.chop(1);
        return output;
    };
}

namespace methods {

QString urldecode(const QString& text)
{
    return QUrl::fromPercentEncoding(text.toUtf8());
}

} // namespace methods
