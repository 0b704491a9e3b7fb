#include "DectCommand.h"

#include "BoxCli.h"
#include "CliContext.h"

#include "base/TNPreferences.h"
#include "box/FBBoxConnectionHelper.h"
#include "box/FBBoxSystemHelper.h"

void DectCommand::setup(CLI::App& app, CliContext& ctx)
{
    auto* cmd = app.add_subcommand("dect", "Switch DECT on or off");
    cmd->add_option("state", m_state, "on or off")->required()->check(CLI::IsMember({"on", "off"}));
    cmd->callback([this, &ctx] {
        ctx.action = [this, &ctx] {
            auto prefs = BoxCli::prepare(ctx);
            const QString word = m_state == "on" ? QStringLiteral("DECTon") : QStringLiteral("DECToff");
            RouterFailure failure;
            BoxCli::checkAnswer(
                FBBoxSystemHelper::threadSetDECTStatus(prefs.get(), prefs.router(), word, &failure), failure,
                prefs);
            ctx.out() << "DECT " << QString::fromStdString(m_state) << "\n";
        };
    });
}
