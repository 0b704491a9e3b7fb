#pragma once

#include <QMenu>
#include <QStringList>

class NotificationCenter;
class TNCallinglist;
class TNPreferencesManager;

// The latest incoming and missed calls of the current location (up to five numbers each, newest
// first) with name, number and time; choosing one dials it. Rebuilt on "REFRESHLATESTCALLSMENU"
// and "ACTIVATESETTINGS".
class LatestCallsMenu : public QMenu
{
    Q_OBJECT
public:
    LatestCallsMenu(NotificationCenter& center, TNPreferencesManager& manager, TNCallinglist* calls,
                    QWidget* parent = nullptr);

    // expandLatestCallsMenu
    void rebuild();

signals:
    // dialLatestNumberFromMenuItem: the number and its contact [abid, name, label].
    void dialNumber(const QString& number, const QStringList& contact);

private:
    void addSection(const QString& title, const QVariantList& entries);

    TNPreferencesManager& m_manager;
    TNCallinglist* m_calls;
};
