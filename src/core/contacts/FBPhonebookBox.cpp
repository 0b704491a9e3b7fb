#include "contacts/FBPhonebookBox.h"

#include "base/TNPreferences.h"
#include "box/FBConnection.h"
#include "box/RouterCommand.h"
#include "box/RouterSession.h"
#include "box/TNSessionManager.h"

#include <memory>

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

FBPhonebookExchange exchangeForPreferences(TNPreferences& prefs, RouterSession& session,
                                           RouterFailure* reported)
{
    auto auth = [&prefs, &session, reported] {
        const RouterFailure login = session.sessionManager().currentSessionIDUsePreferences(&prefs);
        if (reported)
            reported->merge(login);
        QMutexLocker lock(&session.mutex());
        BoxPhonebookForm::Auth a;
        a.sessionID = prefs.remoteAccess ? session.remoteSessionID : session.sessionID;
        a.password = prefs.remoteAccess ? prefs.remotePassWord : prefs.passWord;
        return a;
    };
    auto post = [&prefs, &session, reported](const QByteArray& body) {
        FBRequest request;
        request.url = baseURL(prefs) + BoxPhonebookForm::kPath;
        request.method = "POST";
        request.setHeader("Content-Type", BoxPhonebookForm::contentType());
        request.body = body;
        FBConnection connection(prefs, session);
        // The book is ISO Latin-1: one character per byte keeps it intact for the reader.
        const QString answer = connection.startWithRequest(request, true, FBEncoding::Latin1);
        if (reported)
            reported->merge(connection.failure);
        if (connection.httpStatus >= 400)
            return QStringLiteral("-2");
        return answer;
    };
    return FBPhonebookExchange(auth, post);
}

namespace {
// Logs in, runs the exchange, and says why it failed.
bool withExchange(TNPreferences& prefs, RouterSession& session, QString* error,
                  const std::function<bool(FBPhonebookExchange&)>& work)
{
    if (const RouterFailure failure = FBBoxConnectionHelper::ensureSession(prefs, session)) {
        if (error)
            *error = failure.message;
        return false;
    }
    RouterFailure reported;
    FBPhonebookExchange exchange = exchangeForPreferences(prefs, session, &reported);
    if (work(exchange))
        return true;
    if (error)
        *error = exchange.errorMessage().isEmpty()
                     ? FBBoxConnectionHelper::routerFailure(reported, prefs, session).message
                     : exchange.errorMessage();
    return false;
}
} // namespace

bool loadPhoneBook(TNPreferences& prefs, RouterSession& session, QVector<BoxPhonebook>* books, QString* error)
{
    QString why;
    const bool ok = withExchange(prefs, session, error, [&](FBPhonebookExchange& exchange) {
        const QString book = exchange.loadPhoneBook();
        return !book.isEmpty() && BoxPhonebookReader::parse(book, books, &why);
    });
    if (!ok && error && !why.isEmpty())
        *error = why;
    return ok;
}

bool addContact(TNPreferences& prefs, RouterSession& session, const BoxContactEntry& entry, QString* error)
{
    return withExchange(prefs, session, error,
                        [&](FBPhonebookExchange& exchange) { return exchange.exportContactToBox(entry); });
}

bool replacePhoneBook(TNPreferences& prefs, RouterSession& session, const QString& bookXML, QString* error)
{
    return withExchange(prefs, session, error,
                        [&](FBPhonebookExchange& exchange) { return exchange.exportGroupToBox(bookXML); });
}

} // namespace FBPhonebookBox
