#include "HangupCommand.h"

#include "BoxCli.h"
#include "CliContext.h"

#include "base/TNPreferences.h"
#include "box/FBBoxConnectionHelper.h"
#include "box/FBBoxSystemHelper.h"

void HangupCommand::setup(CLI::App& app, CliContext& ctx)
{
    auto* cmd = app.add_subcommand("hangup", "Hang up the call started by dial");
    cmd->add_option("--port", m_port, "Dial port of the router");
    cmd->callback([this, &ctx] {
        ctx.action = [this, &ctx] {
            auto prefs = BoxCli::prepare(ctx);
            const QString port = QString::fromStdString(m_port);
            RouterFailure failure;
            BoxCli::checkAnswer(FBBoxConnectionHelper::dialWithAction(QStringLiteral("cancelCall"), QString(),
                                                                      port, prefs.get(), prefs.router(),
                                                                      &failure),
                                failure, prefs);
            ctx.out() << "hung up\n";
        };
    });
}
