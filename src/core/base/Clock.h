#pragma once

#include <QDateTime>
#include <QMutex>

// Time comes through a clock so that tests can set it.
class Clock
{
public:
    virtual ~Clock() = default;
    virtual QDateTime now() const = 0;

    // The clock of the composition root; the system clock unless replaced.
    static Clock& system();
};

class SystemClock final : public Clock
{
public:
    QDateTime now() const override { return QDateTime::currentDateTime(); }
};

class ManualClock final : public Clock
{
public:
    explicit ManualClock(QDateTime start) : m_now(std::move(start)) {}
    QDateTime now() const override
    {
        QMutexLocker lock(&m_mutex);
        return m_now;
    }
    void set(const QDateTime& t)
    {
        QMutexLocker lock(&m_mutex);
        m_now = t;
    }
    void advance(qint64 seconds)
    {
        QMutexLocker lock(&m_mutex);
        m_now = m_now.addSecs(seconds);
    }

private:
    mutable QMutex m_mutex;
    QDateTime m_now;
};
