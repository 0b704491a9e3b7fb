#pragma once

#include <QDBusConnection>
#include <QObject>

// Sleep and wake from logind's PrepareForSleep signal on the system bus.
class SleepWatcher : public QObject
{
    Q_OBJECT
public:
    explicit SleepWatcher(QDBusConnection bus = QDBusConnection::systemBus(), QObject* parent = nullptr);
    bool isWatching() const { return m_watching; }

signals:
    void aboutToSleep();
    void wokeUp();

private slots:
    void onPrepareForSleep(bool start);

private:
    bool m_watching = false;
};
