#pragma once

#include "monitor/NotificationPresenter.h"

#include <QDBusConnection>
#include <QHash>

// Call notifications through the desktop's org.freedesktop.Notifications service. A call keeps
// one notification: a newer one replaces it (replaces_id); the default action reports a click.
// Calls are asynchronous so a slow notification server never holds up the call monitor.
class DBusNotificationPresenter final : public NotificationPresenter
{
    Q_OBJECT
public:
    explicit DBusNotificationPresenter(QDBusConnection connection = QDBusConnection::sessionBus(),
                                       QObject* parent = nullptr);

    bool isAvailable() const override;
    QVariant deliver(const CallNotification& note, const QVariant& previous) override;
    void withdraw(const QVariant& handle) override;

    static const QString Service;
    static const QString Path;

private slots:
    void onActionInvoked(uint id, const QString& actionKey);
    void onNotificationClosed(uint id, uint reason);

private:
    void remember(const QString& uid, uint id);

    QDBusConnection m_bus;
    mutable bool m_available = false;
    QHash<QString, uint> m_idForUid;
    QHash<uint, QString> m_uidForId;
    QHash<QString, bool> m_closeWhenKnown; // withdrawn before the server told us its id
};
