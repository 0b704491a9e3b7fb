#include "ContactsCliSupport.h"

#include "CliContext.h"

#include "base/TNPreferencesManager.h"

namespace contactsCli {

Prefixis prefixisFor(CliContext& ctx, const std::string& option)
{
    if (!option.empty()) {
        const QStringList parts = QString::fromStdString(option).split(u',');
        if (parts.size() != 4)
            throw CliError(
                2, QStringLiteral("--prefixes takes four comma-separated parts, got %1").arg(parts.size()));
        return Prefixis(parts);
    }
    if (!ctx.location.empty())
        return Prefixis(ctx.targetLocation()->prefixis);
    const auto current = ctx.manager().currentPreferences();
    return current ? Prefixis(current->prefixis) : Prefixis();
}

} // namespace contactsCli
