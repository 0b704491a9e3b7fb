#include "monitor/MonitorLine.h"

namespace {
MonitorLine::Event eventFor(const QString& word)
{
    if (word == u"RING")
        return MonitorLine::Event::Ring;
    if (word == u"CALL")
        return MonitorLine::Event::Call;
    if (word == u"CONNECT")
        return MonitorLine::Event::Connect;
    if (word == u"DISCONNECT")
        return MonitorLine::Event::Disconnect;
    return MonitorLine::Event::Unknown;
}
} // namespace

int MonitorLine::requiredFields(Event event)
{
    switch (event) {
    case Event::Ring:
        return 5; // time;RING;id;caller;called[;trunk] (old firmware leaves out the trunk)
    case Event::Call:
        return 6; // time;CALL;id;extension;own;called[;trunk]
    case Event::Connect:
        return 4; // time;CONNECT;id;extension[;number]
    case Event::Disconnect:
        return 4; // time;DISCONNECT;id;duration
    case Event::Unknown:
        break;
    }
    return 2;
}

std::optional<MonitorLine> MonitorLine::parse(const QByteArray& bytes, QString* reason)
{
    for (const char c : bytes) {
        if (static_cast<unsigned char>(c) > 0x7f) {
            if (reason)
                *reason = QStringLiteral("not ASCII");
            return std::nullopt;
        }
    }
    MonitorLine line;
    line.fields = QString::fromLatin1(bytes).split(u';');
    // The router ends every line with ";": drop that empty last field so counts stay exact.
    if (line.fields.size() > 1 && line.fields.constLast().trimmed().isEmpty())
        line.fields.removeLast();
    line.event = eventFor(line.field(1));
    const int need = requiredFields(line.event);
    if (line.fields.size() < need) {
        if (reason)
            *reason = QStringLiteral("%1 fields, %2 needs %3")
                          .arg(line.fields.size())
                          .arg(line.eventWord())
                          .arg(need);
        return std::nullopt;
    }
    return line;
}
