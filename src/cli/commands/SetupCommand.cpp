#include "SetupCommand.h"

#include "CliContext.h"

#include "assistant/TNAssistantDatasource.h"
#include "assistant/TNAssistantSaver.h"
#include "base/NotificationCenter.h"
#include "base/TNPreferencesManager.h"
#include "box/RouterSessions.h"

void SetupCommand::setup(CLI::App& app, CliContext& ctx)
{
    auto* cmd = app.add_subcommand("setup", "Read a router and write a new location from its settings");
    cmd->add_option("--host", m_host, "The router's address")->required();
    cmd->add_option("--user", m_user, "Router user name");
    cmd->add_flag("--password-stdin", m_passwordStdin, "Read the router password from standard input")
        ->required();
    cmd->add_option("--name", m_name, "Name of the new location");
    cmd->add_option("--web-port", m_webPort, "The router's web port (80)")->check(CLI::Range(1, 65535));
    cmd->callback([this, &ctx] {
        ctx.action = [this, &ctx] {
            AssistantRouterData data;
            data.host = QString::fromStdString(m_host);
            data.webPort = m_webPort;
            data.userName = QString::fromStdString(m_user);
            data.pass = ctx.readSecretLine();
            data.name = QString::fromStdString(m_name);

            TNAssistantDatasource source(ctx.settings(), ctx.secrets(), ctx.environment().routerSessions());
            if (source.assistantDataForHost(&data) != AssistantRules::ReadOutcome::Ok)
                throw CliError(1, source.errorMessage());
            TNAssistantSaver saver(ctx.manager(), ctx.environment().notifications());
            const QString uid = saver.savePreferences(data);
            if (uid.isEmpty())
                throw CliError(1, saver.errorMessage());

            QVariantList users;
            for (const auto& u : std::as_const(data.users))
                users.append(u.name);
            if (ctx.json) {
                ctx.printJson(QVariantMap{{QStringLiteral("uid"), uid},
                                          {QStringLiteral("host"), data.host},
                                          {QStringLiteral("prefixis"), data.prefixis},
                                          {QStringLiteral("dialport"), data.dialPort},
                                          {QStringLiteral("remotehost"), data.remoteHost},
                                          {QStringLiteral("remotesslport"), data.remoteSSLPort},
                                          {QStringLiteral("users"), users}});
                return;
            }
            ctx.out() << uid << "\n";
            ctx.out() << "prefixes " << data.prefixis.join(u',') << ", dial port " << data.dialPort << "\n";
            if (data.needsRemoteHost)
                ctx.out() << "no remote access host known; set one with: location set RemoteHost NAME\n";
            else
                ctx.out() << "remote host " << data.remoteHost << ":"
                          << (data.remoteSSLPort.isEmpty() ? QStringLiteral("443") : data.remoteSSLPort)
                          << "\n";
        };
    });
}
