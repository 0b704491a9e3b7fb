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

// Up to maxDigits decimal digits: connection ids and durations are small, and anything longer is
// not a number the router wrote (and would overflow where it is added up).
bool isBoundedNumber(const QString& field, int maxDigits)
{
    if (field.isEmpty() || field.size() > maxDigits)
        return false;
    for (const QChar c : field)
        if (c < u'0' || c > u'9')
            return false;
    return true;
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
        const auto byte = static_cast<unsigned char>(c);
        if (byte > 0x7f) {
            if (reason)
                *reason = QStringLiteral("not ASCII");
            return std::nullopt;
        }
        // NUL, a lone CR, ESC ...: no router writes them, and they must not reach a name or a script.
        if (byte < 0x20 || byte == 0x7f) {
            if (reason)
                *reason = QStringLiteral("control byte 0x%1").arg(byte, 2, 16, QLatin1Char('0'));
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
    // The connection id, and a disconnect's duration in seconds.
    int badField = 0;
    if (line.event != Event::Unknown && !isBoundedNumber(line.field(2), 4))
        badField = 2;
    else if (line.event == Event::Disconnect && !isBoundedNumber(line.field(3), 9))
        badField = 3;
    if (badField) {
        if (reason)
            *reason = QStringLiteral("field %1 is not a number of the router's: \"%2\"")
                          .arg(badField)
                          .arg(line.field(badField).left(16));
        return std::nullopt;
    }
    return line;
}
