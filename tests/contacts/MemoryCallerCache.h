#pragma once

#include "contacts/CallerCache.h"

#include <QMap>
#include <QMutex>

// The caller table without a database, for tests of the lookups that fill it.
class MemoryCallerCache final : public CallerCache
{
public:
    QStringList searchCallerNameForPhoneNumber(const QString& number) override
    {
        QMutexLocker lock(&mutex);
        return rows.value(number);
    }
    void insertCallerWithName(const QString& name, const QString& number, const QString& abid,
                              const QString& label) override
    {
        QMutexLocker lock(&mutex);
        rows.insert(number, {abid, name, label});
    }
    QMutex mutex;
    QMap<QString, QStringList> rows; // number -> [abid, name, label]
};
