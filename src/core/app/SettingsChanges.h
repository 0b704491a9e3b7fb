#pragma once

#include <QStringList>

class NotificationCenter;
class QObject;

// What a save of the settings changed, and the notifications that let the rest of the program
// follow: menus, the call list, the answering machine lists.
class SettingsChanges
{
public:
    // Changed keys of one location; its passwords count as FTP access.
    void addLocation(const QStringList& changedKeys, bool passwordsChanged);
    void addGlobals(const QStringList& changedKeys);
    // Another location became current: everything it shows is new.
    void setCurrentLocationChanged() { m_current = true; }

    // "ACTIVATESETTINGS" always, then the ones the changes call for, in posting order.
    QStringList notifications() const;
    void post(NotificationCenter& center, QObject* sender) const;

private:
    bool m_locations = false;
    bool m_list = false;
    bool m_files = false;
    bool m_current = false;
};
