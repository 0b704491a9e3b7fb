#pragma once

#include <QLoggingCategory>

// One category per subsystem folder.
Q_DECLARE_LOGGING_CATEGORY(lcApp)
Q_DECLARE_LOGGING_CATEGORY(lcBox)
Q_DECLARE_LOGGING_CATEGORY(lcMonitor)
Q_DECLARE_LOGGING_CATEGORY(lcCalllist)
Q_DECLARE_LOGGING_CATEGORY(lcContacts)
Q_DECLARE_LOGGING_CATEGORY(lcVoicemail)
Q_DECLARE_LOGGING_CATEGORY(lcAssistant)
