#pragma once

#include "monitor/CallRecord.h"
#include "monitor/NotificationPresenter.h"

#include <optional>

namespace methods {

// Title, subtitle and body of the notification for a call; nothing for a call the program is
// still dialling.
std::optional<CallNotification> notificationForCall(const CallRecord& call);

// Seconds as "hh:mm:ss".
QString durationText(const QString& seconds);

} // namespace methods
