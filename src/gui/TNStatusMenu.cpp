#include "TNStatusMenu.h"

#include "base/SettingsKeys.h"
#include "base/SettingsStore.h"

#include <QMenu>
#include <QSystemTrayIcon>

TNStatusMenu::DockState TNStatusMenu::dockState(const SettingsStore& settings)
{
    if (!settings.contains(keys::MenuDockState))
        return TrayAndTaskbar;
    bool ok = false;
    const int value = settings.value(keys::MenuDockState).toInt(&ok);
    if (!ok || value < TrayOnly || value > TrayAndTaskbar)
        return TrayAndTaskbar;
    return DockState(value);
}

QIcon TNStatusMenu::iconForState(int state)
{
    QIcon icon(state == 1 ? QStringLiteral(":/icons/fritzboxg.svg")
                          : QStringLiteral(":/icons/fritzboxb.svg"));
    // Monochrome: let panels with a dark theme recolour it.
    icon.setIsMask(true);
    return icon;
}

TNStatusMenu::TNStatusMenu(QObject* parent) : QObject(parent) {}

TNStatusMenu::~TNStatusMenu() = default;

void TNStatusMenu::allocStatusItem(QMenu* menu)
{
    m_item = std::make_unique<QSystemTrayIcon>();
    m_item->setContextMenu(menu);
    connect(m_item.get(), &QSystemTrayIcon::activated, this,
            [this](QSystemTrayIcon::ActivationReason reason) {
                if (reason == QSystemTrayIcon::Trigger)
                    emit clicked();
            });
    update();
    m_item->show();
}

void TNStatusMenu::setStatusItemState(int state)
{
    m_state = state == 1 ? 1 : 0;
    update();
}

void TNStatusMenu::setLocationName(const QString& name)
{
    m_location = name;
    update();
}

void TNStatusMenu::setTitle(const QString& title)
{
    m_title = title;
    update();
}

void TNStatusMenu::setTrafficLabel(const QString& label)
{
    m_trafficLabel = label;
    update();
}

void TNStatusMenu::setTrafficIcon(const QIcon& icon)
{
    m_trafficIcon = icon;
    update();
}

QIcon TNStatusMenu::currentIcon() const
{
    return m_trafficIcon.isNull() ? iconForState(m_state) : m_trafficIcon;
}

QString TNStatusMenu::toolTip() const
{
    QString tip = QStringLiteral("Tondrel");
    if (!m_location.isEmpty())
        tip += QStringLiteral(" – ") + m_location;
    tip += u'\n' + (m_state == 1 ? tr("Call monitor connected") : tr("Call monitor not connected"));
    if (!m_title.isEmpty())
        tip += u'\n' + m_title;
    if (!m_trafficLabel.isEmpty())
        tip += u'\n' + m_trafficLabel;
    return tip;
}

void TNStatusMenu::update()
{
    if (!m_item)
        return;
    m_item->setIcon(currentIcon());
    m_item->setToolTip(toolTip());
}
