#include "base/Logging.h"

Q_LOGGING_CATEGORY(lcApp, "tondrel.app")
Q_LOGGING_CATEGORY(lcBox, "tondrel.box")
Q_LOGGING_CATEGORY(lcMonitor, "tondrel.monitor")
Q_LOGGING_CATEGORY(lcCalllist, "tondrel.calllist")
Q_LOGGING_CATEGORY(lcContacts, "tondrel.contacts")
Q_LOGGING_CATEGORY(lcVoicemail, "tondrel.voicemail")
Q_LOGGING_CATEGORY(lcAssistant, "tondrel.assistant")
