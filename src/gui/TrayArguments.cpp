#include "TrayArguments.h"

#include <QCommandLineParser>
#include <QCoreApplication>

TrayArguments TrayArguments::parse(const QStringList& arguments)
{
    TrayArguments out;
    QCommandLineParser parser;
    parser.setApplicationDescription(QCoreApplication::translate(
        "TrayArguments", "Tondrel sits in the tray, shows who is calling and controls your FRITZ!Box.\n"
                         "A second start hands its requests to the running Tondrel."));
    const QCommandLineOption help({QStringLiteral("h"), QStringLiteral("help")},
                                  QCoreApplication::translate("TrayArguments", "Show this help and exit."));
    const QCommandLineOption version(
        QStringLiteral("version"),
        QCoreApplication::translate("TrayArguments", "Show the version and exit."));
    const QCommandLineOption newCall(
        QStringLiteral("new-call"),
        QCoreApplication::translate("TrayArguments", "Open the new-call window."));
    const QCommandLineOption callList(QStringLiteral("calllist"),
                                      QCoreApplication::translate("TrayArguments", "Open the call list."));
    const QCommandLineOption voicemail(
        QStringLiteral("voicemail"),
        QCoreApplication::translate("TrayArguments", "Open the answering machine and fax window."));
    const QCommandLineOption configDir(
        QStringLiteral("config-dir"),
        QCoreApplication::translate("TrayArguments", "Settings folder (default ~/.config/Tondrel)."),
        QStringLiteral("dir"));
    const QCommandLineOption dataDir(
        QStringLiteral("data-dir"),
        QCoreApplication::translate("TrayArguments",
                                    "Data folder with the call database (default ~/.local/share/Tondrel)."),
        QStringLiteral("dir"));
    const QCommandLineOption secrets(
        QStringLiteral("secrets"),
        QCoreApplication::translate("TrayArguments", "Where passwords are kept: keyring (default) or file."),
        QStringLiteral("store"));
    // Window requests, in the order they are handed over.
    const QList<QCommandLineOption> windows{newCall, callList, voicemail};
    parser.addOptions({help, version, configDir, dataDir, secrets});
    for (const QCommandLineOption& o : windows)
        parser.addOption(o);
    parser.addPositionalArgument(
        QStringLiteral("url"),
        QCoreApplication::translate(
            "TrayArguments", "A tel:, callto: or dial: link: opens the new-call window with its number."),
        QStringLiteral("[url...]"));

    QStringList all{QStringLiteral("tondrel")};
    all += arguments;
    if (!parser.parse(all)) {
        out.ok = false;
        out.exitNow = true;
        out.exitCode = 2;
        out.message = parser.errorText() + u'\n' +
                      QCoreApplication::translate("TrayArguments", "Try 'tondrel --help'.") + u'\n';
        return out;
    }
    if (parser.isSet(help)) {
        out.exitNow = true;
        out.message = parser.helpText();
        return out;
    }
    if (parser.isSet(version)) {
        out.exitNow = true;
        out.message = QStringLiteral("tondrel %1\n").arg(QCoreApplication::applicationVersion());
        return out;
    }
    const QString store = parser.value(secrets);
    if (!store.isEmpty() && store != u"file" && store != u"keyring") {
        out.ok = false;
        out.exitNow = true;
        out.exitCode = 2;
        out.message = QCoreApplication::translate("TrayArguments", "--secrets is keyring or file, not %1.\n")
                          .arg(store);
        return out;
    }
    out.configDir = parser.value(configDir);
    out.dataDir = parser.value(dataDir);
    out.secrets = store == u"file" ? store : QString();
    for (const QCommandLineOption& o : windows)
        if (parser.isSet(o))
            out.requests.append(QStringLiteral("--") + o.names().constFirst());
    out.requests += parser.positionalArguments();
    return out;
}
