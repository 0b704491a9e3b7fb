#include "monitor/DBusNotificationPresenter.h"

#include "base/Logging.h"

#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>

const QString DBusNotificationPresenter::Service = QStringLiteral("org.freedesktop.Notifications");
const QString DBusNotificationPresenter::Path = QStringLiteral("/org/freedesktop/Notifications");

DBusNotificationPresenter::DBusNotificationPresenter(QDBusConnection connection, QObject* parent)
    : NotificationPresenter(parent), m_bus(std::move(connection))
{
    if (!m_bus.isConnected())
        return;
    m_bus.connect(Service, Path, Service, QStringLiteral("ActionInvoked"), this,
                  SLOT(onActionInvoked(uint, QString)));
    m_bus.connect(Service, Path, Service, QStringLiteral("NotificationClosed"), this,
                  SLOT(onNotificationClosed(uint, uint)));
}

bool DBusNotificationPresenter::isAvailable() const
{
    if (m_available || !m_bus.isConnected())
        return m_available;
    QDBusConnectionInterface* bus = m_bus.interface();
    if (!bus)
        return false;
    m_available =
        bus->isServiceRegistered(Service).value() || bus->activatableServiceNames().value().contains(Service);
    return m_available;
}

QVariant DBusNotificationPresenter::deliver(const CallNotification& note, const QVariant& previous)
{
    const QString uid = note.uid;
    const uint replaces = m_idForUid.value(previous.toString(), m_idForUid.value(uid, 0));
    const QString summary =
        note.title.isEmpty() ? note.subtitle : QStringLiteral("%1: %2").arg(note.title, note.subtitle);
    QStringList actions;
    if (!note.number.isEmpty())
        actions << QStringLiteral("default") << note.number;
    const QVariantMap hints{{QStringLiteral("suppress-sound"), true},
                            {QStringLiteral("category"), QStringLiteral("im.received")}};

    QDBusMessage call = QDBusMessage::createMethodCall(Service, Path, Service, QStringLiteral("Notify"));
    call << QStringLiteral("Tondrel") << replaces << QStringLiteral("tondrel") << summary << note.body
         << actions << hints << int(-1);
    auto* watcher = new QDBusPendingCallWatcher(m_bus.asyncCall(call), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, uid](QDBusPendingCallWatcher* w) {
        w->deleteLater();
        const QDBusPendingReply<uint> reply = *w;
        if (reply.isError()) {
            qCWarning(lcMonitor) << "The notification server refused a notification:"
                                 << reply.error().message();
            return;
        }
        remember(uid, reply.value());
        if (m_closeWhenKnown.take(uid))
            withdraw(uid);
    });
    return uid;
}

void DBusNotificationPresenter::remember(const QString& uid, uint id)
{
    const uint old = m_idForUid.value(uid, 0);
    if (old && old != id)
        m_uidForId.remove(old);
    m_idForUid.insert(uid, id);
    m_uidForId.insert(id, uid);
}

void DBusNotificationPresenter::withdraw(const QVariant& handle)
{
    const QString uid = handle.toString();
    if (uid.isEmpty())
        return;
    const uint id = m_idForUid.take(uid);
    if (!id) {
        m_closeWhenKnown.insert(uid, true);
        return;
    }
    m_uidForId.remove(id);
    QDBusMessage call =
        QDBusMessage::createMethodCall(Service, Path, Service, QStringLiteral("CloseNotification"));
    call << id;
    m_bus.asyncCall(call);
}

void DBusNotificationPresenter::onActionInvoked(uint id, const QString& actionKey)
{
    const QString uid = m_uidForId.value(id);
    if (uid.isEmpty() || actionKey != u"default")
        return;
    emit activated(uid);
}

void DBusNotificationPresenter::onNotificationClosed(uint id, uint)
{
    const QString uid = m_uidForId.take(id);
    if (!uid.isEmpty() && m_idForUid.value(uid) == id)
        m_idForUid.remove(uid);
}
