#include "PhonebookCommand.h"

#include "BoxCli.h"
#include "CliContext.h"

#include "base/TNPreferences.h"
#include "contacts/AddressBookSearch.h"
#include "contacts/FBPhonebookBox.h"
#include "contacts/VCardAddressBook.h"

namespace {
QString str(const std::string& s)
{
    return QString::fromStdString(s);
}

QVariantMap contactJson(const BoxPhonebookContact& c)
{
    QVariantList numbers;
    for (const auto& n : c.numbers)
        numbers.append(QVariantMap{{QStringLiteral("type"), n.type},
                                   {QStringLiteral("number"), n.number},
                                   {QStringLiteral("prio"), n.prio},
                                   {QStringLiteral("quickdial"), n.quickDial},
                                   {QStringLiteral("vanity"), n.vanity}});
    return {{QStringLiteral("name"), c.name},
            {QStringLiteral("category"), c.category},
            {QStringLiteral("numbers"), numbers}};
}
} // namespace

void PhonebookCommand::setup(CLI::App& app, CliContext& ctx)
{
    auto* pb = app.add_subcommand("phonebook", "The router's phone book");
    pb->require_subcommand(1);

    pb->add_subcommand("show", "Print the router's phone book")->callback([this, &ctx] {
        ctx.action = [this, &ctx] { show(ctx); };
    });

    auto* add = pb->add_subcommand("add", "Add one contact to the router's phone book");
    add->add_option("--name", m_add.name, "Name as the handsets show it")->required();
    add->add_option("--home", m_add.home, "Home number");
    add->add_option("--mobile", m_add.mobile, "Mobile number");
    add->add_option("--work", m_add.work, "Work number");
    add->add_flag("--important", m_add.important, "Mark as important person");
    auto* quick = add->add_option("--quickdial", m_add.quickDial, "Quick-dial code");
    auto* vanity = add->add_option("--vanity", m_add.vanity, "Vanity code");
    auto* on = add->add_option("--quickdial-on", m_add.quickDialOn, "Which number gets the quick-dial code")
                   ->check(CLI::IsMember({"home", "mobile", "work"}));
    quick->needs(on);
    vanity->needs(quick);
    on->needs(quick);
    add->callback([this, &ctx] { ctx.action = [this, &ctx] { this->add(ctx); }; });

    auto* group =
        pb->add_subcommand("export-group", "Replace the router's phone book with an address-book group");
    group->add_option("GROUP", m_group, "Group (vCard CATEGORIES) name")->required();
    group->add_option("--address-book", m_addressBook, "A .vcf file or folder instead of the configured one");
    group->callback([this, &ctx] { ctx.action = [this, &ctx] { exportGroup(ctx); }; });
}

void PhonebookCommand::show(CliContext& ctx)
{
    auto prefs = BoxCli::prepare(ctx);
    QVector<BoxPhonebook> books;
    QString why;
    if (!FBPhonebookBox::loadPhoneBook(*prefs, prefs.router(), &books, &why))
        throw CliError(1, why);
    if (ctx.json) {
        QVariantList rows;
        for (const auto& b : std::as_const(books))
            for (const auto& c : b.contacts)
                rows.append(contactJson(c));
        ctx.printJson(rows);
        return;
    }
    for (const auto& b : std::as_const(books))
        for (const auto& c : b.contacts) {
            ctx.out() << c.name;
            for (const auto& n : c.numbers)
                if (!n.number.isEmpty())
                    ctx.out() << "  " << n.type << " " << n.number;
            ctx.out() << "\n";
        }
}

void PhonebookCommand::add(CliContext& ctx)
{
    BoxContactEntry entry;
    entry.name = str(m_add.name);
    entry.home = str(m_add.home);
    entry.mobile = str(m_add.mobile);
    entry.work = str(m_add.work);
    entry.important = m_add.important;
    entry.quickDial = str(m_add.quickDial);
    entry.vanity = str(m_add.vanity);
    if (m_add.quickDialOn == "home")
        entry.quickDialOn = BoxContactEntry::QuickDialOn::Home;
    else if (m_add.quickDialOn == "mobile")
        entry.quickDialOn = BoxContactEntry::QuickDialOn::Mobile;
    else if (m_add.quickDialOn == "work")
        entry.quickDialOn = BoxContactEntry::QuickDialOn::Work;
    if (entry.home.isEmpty() && entry.mobile.isEmpty() && entry.work.isEmpty())
        throw CliError(2, QStringLiteral("give at least one of --home, --mobile, --work"));

    auto prefs = BoxCli::prepare(ctx);
    QString why;
    if (!FBPhonebookBox::addContact(*prefs, prefs.router(), entry, &why))
        throw CliError(1, why);
    if (ctx.json)
        ctx.printJson(QVariantMap{{QStringLiteral("added"), entry.name}});
    else
        ctx.out() << "Added " << entry.name << " to the router's phone book.\n";
}

void PhonebookCommand::exportGroup(CliContext& ctx)
{
    auto prefs = BoxCli::prepare(ctx);
    std::unique_ptr<VCardAddressBook> book = m_addressBook.empty()
                                                 ? VCardAddressBook::fromSettings(ctx.settings())
                                                 : std::make_unique<VCardAddressBook>(str(m_addressBook));
    if (!book || !book->isAvailable())
        throw CliError(
            1, QStringLiteral("no address book can be read (set AddressBook or give --address-book)"));
    const QString group = str(m_group);
    if (!adressbooksearch::addressbookGroups(book.get()).contains(group))
        throw CliError(1, QStringLiteral("the address book has no group '%1'").arg(group));
    const QString xml = adressbooksearch::peoplesForGroupWithFormat(group, prefs->contactFormat, book.get(),
                                                                    Prefixis(prefs->prefixis));
    QString why;
    if (!FBPhonebookBox::replacePhoneBook(*prefs, prefs.router(), xml, &why))
        throw CliError(1, why);
    const int contacts = int(xml.count(QStringLiteral("<contact>")));
    if (ctx.json)
        ctx.printJson(QVariantMap{{QStringLiteral("group"), group}, {QStringLiteral("contacts"), contacts}});
    else
        ctx.out() << "Wrote " << contacts << " contacts of " << group << " to the router's phone book.\n";
}
