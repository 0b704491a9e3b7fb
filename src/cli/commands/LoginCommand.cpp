#include "LoginCommand.h"

#include "BoxCli.h"
#include "CliContext.h"

#include "base/TNPreferences.h"
#include "box/RouterSession.h"
#include "box/TNSessionManager.h"

void LoginCommand::setup(CLI::App& app, CliContext& ctx)
{
    auto* cmd =
        app.add_subcommand("login", "Log in to the router; print the session result, SID kind and rights");
    cmd->callback([&ctx] {
        ctx.action = [&ctx] {
            auto prefs = BoxCli::prepare(ctx);
            BoxCli::ensureSession(prefs);
            TNSessionManager& session = prefs.router().sessionManager();
            const QString sid =
                prefs->remoteAccess ? prefs.router().remoteSessionID : prefs.router().sessionID;
            const QString kind =
                sid == u"-1" ? QStringLiteral("none (the router needs no login)") : QStringLiteral("session");
            const QString flavour = prefs.router().useLUA ? QStringLiteral("lua") : QStringLiteral("form");
            const QString rights = TNSessionRights::debugUserRight(session.userRights).trimmed();
            if (ctx.json) {
                ctx.printJson(QVariantMap{
                    {QStringLiteral("result"), TNSessionRights::sessionResultName(session.sessionResult)},
                    {QStringLiteral("resultCode"), session.sessionResult},
                    {QStringLiteral("session"),
                     sid == u"-1" ? QStringLiteral("none") : QStringLiteral("sid")},
                    {QStringLiteral("firmware"), flavour},
                    {QStringLiteral("rights"), qulonglong(session.userRights)},
                    {QStringLiteral("rightsText"), rights}});
                return;
            }
            ctx.out() << "result: " << TNSessionRights::sessionResultName(session.sessionResult) << "\n"
                      << "session: " << kind << "\n"
                      << "firmware: " << flavour << "\n"
                      << "rights: " << rights << "\n";
        };
    });
}
