#include "RouterFailureAlert.h"
#include "SingleInstance.h"
#include "TrayApplication.h"
#include "TrayArguments.h"
#include "app/AppEnvironment.h"
#include "base/Localization.h"

#include <QApplication>
#include <QMessageBox>

#include <cstdio>

namespace {
// Help, version and bad options need no display: read before the windowing system is opened.
TrayArguments readArguments(int argc, char** argv)
{
    QCoreApplication probe(argc, argv);
    QCoreApplication::setApplicationVersion(QStringLiteral(TONDREL_VERSION));
    Localization::install(QLocale::system(), QStringLiteral("tondrel_gui"));
    return TrayArguments::parse(QCoreApplication::arguments().mid(1));
}
} // namespace

int main(int argc, char** argv)
{
    const TrayArguments args = readArguments(argc, argv);
    if (args.exitNow) {
        std::fputs(qPrintable(args.message), args.ok ? stdout : stderr);
        return args.exitCode;
    }

    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("Tondrel"));
    QApplication::setApplicationVersion(QStringLiteral(TONDREL_VERSION));
    QApplication::setQuitOnLastWindowClosed(false);
    Localization::install();
    Localization::install(QLocale::system(), QStringLiteral("tondrel_gui"));

    const AppPaths paths = AppPaths::resolve(args.configDir, args.dataDir);
    SingleInstance instance(SingleInstance::nameForConfigDir(paths.configDir));
    if (!instance.claim()) {
        // Already running: hand over what we were asked to do.
        return instance.forward(args.requests) ? 0 : 1;
    }

    AppEnvironment env(paths,
                       args.secrets.isEmpty() ? qEnvironmentVariable("TONDREL_SECRETS") : args.secrets);
    QString error;
    if (!env.open(false, &error)) {
        if (!env.settingsCorrupt()) {
            QMessageBox::critical(nullptr, QStringLiteral("Tondrel"), error);
            return 1;
        }
        const auto answer = QMessageBox::question(
            nullptr, QStringLiteral("Tondrel"),
            QObject::tr("%1\n\nStart with default settings? The old file stays where it was copied.")
                .arg(error));
        if (answer != QMessageBox::Yes || !env.open(true, &error))
            return 1;
    }

    TrayApplication tray(env, TrayApplication::routerOptions(env, &RouterFailureAlert::show));
    QObject::connect(&instance, &SingleInstance::argumentsReceived, &tray, &TrayApplication::handleArguments);
    tray.start(args.requests);
    return app.exec();
}
