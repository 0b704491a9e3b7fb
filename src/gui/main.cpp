#include "app/AppEnvironment.h"
#include "app/Localization.h"
#include "SingleInstance.h"
#include "TrayApplication.h"

#include <QApplication>
#include <QMessageBox>

int main(int argc, char** argv)
{
    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("Tondrel"));
    QApplication::setApplicationVersion(QStringLiteral(TONDREL_VERSION));
    QApplication::setQuitOnLastWindowClosed(false);
    Localization::install();
    Localization::install(QLocale::system(), QStringLiteral("tondrel_gui"));

    const AppPaths paths = AppPaths::resolve();
    SingleInstance instance(SingleInstance::nameForConfigDir(paths.configDir));
    if (!instance.claim()) {
        // Already running: hand over what we were asked to do.
        return instance.forward(QApplication::arguments().mid(1)) ? 0 : 1;
    }

    AppEnvironment env(paths, qEnvironmentVariable("TONDREL_SECRETS"));
    QString error;
    if (!env.open(false, &error)) {
        if (!env.settingsCorrupt()) {
            QMessageBox::critical(nullptr, QStringLiteral("Tondrel"), error);
            return 1;
        }
        const auto answer = QMessageBox::question(
            nullptr, QStringLiteral("Tondrel"),
            QObject::tr("%1\n\nStart with default settings? The old file stays where it was copied.").arg(error));
        if (answer != QMessageBox::Yes || !env.open(true, &error))
            return 1;
    }

    TrayApplication::installAlertPresenter();
    TrayApplication tray(env, TrayApplication::routerOptions(env));
    QObject::connect(&instance, &SingleInstance::argumentsReceived, &tray, &TrayApplication::handleArguments);
    tray.start(QApplication::arguments().mid(1));
    return app.exec();
}
