#pragma once

#include "base/NotificationCenter.h"

#include <QMetaObject>
#include <QObject>
#include <QPointer>
#include <QStringList>

#include <functional>
#include <memory>

// Rebuilds a menu once per burst of notifications, after the current event: observers of
// "ACTIVATESETTINGS" that reload the settings run first, and a run of call monitor lines costs
// one rebuild.
inline void rebuildOn(NotificationCenter& center, QObject* owner, const QStringList& names,
                      std::function<void()> rebuild)
{
    auto pending = std::make_shared<bool>(false);
    for (const QString& name : names)
        center.addObserver(owner, name, [owner, pending, rebuild](const Notification&) {
            if (*pending)
                return;
            *pending = true;
            QMetaObject::invokeMethod(
                owner,
                [pending, rebuild] {
                    *pending = false;
                    rebuild();
                },
                Qt::QueuedConnection);
        });
}
