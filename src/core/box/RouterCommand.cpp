#include "box/RouterCommand.h"

#include "base/Localization.h"
#include "base/NotificationCenter.h"
#include "base/NotificationNames.h"
#include "base/TNPreferences.h"
#include "box/FBApplicationHelper.h"
#include "box/FBBoxConnectionHelper.h"
#include "box/FBBoxSystemHelper.h"
#include "box/TNSessionManager.h"

namespace FBBoxConnectionHelper {

QString routerFailureText(TNPreferences& prefs)
{
    if (const QString alert = FBApplicationHelper::lastAlertBodyOnThisThread(); !alert.isEmpty())
        return alert;
    if (const QString session = TNSessionManager::forPreferences(prefs).errorMessage; !session.isEmpty())
        return session;
    const QString where = prefs.remoteAccess ? QStringLiteral("%1:%2").arg(prefs.remoteHostName).arg(prefs.remotesslPort)
                                             : QStringLiteral("%1:%2").arg(prefs.hostName).arg(prefs.webPort);
    return Localization::localizedFormat(QStringLiteral("errorBoxUnreachable"), where);
}

bool ensureSession(TNPreferences& prefs, QString* error)
{
    TNSessionManager& session = TNSessionManager::forPreferences(prefs);
    session.currentSessionIDUsePreferences(&prefs);
    const QString wrongPassText = Localization::localized(QStringLiteral("errorWrongPass"));
    const bool alerted = FBApplicationHelper::lastAlertBodyOnThisThread() == wrongPassText;
    // After a wrong password a current router ends as "a box without sessions" ("-1"), which is
    // then reused for minutes without a new alert: a router whose login page asked for the
    // password (luaType set) has sessions, so "-1" there still means the password was refused.
    QString sid;
    {
        QMutexLocker lock(&prefs.runtimeMutex());
        sid = prefs.remoteAccess ? prefs.remoteSessionID : prefs.sessionID;
    }
    const bool refusedEarlier = session.luaType != 0 && sid == u"-1";
    if (session.sessionResult != TNSessionResultLoggedIn || alerted || refusedEarlier) {
        if (error)
            *error = refusedEarlier && !alerted ? wrongPassText : routerFailureText(prefs);
        return false;
    }
    return true;
}

void checkRouterStatusWithSession(TNPreferences* prefs)
{
    if (!prefs)
        return;
    FBApplicationHelper::clearLastAlertOnThisThread();
    QString error;
    if (ensureSession(*prefs, &error)) {
        FBBoxSystemHelper::threadcheckWLANStatus(prefs);
        return;
    }
    // Not logged in: the state is not known, and a second login is not tried.
    {
        QMutexLocker lock(&prefs->runtimeMutex());
        prefs->WLANStatus = 2;
        prefs->DECTStatus = 2;
    }
    NotificationCenter::defaultCenter().post(Notifications::WLANSTATUS);
    NotificationCenter::defaultCenter().post(Notifications::DECTSTATUS);
}

RouterCommandResult runRouterCommand(const QString& action, const QString& number, const QString& port,
                                     TNPreferences* prefs)
{
    RouterCommandResult result;
    if (!prefs)
        return result;
    FBApplicationHelper::clearLastAlertOnThisThread();
    if (!ensureSession(*prefs, &result.error))
        return result;
    FBApplicationHelper::clearLastAlertOnThisThread();
    result.answer = dialWithAction(action, number, port, prefs);
    const QString alert = FBApplicationHelper::lastAlertBodyOnThisThread();
    result.ok = result.answer != u" " && result.answer != u"-2" && alert.isEmpty();
    if (result.ok)
        return result;
    result.error = routerFailureText(*prefs);
    return result;
}

QStringList queryWithSession(const QStringList& variables, TNPreferences* prefs)
{
    if (!prefs)
        return {};
    FBApplicationHelper::clearLastAlertOnThisThread();
    QString error;
    if (!ensureSession(*prefs, &error))
        return {};
    return componentsArrayForVariables(variables, prefs);
}

} // namespace FBBoxConnectionHelper
