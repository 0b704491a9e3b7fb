#include "NumberCommand.h"

#include "CliContext.h"
#include "ContactsCliSupport.h"

#include "base/NumberForms.h"
#include "base/StringAdditions.h"

#include <QVariantMap>

void NumberCommand::setup(CLI::App& app, CliContext& ctx)
{
    auto* number = app.add_subcommand("number", "The clean, standard and unified forms of a phone number");
    number->require_subcommand(1);
    struct Form
    {
        const char* name;
        const char* help;
        QString (*convert)(const QString&, const Prefixis&);
    };
    static const Form forms[] = {
        {"clean", "Separators removed, own country folded to the trunk prefix",
         [](const QString& t, const Prefixis& p) { return methods::cleanNumber(t, p); }},
        {"standard", "Like clean, country code folded too, digits only",
         [](const QString& t, const Prefixis& p) { return adressbooksearch::standardizePhoneNumber(t, p); }},
        {"unified", "Lower case, dialable characters only, letters as keypad digits",
         [](const QString& t, const Prefixis&) { return SearchingAdditions::unifiedPhoneNumber(t); }},
    };
    for (const Form& form : forms) {
        auto* sub = number->add_subcommand(form.name, form.help);
        sub->add_option("TEXT", m_text, "The number as written")->required();
        sub->add_option("--prefixes", m_prefixes,
                        "Dialling context instead of the location's (e.g. 00,49,0,30)");
        sub->callback([this, &ctx, &form] {
            ctx.action = [this, &ctx, &form] {
                const Prefixis prefixis = contactsCli::prefixisFor(ctx, m_prefixes);
                const QString result = form.convert(QString::fromStdString(m_text), prefixis);
                if (ctx.json)
                    ctx.printJson(QVariantMap{{QString::fromLatin1(form.name), result}});
                else
                    ctx.out() << result << "\n";
            };
        });
    }
}
