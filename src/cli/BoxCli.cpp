#include "BoxCli.h"

#include "CliContext.h"

#include "base/TNPreferences.h"
#include "box/RouterCommand.h"
#include "box/RouterSession.h"
#include "box/RouterSessions.h"

namespace BoxCli {

Target prepare(CliContext& ctx)
{
    Target target;
    target.prefs = ctx.targetLocation();
    target.session = ctx.environment().routerSessions().forLocation(*target.prefs);
    return target;
}

QString failureText(const Target& target, const RouterFailure& reported)
{
    return FBBoxConnectionHelper::routerFailure(reported, *target.prefs, *target.session).message;
}

void ensureSession(const Target& target)
{
    if (const RouterFailure failure = FBBoxConnectionHelper::ensureSession(*target.prefs, *target.session))
        throw CliError(1, failure.message);
}

void checkAnswer(const QString& answer, const RouterFailure& reported, const Target& target)
{
    if (answer == u" " || answer == u"-2" || reported)
        throw CliError(1, failureText(target, reported));
}

} // namespace BoxCli
