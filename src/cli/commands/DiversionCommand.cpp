#include "DiversionCommand.h"

#include "BoxCli.h"
#include "CliContext.h"

#include "base/TNPreferences.h"
#include "box/FBBoxConnectionHelper.h"
#include "box/FBBoxSystemHelper.h"

void DiversionCommand::setup(CLI::App& app, CliContext& ctx)
{
    auto* cmd = app.add_subcommand("diversion", "Switch the call diversion on or off");
    cmd->add_option("state", m_state, "on or off")->required()->check(CLI::IsMember({"on", "off"}));
    cmd->callback([this, &ctx] {
        ctx.action = [this, &ctx] {
            auto prefs = BoxCli::prepare(ctx);
            const bool on = m_state == "on";
            RouterFailure failure;
            BoxCli::checkAnswer(FBBoxConnectionHelper::dialWithAction(
                                    on ? QStringLiteral("CALLon") : QStringLiteral("CALLoff"), QString(),
                                    QString(), prefs.get(), prefs.router(), &failure),
                                failure, prefs);
            ctx.out() << "diversion " << (on ? "on" : "off") << "\n";
        };
    });
}
