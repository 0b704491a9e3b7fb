#include "WlanCommand.h"

#include "BoxCli.h"
#include "CliContext.h"

#include "base/TNPreferences.h"
#include "box/FBBoxConnectionHelper.h"
#include "box/FBBoxSystemHelper.h"
#include "box/RouterSession.h"

void WlanCommand::setup(CLI::App& app, CliContext& ctx)
{
    auto* cmd =
        app.add_subcommand("wlan", "Switch the WLAN radios: on, off, 2on, 2off (2.4 GHz), 5on, 5off (5 GHz)");
    cmd->add_option("state", m_state, "on, off, 2on, 2off, 5on, 5off")
        ->required()
        ->check(CLI::IsMember({"on", "off", "2on", "2off", "5on", "5off"}));
    cmd->callback([this, &ctx] {
        ctx.action = [this, &ctx] {
            auto prefs = BoxCli::prepare(ctx);
            BoxCli::ensureSession(prefs);
            // Read the radios first: the Lua form of on/off depends on whether a second radio exists.
            FBBoxSystemHelper::threadcheckWLANStatus(prefs.get(), prefs.router());
            const QString word = QStringLiteral("WLAN") + QString::fromStdString(m_state);
            RouterFailure failure;
            BoxCli::checkAnswer(
                FBBoxSystemHelper::threadSetWLANStatus(prefs.get(), prefs.router(), word, &failure), failure,
                prefs);
            if (ctx.json) {
                ctx.printJson(QVariantMap{{QStringLiteral("WLANStatus"), prefs.router().WLANStatus}});
                return;
            }
            ctx.out() << "WLAN status " << prefs.router().WLANStatus << "\n";
        };
    });
}
