#include "BoxCli.h"

#include "CliContext.h"

#include "app/Localization.h"
#include "app/TNPreferences.h"
#include "box/FBApplicationHelper.h"
#include "box/TNSessionManager.h"

namespace BoxCli {

std::shared_ptr<TNPreferences> prepare(CliContext& ctx)
{
    auto prefs = ctx.targetLocation();
    // The command line has no windows: an alert becomes the command's error line.
    FBApplicationHelper::setAlertPresenter({});
    FBApplicationHelper::clearLastAlertOnThisThread();
    return prefs;
}

QString failureText(TNPreferences& prefs)
{
    const QString alert = FBApplicationHelper::lastAlertBodyOnThisThread();
    if (!alert.isEmpty())
        return alert;
    TNSessionManager& session = TNSessionManager::forPreferences(prefs);
    if (!session.errorMessage.isEmpty())
        return session.errorMessage;
    const QString where = prefs.remoteAccess ? QStringLiteral("%1:%2").arg(prefs.remoteHostName).arg(prefs.remotesslPort)
                                             : QStringLiteral("%1:%2").arg(prefs.hostName).arg(prefs.webPort);
    return Localization::localizedFormat(QStringLiteral("errorBoxUnreachable"), where);
}

void ensureSession(TNPreferences& prefs)
{
    TNSessionManager& session = TNSessionManager::forPreferences(prefs);
    session.currentSessionIDUsePreferences(&prefs);
    // A wrong password on current firmware still ends as a session without login: the alert tells.
    const bool wrongPassword = FBApplicationHelper::lastAlertBodyOnThisThread()
                               == Localization::localized(QStringLiteral("errorWrongPass"));
    if (session.sessionResult != TNSessionResultLoggedIn || wrongPassword)
        throw CliError(1, failureText(prefs));
    FBApplicationHelper::clearLastAlertOnThisThread();
}

void checkAnswer(const QString& answer, TNPreferences& prefs)
{
    if (answer == u" " || answer == u"-2" || !FBApplicationHelper::lastAlertBodyOnThisThread().isEmpty())
        throw CliError(1, failureText(prefs));
}

} // namespace BoxCli
