#pragma once

#include <QString>

class StreamListener;
class TNCallinglist;

namespace methods {

// Saves the memo written during a call: the first save inserts it for the active profile with
// the call's number and start, and the call remembers the new memo; later saves during the same
// call update that memo. Returns the memo's id, or -1 when the call is gone or the save failed.
qint64 saveMemoForCall(StreamListener& listener, TNCallinglist& calls, int profile, const QString& uid,
                       const QString& subject, const QString& body);

} // namespace methods
