#include "box/RouterCommand.h"

#include "base/Localization.h"
#include "base/NotificationCenter.h"
#include "base/NotificationNames.h"
#include "base/TNPreferences.h"
#include "box/FBBoxConnectionHelper.h"
#include "box/FBBoxSystemHelper.h"
#include "box/RouterSession.h"
#include "box/TNSessionManager.h"

namespace FBBoxConnectionHelper {

RouterFailure routerFailure(const RouterFailure& reported, TNPreferences& prefs, RouterSession& session)
{
    if (reported)
        return reported;
    if (const QString text = session.sessionManager().errorMessage; !text.isEmpty())
        return RouterFailure::withText(RouterFailure::Kind::Unreachable, QString(), text);
    const QString where = prefs.remoteAccess
                              ? QStringLiteral("%1:%2").arg(prefs.remoteHostName).arg(prefs.remotesslPort)
                              : QStringLiteral("%1:%2").arg(prefs.hostName).arg(prefs.webPort);
    return RouterFailure::make(RouterFailure::Kind::Unreachable, QStringLiteral("errorBoxUnreachable"),
                               {where});
}

RouterFailure ensureSession(TNPreferences& prefs, RouterSession& session, RouterFailure* notice)
{
    TNSessionManager& manager = session.sessionManager();
    const RouterFailure login = manager.currentSessionIDUsePreferences(&prefs);
    if (notice)
        *notice = login;
    const bool refusedNow = login.key == u"errorWrongPass";
    // After a wrong password a current router ends as "a box without sessions" ("-1"), which is
    // then reused for minutes without a new failure: a router whose login page asked for the
    // password (luaType set) has sessions, so "-1" there still means the password was refused.
    QString sid;
    {
        QMutexLocker lock(&session.mutex());
        sid = prefs.remoteAccess ? session.remoteSessionID : session.sessionID;
    }
    const bool refusedEarlier = manager.luaType != 0 && sid == u"-1";
    if (manager.sessionResult != TNSessionResultLoggedIn || refusedNow || refusedEarlier) {
        if (refusedEarlier && !refusedNow)
            return RouterFailure::make(RouterFailure::Kind::WrongPassword, QStringLiteral("errorWrongPass"));
        return routerFailure(login, prefs, session);
    }
    return {};
}

RouterFailure checkRouterStatusWithSession(TNPreferences* prefs, RouterSession& session)
{
    if (!prefs)
        return {};
    RouterFailure notice;
    const RouterFailure failure = ensureSession(*prefs, session, &notice);
    if (!failure) {
        FBBoxSystemHelper::threadcheckWLANStatus(prefs, session, &notice);
        return notice;
    }
    // Not logged in: the state is not known, and a second login is not tried.
    {
        QMutexLocker lock(&session.mutex());
        session.WLANStatus = 2;
        session.DECTStatus = 2;
    }
    session.notifications().post(Notifications::WLANSTATUS);
    session.notifications().post(Notifications::DECTSTATUS);
    return failure;
}

RouterCommandResult runRouterCommand(const QString& action, const QString& number, const QString& port,
                                     TNPreferences* prefs, RouterSession& session)
{
    RouterCommandResult result;
    if (!prefs)
        return result;
    result.failure = ensureSession(*prefs, session);
    if (result.failure)
        return result;
    RouterFailure reported;
    result.answer = dialWithAction(action, number, port, prefs, session, &reported);
    result.ok = result.answer != u" " && result.answer != u"-2" && !reported;
    if (!result.ok)
        result.failure = routerFailure(reported, *prefs, session);
    return result;
}

QStringList queryWithSession(const QStringList& variables, TNPreferences* prefs, RouterSession& session)
{
    if (!prefs || ensureSession(*prefs, session))
        return {};
    return componentsArrayForVariables(variables, prefs, session);
}

} // namespace FBBoxConnectionHelper
