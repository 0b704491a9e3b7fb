#include "BoxCli.h"

#include "CliContext.h"

#include "base/TNPreferences.h"
#include "box/FBApplicationHelper.h"
#include "box/RouterCommand.h"

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
    return FBBoxConnectionHelper::routerFailureText(prefs);
}

void ensureSession(TNPreferences& prefs)
{
    QString error;
    if (!FBBoxConnectionHelper::ensureSession(prefs, &error))
        throw CliError(1, error);
    FBApplicationHelper::clearLastAlertOnThisThread();
}

void checkAnswer(const QString& answer, TNPreferences& prefs)
{
    if (answer == u" " || answer == u"-2" || !FBApplicationHelper::lastAlertBodyOnThisThread().isEmpty())
        throw CliError(1, failureText(prefs));
}

} // namespace BoxCli
