#include "calllist/JournalDownload.h"

#include "base/TNPreferences.h"
#include "box/TNAction.h"
#include "calllist/JournalParser.h"

namespace JournalLoading {

QString downloadFromRouter(const std::shared_ptr<TNPreferences>& prefs, RouterSession& session,
                           const QString& cancelString, RouterFailure* failure)
{
    if (!prefs)
        return {};
    TNAction action;
    action.dialWithAction(QStringLiteral("refreshFoncalls"), QString(), QString(), prefs.get(), session);
    action.cancelOnString = cancelString;
    const QString answer =
        action.dialWithAction(QStringLiteral("csv"), QString(), QString(), prefs.get(), session);
    action.finish();
    if (failure)
        failure->merge(action.failure);
    // The commands hand the bytes through one to one (Latin-1); the journal chooses its encoding.
    return JournalParser::decode(answer.toLatin1());
}

} // namespace JournalLoading
