#pragma once

#include <QIcon>
#include <QObject>
#include <QString>

#include <memory>

class QMenu;
class QSystemTrayIcon;
class SettingsStore;

// The status item: the tray icon with the connection state, the tooltip with the location and
// the badge title, and the menu. Where the program shows itself follows "MENU_DOCK_STATE".
class TNStatusMenu : public QObject
{
    Q_OBJECT
public:
    enum DockState { TrayOnly = 0, TaskbarOnly = 1, TrayAndTaskbar = 2 };

    // A missing or unknown value means both.
    static DockState dockState(const SettingsStore& settings);
    static bool showsStatusItem(DockState state) { return state != TaskbarOnly; }
    static bool showsTaskbarWindow(DockState state) { return state != TrayOnly; }
    // 1 connected ("fritzboxg"), anything else "fritzboxb".
    static QIcon iconForState(int state);

    explicit TNStatusMenu(QObject* parent = nullptr);
    ~TNStatusMenu() override;

    // alloc_status_item: makes and shows the tray icon with the menu.
    void allocStatusItem(QMenu* menu);
    QSystemTrayIcon* statusItem() const { return m_item.get(); }

    void setStatusItemState(int state);
    int statusItemState() const { return m_state; }

    // The location shown in the tooltip, and the badge (new calls, traffic): "" for none.
    void setLocationName(const QString& name);
    void setTitle(const QString& title);
    QString title() const { return m_title; }
    // The traffic display in the tray: rates in the tooltip, a small chart instead of the
    // handset; "" and a null icon remove them.
    void setTrafficLabel(const QString& label);
    void setTrafficIcon(const QIcon& icon);
    QIcon currentIcon() const;
    QString toolTip() const;

signals:
    // A plain click on the icon (the menu opens on the context click).
    void clicked();

private:
    void update();

    std::unique_ptr<QSystemTrayIcon> m_item;
    int m_state = 0;
    QString m_location;
    QString m_title;
    QString m_trafficLabel;
    QIcon m_trafficIcon;
};
