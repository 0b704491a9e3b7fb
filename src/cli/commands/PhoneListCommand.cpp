#include "PhoneListCommand.h"

#include "BoxCli.h"
#include "CliContext.h"

#include "base/TNPreferences.h"
#include "box/FBBoxPhoneHelper.h"

namespace {
QVariantList& listOf(TNPreferences& prefs, PhoneListCommand::Kind kind)
{
    switch (kind) {
    case PhoneListCommand::Kind::Extensions:
        return prefs.extensions;
    case PhoneListCommand::Kind::Lines:
        return prefs.lines;
    case PhoneListCommand::Kind::FaxLines:
        break;
    }
    return prefs.faxLines;
}

QString rowText(const QVariantMap& row, PhoneListCommand::Kind kind)
{
    if (kind == PhoneListCommand::Kind::Extensions)
        return QStringLiteral("%1\t%2\t%3%4")
            .arg(row.value(QStringLiteral("Intern")).toString(), row.value(QStringLiteral("Typ")).toString(),
                 row.value(QStringLiteral("Title")).toString(),
                 row.value(QStringLiteral("Show"), true).toBool() ? QString() : QStringLiteral(" (hidden)"));
    QString flags;
    if (row.value(QStringLiteral("HideList")).toBool())
        flags += QStringLiteral(" (hidden in list)");
    if (row.value(QStringLiteral("HideMonitor")).toBool())
        flags += QStringLiteral(" (hidden in monitor)");
    return QStringLiteral("%1\t%2%3")
        .arg(row.value(QStringLiteral("Line")).toString(), row.value(QStringLiteral("Title")).toString(),
             flags);
}
} // namespace

void PhoneListCommand::setup(CLI::App& app, CliContext& ctx)
{
    const char* name = m_kind == Kind::Extensions ? "extensions"
                       : m_kind == Kind::Lines    ? "lines"
                                                  : "faxlines";
    const char* what = m_kind == Kind::Extensions ? "The router's extensions (telephones)"
                       : m_kind == Kind::Lines    ? "The router's lines (own numbers)"
                                                  : "The router's fax lines";
    auto* cmd = app.add_subcommand(name, what);
    cmd->require_subcommand(1);
    const auto print = [this, &ctx](const QVariantList& rows) {
        if (ctx.json) {
            ctx.printJson(QVariant(rows));
            return;
        }
        for (const QVariant& r : rows)
            ctx.out() << rowText(r.toMap(), m_kind) << "\n";
    };
    auto* refresh = cmd->add_subcommand("refresh", "Read from the router, merge into the location and print");
    refresh->callback([this, &ctx, print] {
        ctx.action = [this, &ctx, print] {
            auto prefs = BoxCli::prepare(ctx);
            BoxCli::ensureSession(prefs);
            QVariantList& list = listOf(*prefs, m_kind);
            QVariantList merged;
            if (m_kind == Kind::Extensions)
                merged = FBBoxPhoneHelper::getExtensionsFromBoxAndMerge(
                    FBBoxPhoneHelper::convertIntoNewExtensions(list), prefs.get(), prefs.router());
            else if (m_kind == Kind::Lines)
                merged = FBBoxPhoneHelper::getLinesFromBoxAndMerge(list, prefs.get(), prefs.router());
            else
                merged = FBBoxPhoneHelper::getFaxLinesFromBoxAndMerge(list, prefs.get(), prefs.router());
            if (merged.isEmpty() && m_kind == Kind::Extensions)
                throw CliError(1, QStringLiteral("the router did not report its extensions"));
            list = merged;
            if (!prefs->save())
                throw CliError(1, QStringLiteral("the settings could not be written"));
            print(merged);
        };
    });
    auto* show = cmd->add_subcommand("list", "Print the list stored with the location");
    show->callback([this, &ctx, print] {
        ctx.action = [this, &ctx, print] {
            auto prefs = ctx.targetLocation();
            const QVariantList& list = listOf(*prefs, m_kind);
            print(m_kind == Kind::Extensions ? FBBoxPhoneHelper::convertIntoNewExtensions(list) : list);
        };
    });
}
