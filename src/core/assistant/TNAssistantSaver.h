#pragma once

#include "assistant/AssistantRouterData.h"

#include <QString>

class NotificationCenter;
class TNPreferencesManager;

// savePreferences of the setup assistant: the router's data becomes a new, current location.
// Progress goes out as "UPDATESAVEPROGRESS" (userInfo "progress", 0..100), completion as
// "FINISHSAVING" (userInfo "success", "uid"), then "ACTIVATESETTINGS" on success.
class TNAssistantSaver
{
public:
    TNAssistantSaver(TNPreferencesManager& manager, NotificationCenter& center)
        : m_manager(manager), m_center(center)
    {
    }

    // The new location's UID, or "" with errorMessage() ("errorSaving") when nothing was kept.
    QString savePreferences(const AssistantRouterData& data);
    QString errorMessage() const { return m_error; }

private:
    void progress(int percent);

    TNPreferencesManager& m_manager;
    NotificationCenter& m_center;
    QString m_error;
};
