#include "monitor/CallNotificationText.h"

#include "base/Localization.h"

namespace methods {

namespace {
QString titleKey(const CallRecord& call)
{
    if (call.cmd == u"RING")
        return QStringLiteral("incomingcall");
    if (call.cmd == u"CALL")
        return call.externalStart ? QStringLiteral("outgoingcall") : QStringLiteral("answerheadset");
    if (call.cmd == u"DISCONNECT") {
        if (call.connected)
            return QStringLiteral("callfinished");
        if (call.calltype == CallRecord::Missed)
            return QStringLiteral("callabsentia");
        if (call.calltype == CallRecord::Outgoing)
            return QStringLiteral("callnotavailable");
    }
    return {};
}
} // namespace

QString durationText(const QString& seconds)
{
    const qint64 s = seconds.toLongLong();
    return QStringLiteral("%1:%2:%3")
        .arg(s / 3600, 2, 10, QLatin1Char('0'))
        .arg((s / 60) % 60, 2, 10, QLatin1Char('0'))
        .arg(s % 60, 2, 10, QLatin1Char('0'));
}

std::optional<CallNotification> notificationForCall(const CallRecord& call)
{
    if (call.cmd == u"DIAL")
        return std::nullopt;

    CallNotification note;
    note.uid = call.UID;
    note.number = call.number;
    const QString key = titleKey(call);
    note.title = key.isEmpty() ? QString() : Localization::localized(key);

    const QString name = call.contactName();
    if (!name.isEmpty())
        note.subtitle = name;
    else
        note.subtitle = Localization::localized(call.number.isEmpty() ? QStringLiteral("unknownnumber")
                                                                      : QStringLiteral("unknowncaller"));

    QString body = call.number;
    QString label = call.contactLabel();
    label.remove(u'\t');
    // A reverse-lookup name has no label: "number ()" would only look broken.
    if (!name.isEmpty() && !label.isEmpty())
        body = QStringLiteral("%1 (%2)").arg(body, label);
    if (call.cmd == u"DISCONNECT") {
        if (call.connected)
            body = QStringLiteral("%1\n%2 %3")
                       .arg(body, Localization::localized(QStringLiteral("callduration")),
                            durationText(call.duration));
        else
            body = QStringLiteral("%1\n%2").arg(body, call.calltime);
    } else if (!call.line.isEmpty()) {
        body =
            QStringLiteral("%1\n%2 %3").arg(body, Localization::localized(QStringLiteral("line")), call.line);
    }
    note.body = body;
    return note;
}

} // namespace methods
