#pragma once

#include <QObject>
#include <QString>
#include <QVariant>

// What one system notification of a call says.
struct CallNotification
{
    QString uid; // the call record's UID
    QString title;
    QString subtitle;
    QString body;
    QString number; // for the click action; "" when withheld
};

// Shows call notifications on the desktop (or elsewhere). deliver() replaces the earlier
// notification of the same call and returns a handle to keep under "UILocalNote".
class NotificationPresenter : public QObject
{
    Q_OBJECT
public:
    using QObject::QObject;

    virtual bool isAvailable() const = 0;
    virtual QVariant deliver(const CallNotification& note, const QVariant& previous) = 0;
    virtual void withdraw(const QVariant& handle) = 0;

signals:
    // The user clicked the notification of the call with this UID.
    void activated(const QString& uid);
};
