#include "monitor/SleepWatcher.h"

#include "base/Logging.h"

SleepWatcher::SleepWatcher(QDBusConnection bus, QObject* parent) : QObject(parent)
{
    if (!bus.isConnected()) {
        qCInfo(lcApp) << "No system bus: sleep and wake go unnoticed";
        return;
    }
    m_watching =
        bus.connect(QStringLiteral("org.freedesktop.login1"), QStringLiteral("/org/freedesktop/login1"),
                    QStringLiteral("org.freedesktop.login1.Manager"), QStringLiteral("PrepareForSleep"), this,
                    SLOT(onPrepareForSleep(bool)));
}

void SleepWatcher::onPrepareForSleep(bool start)
{
    if (start)
        emit aboutToSleep();
    else
        emit wokeUp();
}
