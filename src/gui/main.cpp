#include "app/AppEnvironment.h"
#include "app/Localization.h"
#include "app/TNPreferencesManager.h"
#include "SingleInstance.h"
#include "TrayCallMonitor.h"

#include <QAction>
#include <QApplication>
#include <QIcon>
#include <QMenu>
#include <QMessageBox>
#include <QSystemTrayIcon>

int main(int argc, char** argv)
{
    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("Tondrel"));
    QApplication::setApplicationVersion(QStringLiteral(TONDREL_VERSION));
    QApplication::setQuitOnLastWindowClosed(false);
    Localization::install();

    SingleInstance instance;
    if (!instance.claim()) {
        // Already running: hand over what we were asked to do.
        return instance.forward(QApplication::arguments().mid(1)) ? 0 : 1;
    }

    AppEnvironment env(AppPaths::resolve(), qEnvironmentVariable("TONDREL_SECRETS"));
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

    QSystemTrayIcon tray;
    const bool configured = env.manager().isConfigured();
    tray.setIcon(QIcon(QStringLiteral(":/icons/fritzboxb.svg")));
    tray.setToolTip(configured ? QStringLiteral("Tondrel – %1").arg(env.manager().currentPreferences()->locationName)
                               : QStringLiteral("Tondrel"));
    QMenu menu;
    QAction* callMonitor = menu.addAction(QObject::tr("Call monitor"));
    TrayCallMonitor monitor(env, tray, *callMonitor);
    menu.addSeparator();
    QAction* quit = menu.addAction(QObject::tr("Quit Tondrel"));
    QObject::connect(quit, &QAction::triggered, &app, &QApplication::quit);
    tray.setContextMenu(&menu);
    tray.show();
    return app.exec();
}
