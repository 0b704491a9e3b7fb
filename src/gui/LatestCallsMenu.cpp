#include "LatestCallsMenu.h"

#include "MenuRebuild.h"
#include "base/NotificationNames.h"
#include "base/TNPreferencesManager.h"
#include "calllist/TNCallinglist.h"

#include <QDate>
#include <QDateTime>
#include <QLocale>

LatestCallsMenu::LatestCallsMenu(NotificationCenter& center, TNPreferencesManager& manager,
                                 TNCallinglist* calls, QWidget* parent)
    : QMenu(tr("Latest calls"), parent), m_manager(manager), m_calls(calls)
{
    rebuildOn(center, this, {Notifications::REFRESHLATESTCALLSMENU, Notifications::ACTIVATESETTINGS},
              [this] { rebuild(); });
    rebuild();
}

void LatestCallsMenu::rebuild()
{
    clear();
    const auto prefs = m_manager.currentPreferences();
    if (m_calls && prefs && prefs->activeProfileInt > 0) {
        const QVariantMap recent = m_calls->getLastRecentCallsForProfile(prefs->activeProfileInt, {});
        addSection(tr("Incoming"), recent.value(QStringLiteral("in")).toList());
        addSection(tr("Missed"), recent.value(QStringLiteral("missed")).toList());
    }
    if (actions().isEmpty())
        addAction(tr("No calls yet"))->setEnabled(false);
}

void LatestCallsMenu::addSection(const QString& title, const QVariantList& entries)
{
    if (entries.isEmpty())
        return;
    QMenu::addSection(title);
    const QLocale locale;
    const QDate today = QDate::currentDate();
    for (const QVariant& entry : entries) {
        const QVariantMap call = entry.toMap();
        const QString number = call.value(QStringLiteral("phonenumber")).toString();
        const QString name = call.value(QStringLiteral("name")).toString();
        const QDateTime when =
            QDateTime::fromSecsSinceEpoch(call.value(QStringLiteral("lastdate")).toLongLong());
        // Today's calls by time, older ones with the day.
        QString time = locale.toString(when.time(), QLocale::ShortFormat);
        if (when.date() == today.addDays(-1))
            time = tr("yesterday %1").arg(time);
        else if (when.date() != today)
            time = locale.toString(when.date(), tr("d MMM")) + u' ' + time;
        const QString text = name.isEmpty() ? QStringLiteral("%1\t%2").arg(number, time)
                                            : QStringLiteral("%1 (%2)\t%3").arg(name, number, time);
        QAction* action = addAction(text);
        action->setData(number);
        const QStringList contact{call.value(QStringLiteral("abid")).toString(), name,
                                  call.value(QStringLiteral("label")).toString()};
        connect(action, &QAction::triggered, this,
                [this, number, contact] { emit dialNumber(number, contact); });
    }
}
