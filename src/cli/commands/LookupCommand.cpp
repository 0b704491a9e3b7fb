#include "LookupCommand.h"

#include "CliContext.h"
#include "ContactsCliSupport.h"

#include "base/Clock.h"
#include "base/SettingsStore.h"
#include "base/TNPreferencesManager.h"
#include "contacts/AddressBookSearch.h"
#include "contacts/CallerCache.h"
#include "contacts/CallerIdentification.h"
#include "contacts/ContactsServices.h"
#include "contacts/ReverseLookup.h"
#include "contacts/VCardAddressBook.h"

#include <QDir>

namespace {
QString sourceName(methods::CallerSource source)
{
    switch (source) {
    case methods::CallerSource::Cache:
        return QStringLiteral("cache");
    case methods::CallerSource::AddressBook:
        return QStringLiteral("addressbook");
    case methods::CallerSource::None:
        break;
    }
    return {};
}
} // namespace

void LookupCommand::setup(CLI::App& app, CliContext& ctx)
{
    auto* lookup =
        app.add_subcommand("lookup", "Who is this number? Caller cache, address book, web directories");
    lookup->add_option("NUMBER", m_number, "The number in any written form")->required();
    lookup->add_flag("--reverse", m_reverse, "Ask the web directories when nothing else knows the number");
    lookup->add_option("--address-book", m_addressBook,
                       "A .vcf file or folder instead of the configured one");
    lookup->add_option("--prefixes", m_prefixes,
                       "Dialling context instead of the location's (e.g. 00,49,0,30)");
    lookup->add_option("--timeout", m_timeout, "Seconds to wait for a web directory (10)")
        ->check(CLI::Range(0.1, 120.0));
    lookup->callback([this, &ctx] {
        ctx.action = [this, &ctx] {
            const Prefixis prefixis = contactsCli::prefixisFor(ctx, m_prefixes);
            const auto current =
                ctx.location.empty() ? ctx.manager().currentPreferences() : ctx.targetLocation();
            const QVariantMap format = current ? current->contactFormat : QVariantMap();

            ContactsServices& services = ctx.environment().contacts();
            services.setTimeoutMs(int(m_timeout * 1000));
            if (!m_addressBook.empty()) {
                services.useAddressBook(QString::fromStdString(m_addressBook));
                if (!services.addressBook()->isAvailable())
                    throw CliError(1, QStringLiteral("the address book %1 cannot be read")
                                          .arg(services.addressBook()->path()));
            }

            const QString number = methods::cleanNumber(QString::fromStdString(m_number), prefixis);
            if (number.isEmpty())
                throw CliError(2, QStringLiteral("no number given"));
            methods::CallerSource source = methods::CallerSource::None;
            QStringList found = methods::searchNameForPhonenumber(
                number, services.callerCache(), services.addressBook(), prefixis, format, &source);
            QString sourceText = sourceName(source);
            if (found.value(1).isEmpty() && m_reverse) {
                const ReverseSearchResult result =
                    services.reverseLookup().reverseSearchMain(number, prefixis);
                if (!result.name.isEmpty()) {
                    found = {QString(), result.name, result.label};
                    sourceText = QStringLiteral("reverse");
                }
            }
            if (ctx.json) {
                ctx.printJson(QVariantMap{{QStringLiteral("abid"), found.value(0)},
                                          {QStringLiteral("name"), found.value(1)},
                                          {QStringLiteral("label"), found.value(2)},
                                          {QStringLiteral("source"), sourceText}});
                return;
            }
            if (found.value(1).isEmpty()) {
                ctx.out() << "No name found for " << number << ".\n";
                return;
            }
            ctx.out() << found.value(1);
            if (!found.value(2).isEmpty())
                ctx.out() << " (" << found.value(2) << ")";
            ctx.out() << "\n";
        };
    });
}
