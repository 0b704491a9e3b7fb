#include "voicemail/VoicemailEntry.h"

QVariantMap VoicemailEntry::toMap() const
{
    return {
        {QStringLiteral("CallDuration"), CallDuration},
        {QStringLiteral("PhoneNumber"), PhoneNumber},
        {QStringLiteral("Contact"), Contact},
        {QStringLiteral("RecFile"), RecFile},
        {QStringLiteral("CalledLine"), CalledLine},
        {QStringLiteral("CallTimestamp"), CallTimestamp},
        {QStringLiteral("CallDate"), CallDate},
        {QStringLiteral("CallTime"), CallTime},
        {QStringLiteral("PATH"), PATH},
        {QStringLiteral("FILE"), FILE},
    };
}

VoicemailEntry VoicemailEntry::fromMap(const QVariantMap& map)
{
    VoicemailEntry e;
    e.CallDuration = map.value(QStringLiteral("CallDuration")).toString();
    e.PhoneNumber = map.value(QStringLiteral("PhoneNumber")).toString();
    e.Contact = map.value(QStringLiteral("Contact")).toStringList();
    e.RecFile = map.value(QStringLiteral("RecFile")).toString();
    e.CalledLine = map.value(QStringLiteral("CalledLine")).toString();
    e.CallTimestamp = map.value(QStringLiteral("CallTimestamp")).toDateTime();
    e.CallDate = map.value(QStringLiteral("CallDate")).toString();
    e.CallTime = map.value(QStringLiteral("CallTime")).toString();
    e.PATH = map.value(QStringLiteral("PATH")).toString();
    e.FILE = map.value(QStringLiteral("FILE")).toString();
    return e;
}

QDateTime VoicemailEntry::recordedAt() const
{
    const QDate day = QDate::fromString(CallDate, QStringLiteral("dd.MM.yyyy"));
    const QTime time = QTime::fromString(CallTime, QStringLiteral("HH:mm"));
    return day.isValid() && time.isValid() ? QDateTime(day, time) : QDateTime();
}

QVariantMap FaxEntry::toMap() const
{
    return {
        {QStringLiteral("Contact"), Contact},   {QStringLiteral("PhoneNumber"), PhoneNumber},
        {QStringLiteral("CallTime"), CallTime}, {QStringLiteral("CallTimestamp"), CallTimestamp},
        {QStringLiteral("PATH"), PATH},
    };
}

FaxEntry FaxEntry::fromMap(const QVariantMap& map)
{
    FaxEntry e;
    e.Contact = map.value(QStringLiteral("Contact")).toStringList();
    e.PhoneNumber = map.value(QStringLiteral("PhoneNumber")).toString();
    e.CallTime = map.value(QStringLiteral("CallTime")).toString();
    e.CallTimestamp = map.value(QStringLiteral("CallTimestamp")).toDateTime();
    e.PATH = map.value(QStringLiteral("PATH")).toString();
    return e;
}
