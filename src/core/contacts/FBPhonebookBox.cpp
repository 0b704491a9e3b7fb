#include "contacts/FBPhonebookBox.h"

#include "base/TNPreferences.h"
#include "box/FBConnection.h"
#include "box/FBApplicationHelper.h"
#include "box/RouterCommand.h"
#include "box/TNSessionManager.h"

namespace FBPhonebookBox {

namespace {
QString baseURL(const TNPreferences& prefs)
{
    if (prefs.remoteAccess)
        return QStringLiteral("https://%1:%2").arg(prefs.remoteHostName).arg(prefs.remotesslPort);
    return prefs.webPort == 80 ? QStringLiteral("http://") + prefs.hostName
                               : QStringLiteral("http://%1:%2").arg(prefs.hostName).arg(prefs.webPort);
}
} // namespace

FBPhonebookExchange exchangeForPreferences(TNPreferences& prefs)
{
    auto auth = [&prefs] {
        TNSessionManager::forPreferences(prefs).currentSessionIDUsePreferences(&prefs);
        QMutexLocker lock(&prefs.runtimeMutex());
        BoxPhonebookForm::Auth a;
        a.sessionID = prefs.remoteAccess ? prefs.remoteSessionID : prefs.sessionID;
        a.password = prefs.remoteAccess ? prefs.remotePassWord : prefs.passWord;
        return a;
    };
    auto post = [&prefs](const QByteArray& body) {
        FBRequest request;
        request.url = baseURL(prefs) + BoxPhonebookForm::kPath;
        request.method = "POST";
        request.setHeader("Content-Type", BoxPhonebookForm::contentType());
        request.body = body;
        FBConnection connection(&prefs);
        // The book is ISO Latin-1: one character per byte keeps it intact for the reader.
        const QString answer = connection.startWithRequest(request, true, FBEncoding::Latin1, &prefs);
        if (connection.httpStatus >= 400)
            return QStringLiteral("-2");
        return answer;
    };
    return FBPhonebookExchange(auth, post);
}

namespace {
// Logs in, runs the exchange, and says why it failed.
bool withExchange(TNPreferences& prefs, QString* error, const std::function<bool(FBPhonebookExchange&)>& work)
{
    FBApplicationHelper::clearLastAlertOnThisThread();
    QString why;
    if (!FBBoxConnectionHelper::ensureSession(prefs, &why)) {
        if (error)
            *error = why;
        return false;
    }
    FBPhonebookExchange exchange = exchangeForPreferences(prefs);
    if (work(exchange))
        return true;
    if (error)
        *error = exchange.errorMessage().isEmpty() ? FBBoxConnectionHelper::routerFailureText(prefs)
                                                   : exchange.errorMessage();
    return false;
}
} // namespace

bool loadPhoneBook(TNPreferences& prefs, QVector<BoxPhonebook>* books, QString* error)
{
    QString why;
    const bool ok = withExchange(prefs, error, [&](FBPhonebookExchange& exchange) {
        const QString book = exchange.loadPhoneBook();
        return !book.isEmpty() && BoxPhonebookReader::parse(book, books, &why);
    });
    if (!ok && error && !why.isEmpty())
        *error = why;
    return ok;
}

bool addContact(TNPreferences& prefs, const BoxContactEntry& entry, QString* error)
{
    return withExchange(prefs, error, [&](FBPhonebookExchange& exchange) { return exchange.exportContactToBox(entry); });
}

bool replacePhoneBook(TNPreferences& prefs, const QString& bookXML, QString* error)
{
    return withExchange(prefs, error, [&](FBPhonebookExchange& exchange) { return exchange.exportGroupToBox(bookXML); });
}

} // namespace FBPhonebookBox
