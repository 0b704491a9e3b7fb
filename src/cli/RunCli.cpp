#include "CliContext.h"
#include "Command.h"

#include <QCoreApplication>
#include <QLoggingCategory>

int runCli(int argc, const char* const* argv, CliContext& ctx)
{
    CLI::App app{"Tondrel command line: the FRITZ!Box companion without windows", "tondrel-cli"};
    app.require_subcommand(1);
    app.fallthrough(); // common options may follow the sub-command
    app.set_version_flag("--version", std::string(TONDREL_VERSION));
    app.option_defaults()->always_capture_default();
    app.add_option("--config-dir", ctx.configDir, "Where settings.json (and secrets.json) live")
        ->envname("TONDREL_CONFIG_DIR");
    app.add_option("--data-dir", ctx.dataDir, "Where Tondrel.db, reverseSearch.plist and scripts/ live")
        ->envname("TONDREL_DATA_DIR");
    app.add_option("--location", ctx.location,
                   "Act on this location (name or UID) instead of the current one");
    app.add_option("--secrets", ctx.secretsKind,
                   "Password store: keyring (default) or file (secrets.json, mode 0600)")
        ->envname("TONDREL_SECRETS")
        ->check(CLI::IsMember({"keyring", "file"}));
    app.add_flag("--json", ctx.json, "Machine-readable output");
    app.add_flag("--reset-settings", ctx.resetSettings,
                 "Start from default settings when settings.json cannot be read (a copy is kept)");
    app.add_flag("-v,--verbose", ctx.verbose, "Log what happens to standard error");

    const auto commands = allCommands();
    for (const auto& command : commands)
        command->setup(app, ctx);

    try {
        app.parse(argc, argv);
    } catch (const CLI::CallForHelp& e) {
        ctx.out() << QString::fromStdString(app.help());
        ctx.out().flush();
        return 0;
    } catch (const CLI::CallForAllHelp& e) {
        ctx.out() << QString::fromStdString(app.help("", CLI::AppFormatMode::All));
        ctx.out().flush();
        return 0;
    } catch (const CLI::CallForVersion& e) {
        ctx.out() << TONDREL_VERSION << "\n";
        ctx.out().flush();
        return 0;
    } catch (const CLI::ParseError& e) {
        ctx.err() << "tondrel-cli: " << QString::fromStdString(e.what()) << "\n"
                  << "Run with --help for more information.\n";
        ctx.err().flush();
        return 2;
    }

    if (!ctx.verbose)
        QLoggingCategory::setFilterRules(QStringLiteral("tondrel.*=false\nqt.*=false"));

    try {
        if (ctx.action)
            ctx.action();
        // Work that was deferred to the next turn of the event loop still belongs to this run.
        QCoreApplication::sendPostedEvents();
        QCoreApplication::processEvents();
        ctx.out().flush();
        return 0;
    } catch (const CliError& e) {
        ctx.out().flush();
        ctx.err() << "tondrel-cli: " << QString::fromStdString(e.what()) << "\n";
        ctx.err().flush();
        return e.exitCode;
    }
}
