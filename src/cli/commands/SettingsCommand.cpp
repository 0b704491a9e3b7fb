#include "SettingsCommand.h"

#include "CliContext.h"

#include "base/SettingsKeys.h"
#include "base/SettingsStore.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace {
// Locations have their own command; these are not edited one value at a time.
bool isStructural(const QString& key)
{
    return key == keys::Locations || key == keys::CurrentLocation || key == keys::Profiles;
}

const GlobalKeyDef& knownKey(const QString& key)
{
    const GlobalKeyDef* def = findGlobalKey(key);
    if (!def || isStructural(key)) {
        QStringList known;
        for (const auto& d : globalKeyTable())
            if (!isStructural(d.key))
                known << d.key;
        throw CliError(2, QStringLiteral("unknown setting '%1' (known: %2)").arg(key, known.join(u", ")));
    }
    return *def;
}

} // namespace

void SettingsCommand::setup(CLI::App& app, CliContext& ctx)
{
    auto* cmd =
        app.add_subcommand("settings", "The global settings (for one location's settings use 'location')");
    cmd->require_subcommand(1);

    auto* list = cmd->add_subcommand("list", "Every global setting with its value (* marks a default)");
    list->callback([&ctx] {
        ctx.action = [&ctx] {
            SettingsStore& store = ctx.settings();
            QVariantMap all;
            for (const auto& def : globalKeyTable()) {
                if (isStructural(def.key))
                    continue;
                const bool stored = store.contains(def.key);
                const QVariant value = stored ? store.value(def.key) : def.missingValue;
                if (ctx.json) {
                    all.insert(def.key, value);
                    continue;
                }
                ctx.out() << (stored ? "  " : "* ") << def.key << " = " << CliContext::valueText(value)
                          << "  (" << settingTypeName(def.type) << ")\n";
            }
            if (ctx.json)
                ctx.printJson(all);
        };
    });

    auto* get = cmd->add_subcommand("get", "One global setting");
    get->add_option("key", m_key, "Setting name")->required();
    get->callback([this, &ctx] {
        ctx.action = [this, &ctx] {
            const GlobalKeyDef& def = knownKey(QString::fromStdString(m_key));
            const QVariant value = ctx.settings().value(def.key, def.missingValue);
            if (ctx.json)
                ctx.printJson(QVariantMap{{def.key, value}});
            else
                ctx.out() << CliContext::valueText(value) << "\n";
        };
    });

    auto* set = cmd->add_subcommand("set", "Change one global setting (arrays and dictionaries as JSON)");
    set->add_option("key", m_key, "Setting name, e.g. AddressBook, ListAferCall")->required();
    set->add_option("value", m_value, "Value; booleans as true/false")->required();
    set->callback([this, &ctx] {
        ctx.action = [this, &ctx] {
            const GlobalKeyDef& def = knownKey(QString::fromStdString(m_key));
            QString error;
            const QVariant value = parseSettingValue(def.type, QString::fromStdString(m_value), &error);
            if (!value.isValid())
                throw CliError(2, QStringLiteral("%1: %2").arg(def.key, error));
            SettingsStore& store = ctx.settings();
            store.setValue(def.key, value);
            if (!store.sync())
                throw CliError(
                    1, QStringLiteral("the settings could not be written to %1").arg(store.filePath()));
            if (!ctx.json)
                ctx.out() << def.key << " = " << CliContext::valueText(value) << "\n";
        };
    });
}
