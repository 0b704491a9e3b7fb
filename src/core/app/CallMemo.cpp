#include "app/CallMemo.h"

#include "base/Logging.h"
#include "calllist/TNCallinglist.h"
#include "monitor/StreamListener.h"

namespace methods {

qint64 saveMemoForCall(StreamListener& listener, TNCallinglist& calls, int profile, const QString& uid,
                       const QString& subject, const QString& body)
{
    // By UID: a call ends with connID "-1", and the memo still belongs to it.
    const qsizetype index = listener.indexForUID(uid);
    if (index == StreamListener::NotFound)
        return -1;
    const CallRecord& call = listener.monitorCalls().at(index);
    if (call.MemoID) {
        const qint64 id = *call.MemoID;
        return calls.updateMemoWithID(id, subject, body) ? id : -1;
    }
    const qint64 when = call.dateStart.isValid() ? call.dateStart.toSecsSinceEpoch() : 0;
    const qint64 id = calls.setMemoForProfile(profile, call.number, when, subject, body);
    if (id <= 0) {
        qCWarning(lcCalllist) << "memo for the call could not be saved";
        return -1;
    }
    listener.setMemoIDForUID(id, uid);
    return id;
}

} // namespace methods
