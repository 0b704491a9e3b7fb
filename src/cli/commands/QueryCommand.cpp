#include "QueryCommand.h"

#include "BoxCli.h"
#include "CliContext.h"

#include "base/TNPreferences.h"
#include "box/FBBoxConnectionHelper.h"

void QueryCommand::setup(CLI::App& app, CliContext& ctx)
{
    auto* cmd = app.add_subcommand(
        "query", "Read router variables (e.g. telcfg:settings/DialPort), one value per line");
    cmd->add_option("names", m_names, "Variable names")->required();
    cmd->callback([this, &ctx] {
        ctx.action = [this, &ctx] {
            auto prefs = BoxCli::prepare(ctx);
            BoxCli::ensureSession(prefs);
            QStringList names;
            for (const auto& n : m_names)
                names << QString::fromStdString(n);
            const QStringList values =
                FBBoxConnectionHelper::componentsArrayForVariables(names, prefs.get(), prefs.router());
            if (values.isEmpty())
                throw CliError(
                    1,
                    QStringLiteral("the router's answer did not fit the %1 names asked").arg(names.size()));
            if (ctx.json) {
                ctx.printJson(QVariant(QVariantList(values.begin(), values.begin() + names.size())));
                return;
            }
            for (qsizetype i = 0; i < names.size(); ++i)
                ctx.out() << values[i] << "\n";
        };
    });
}
