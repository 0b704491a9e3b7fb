#include "DialCommand.h"

#include "BoxCli.h"
#include "CliContext.h"

#include "base/TNPreferences.h"
#include "box/FBBoxConnectionHelper.h"
#include "box/FBBoxSystemHelper.h"

void DialCommand::setup(CLI::App& app, CliContext& ctx)
{
    auto* cmd = app.add_subcommand("dial", "Dial a number through the router (click to dial)");
    cmd->add_option("number", m_number, "Number to dial")->required();
    cmd->add_option("--port", m_port, "Dial port of the router (default 50: all devices)");
    cmd->callback([this, &ctx] {
        ctx.action = [this, &ctx] {
            auto prefs = BoxCli::prepare(ctx);
            const QString port = QString::fromStdString(m_port);
            RouterFailure failure;
            const QString answer = FBBoxConnectionHelper::dialWithAction(
                QStringLiteral("call"), QString::fromStdString(m_number), port, prefs.get(), prefs.router(),
                &failure);
            BoxCli::checkAnswer(answer, failure, prefs);
            ctx.out() << "dialling " << QString::fromStdString(m_number) << "\n";
        };
    });
}
