#pragma once

#include <QHash>
#include <QMutex>
#include <QObject>
#include <QPointer>
#include <QString>
#include <QVariantMap>

#include <functional>
#include <vector>

struct Notification
{
    QString name;
    QPointer<QObject> object; // the poster's object, may be null
    QVariantMap userInfo;
};

// Named in-process notifications. Posting works from any thread; each observer is called on the
// thread its context object lives in: at once when that is the posting thread, otherwise queued.
class NotificationCenter
{
public:
    using Handler = std::function<void(const Notification&)>;

    // One per process, owned by the composition root and handed to whoever posts or observes.
    NotificationCenter() = default;
    ~NotificationCenter();
    NotificationCenter(const NotificationCenter&) = delete;
    NotificationCenter& operator=(const NotificationCenter&) = delete;

    // An empty name observes every notification. The observation ends with the context object
    // or with removeObserver(context).
    void addObserver(QObject* context, const QString& name, Handler handler);
    void removeObserver(QObject* context, const QString& name = {});

    void post(const QString& name, QObject* object = nullptr, const QVariantMap& userInfo = {});
    void post(const Notification& notification);

private:
    struct Entry
    {
        quint64 id;
        QPointer<QObject> context;
        const QObject* contextKey;
        QString name;
        Handler handler;
    };

    void purge(const QObject* context);

    QMutex m_mutex;
    std::vector<Entry> m_entries;
    // Context objects may outlive the centre: their "destroyed" hooks are cut when it goes.
    QHash<const QObject*, QMetaObject::Connection> m_destroyHooks;
    quint64 m_nextId = 1;
};
