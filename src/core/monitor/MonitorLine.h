#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <optional>

// One event line of the call monitor, split at ";".
struct MonitorLine
{
    enum class Event { Ring, Call, Connect, Disconnect, Unknown };

    Event event = Event::Unknown;
    QStringList fields; // field 0 is the time stamp, field 1 the event word

    QString field(int i) const { return fields.value(i); }
    QString eventWord() const { return fields.value(1); }

    // How many fields an event needs (the trailing empty field after the last ";" not counted).
    static int requiredFields(Event event);

    // Nullopt (and the reason) for bytes that are not printable ASCII (control bytes included) or
    // a line with fewer fields than its event needs. An unknown event word parses, as Event::Unknown.
    static std::optional<MonitorLine> parse(const QByteArray& bytes, QString* reason = nullptr);
};
