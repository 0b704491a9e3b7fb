#include "StatusCommand.h"

#include "BoxCli.h"
#include "CliContext.h"

#include "base/TNPreferences.h"
#include "box/FBBoxSystemHelper.h"
#include "box/RouterSession.h"

namespace {
QString wlanText(int status)
{
    if (status == 2 || status == 4)
        return QStringLiteral("unknown");
    const QString first = (status & 16) ? QStringLiteral("on") : QStringLiteral("off");
    const QString second = (status & 128)  ? QStringLiteral("on")
                           : (status & 64) ? QStringLiteral("off")
                                           : QStringLiteral("none");
    return QStringLiteral("2.4 GHz %1, 5 GHz %2").arg(first, second);
}

QString dectText(int status)
{
    return status == 16  ? QStringLiteral("on")
           : status == 8 ? QStringLiteral("off")
                         : QStringLiteral("unknown");
}
} // namespace

void StatusCommand::setup(CLI::App& app, CliContext& ctx)
{
    auto* cmd =
        app.add_subcommand("status", "WLAN and DECT state, WLAN names, model and firmware, router language");
    cmd->callback([&ctx] {
        ctx.action = [&ctx] {
            auto prefs = BoxCli::prepare(ctx);
            BoxCli::ensureSession(prefs);
            RouterSession& session = prefs.router();
            FBBoxSystemHelper::threadcheckWLANStatus(prefs.get(), session);
            if (session.WLANStatus == 2)
                throw CliError(1, QStringLiteral("the router did not report its WLAN and DECT state"));
            const QVariantMap def = FBBoxSystemHelper::configDefinitionsForPreferences(prefs.get(), session);
            const QString model =
                def.value(QStringLiteral("Name"), def.value(QStringLiteral("ProduktName"))).toString();
            const QString firmware =
                def.value(QStringLiteral("Version"), def.value(QStringLiteral("FirmwareVersion"))).toString();
            const QString language =
                prefs->boxLanguage.isEmpty()
                    ? FBBoxSystemHelper::requestBoxLanguageUsePreferences(prefs.get(), session)
                    : prefs->boxLanguage;
            if (ctx.json) {
                ctx.printJson(QVariantMap{{QStringLiteral("WLANStatus"), session.WLANStatus},
                                          {QStringLiteral("DECTStatus"), session.DECTStatus},
                                          {QStringLiteral("wlanSSID"), session.wlanSSID},
                                          {QStringLiteral("wlanSSID_scnd"), session.wlanSSID_scnd},
                                          {QStringLiteral("model"), model},
                                          {QStringLiteral("firmware"), firmware},
                                          {QStringLiteral("language"), language}});
                return;
            }
            ctx.out() << "WLAN: " << wlanText(session.WLANStatus) << "\n"
                      << "WLAN names: " << session.wlanSSID << " / " << session.wlanSSID_scnd << "\n"
                      << "DECT: " << dectText(session.DECTStatus) << "\n"
                      << "model: " << QStringLiteral("%1 (%2)").arg(model, firmware) << "\n"
                      << "language: " << language << "\n";
        };
    });
}
