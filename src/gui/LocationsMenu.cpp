#include "LocationsMenu.h"

#include "MenuRebuild.h"
#include "base/NotificationCenter.h"
#include "base/NotificationNames.h"
#include "base/TNPreferencesManager.h"

#include <QActionGroup>

LocationsMenu::LocationsMenu(NotificationCenter& center, TNPreferencesManager& manager, QWidget* parent)
    : QMenu(tr("Locations"), parent), m_center(center), m_manager(manager)
{
    rebuildOn(center, this, {Notifications::REFRESHLOCATIONSMENU, Notifications::ACTIVATESETTINGS},
              [this] { rebuild(); });
    rebuild();
}

void LocationsMenu::rebuild()
{
    clear();
    auto* group = new QActionGroup(this);
    const QString current = m_manager.currentUID();
    for (const auto& prefs : m_manager.locations()) {
        const QString uid = prefs->uid;
        QAction* action = addAction(prefs->locationName.isEmpty() ? prefs->hostName : prefs->locationName);
        action->setCheckable(true);
        action->setChecked(uid == current);
        action->setData(uid);
        group->addAction(action);
        connect(action, &QAction::triggered, this, [this, uid] { setActiveProfile(uid); });
    }
    setEnabled(!actions().isEmpty());
}

void LocationsMenu::setActiveProfile(const QString& uid)
{
    if (uid == m_manager.currentUID())
        return;
    m_manager.activateCurrentLocationForID(uid);
    // The conductor, the menus and the windows follow the new location.
    m_center.post(Notifications::ACTIVATESETTINGS);
}
