#include "base/NotificationCenter.h"

#include <QThread>

#include <algorithm>

#include <memory>

NotificationCenter::~NotificationCenter()
{
    for (const QMetaObject::Connection& hook : m_destroyHooks)
        QObject::disconnect(hook);
}

void NotificationCenter::addObserver(QObject* context, const QString& name, Handler handler)
{
    Q_ASSERT(context);
    QMutexLocker lock(&m_mutex);
    m_entries.push_back({m_nextId++, context, context, name, std::move(handler)});
    if (!m_destroyHooks.contains(context))
        m_destroyHooks.insert(
            context, QObject::connect(context, &QObject::destroyed, [this, context] { purge(context); }));
}

void NotificationCenter::removeObserver(QObject* context, const QString& name)
{
    QMutexLocker lock(&m_mutex);
    std::erase_if(m_entries, [&](const Entry& e) {
        return e.contextKey == context && (name.isEmpty() || e.name == name);
    });
}

void NotificationCenter::purge(const QObject* context)
{
    QMutexLocker lock(&m_mutex);
    m_destroyHooks.remove(context);
    std::erase_if(m_entries, [&](const Entry& e) { return e.contextKey == context; });
}

void NotificationCenter::post(const QString& name, QObject* object, const QVariantMap& userInfo)
{
    post(Notification{name, object, userInfo});
}

void NotificationCenter::post(const Notification& notification)
{
    std::vector<Entry> targets;
    {
        QMutexLocker lock(&m_mutex);
        for (const Entry& e : m_entries)
            if (e.context && (e.name.isEmpty() || e.name == notification.name))
                targets.push_back(e);
    }
    for (Entry& e : targets) {
        QObject* context = e.context.data();
        if (!context)
            continue;
        if (context->thread() == QThread::currentThread()) {
            e.handler(notification);
        } else {
            // Only deliver if the observation is still registered when the event arrives.
            const quint64 id = e.id;
            QMetaObject::invokeMethod(
                context,
                [this, id, handler = std::move(e.handler), notification] {
                    {
                        QMutexLocker lock(&m_mutex);
                        if (std::none_of(m_entries.begin(), m_entries.end(),
                                         [id](const Entry& x) { return x.id == id; }))
                            return;
                    }
                    handler(notification);
                },
                Qt::QueuedConnection);
        }
    }
}
