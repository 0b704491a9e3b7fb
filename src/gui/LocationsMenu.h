#pragma once

#include <QMenu>

class NotificationCenter;
class TNPreferencesManager;

// One checkable item per location; choosing one makes it current and activates it. Rebuilt on
// "REFRESHLOCATIONSMENU" and "ACTIVATESETTINGS".
class LocationsMenu : public QMenu
{
    Q_OBJECT
public:
    LocationsMenu(NotificationCenter& center, TNPreferencesManager& manager, QWidget* parent = nullptr);

    // expandLocationMenuItems
    void rebuild();

private:
    void setActiveProfile(const QString& uid);

    NotificationCenter& m_center;
    TNPreferencesManager& m_manager;
};
