#include "ExtensionsMenu.h"

#include "MenuRebuild.h"
#include "base/NotificationCenter.h"
#include "base/NotificationNames.h"
#include "base/TNPreferencesManager.h"
#include "monitor/StreamListener.h"

ExtensionsMenu::ExtensionsMenu(NotificationCenter& center, TNPreferencesManager& manager,
                               StreamListener& listener, QWidget* parent)
    : QMenu(tr("Extensions"), parent), m_manager(manager), m_listener(listener)
{
    rebuildOn(center, this, {Notifications::UPDATEEXTENSIONMENU, Notifications::ACTIVATESETTINGS},
              [this] { rebuild(); });
    rebuild();
}

QString ExtensionsMenu::imageNameForState(int state)
{
    switch (state) {
    case StreamListener::Free:
        return QStringLiteral("status-available");
    case StreamListener::InCall:
        return QStringLiteral("status-away");
    case StreamListener::Ringing:
        return QStringLiteral("status-idle");
    default:
        return QStringLiteral("status-none");
    }
}

void ExtensionsMenu::rebuild()
{
    clear();
    const auto prefs = m_manager.currentPreferences();
    const QVariantList extensions = prefs ? prefs->extensions : QVariantList();
    for (const QVariant& entry : extensions) {
        const QVariantMap ext = entry.toMap();
        if (ext.contains(QStringLiteral("Show")) && !ext.value(QStringLiteral("Show")).toBool())
            continue;
        const QString intern = ext.value(QStringLiteral("Intern")).toString();
        const QString title = ext.value(QStringLiteral("Title")).toString();
        const QString key = StreamListener::extensionKey(intern);
        const int state = m_listener.extensions().value(key, 0);
        QAction* action = addAction(QIcon(QStringLiteral(":/icons/%1.svg").arg(imageNameForState(state))),
                                    title.isEmpty() ? intern : title);
        action->setData(intern);
        action->setProperty("stateImage", imageNameForState(state));
        connect(action, &QAction::triggered, this,
                [this, intern, title] { emit callExtension(intern, title); });
    }
    if (actions().isEmpty())
        addAction(tr("No extensions known"))->setEnabled(false);
    setEnabled(true);
}
