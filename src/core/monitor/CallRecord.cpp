#include "monitor/CallRecord.h"

#include <QUuid>

QVariantMap CallRecord::toMap() const
{
    QVariantMap m{
        {QStringLiteral("calltime"), calltime},   {QStringLiteral("cmd"), cmd},
        {QStringLiteral("connID"), connID},       {QStringLiteral("line"), line},
        {QStringLiteral("number"), number},       {QStringLiteral("msn"), msn},
        {QStringLiteral("extension"), extension}, {QStringLiteral("extensionTitle"), extensionTitle},
        {QStringLiteral("duration"), duration},   {QStringLiteral("contact"), contact},
        {QStringLiteral("calltype"), calltype},   {QStringLiteral("dateStart"), dateStart},
        {QStringLiteral("connected"), connected}, {QStringLiteral("externalStart"), externalStart},
        {QStringLiteral("showCall"), showCall},   {QStringLiteral("MemoSubject"), MemoSubject},
        {QStringLiteral("MemoBody"), MemoBody},   {QStringLiteral("UID"), UID},
    };
    if (dateEnd.isValid())
        m.insert(QStringLiteral("dateEnd"), dateEnd);
    if (MemoID)
        m.insert(QStringLiteral("MemoID"), *MemoID);
    if (UILocalNote.isValid())
        m.insert(QStringLiteral("UILocalNote"), UILocalNote);
    return m;
}

CallRecord CallRecord::fromMap(const QVariantMap& m)
{
    CallRecord r;
    r.calltime = m.value(QStringLiteral("calltime")).toString();
    r.cmd = m.value(QStringLiteral("cmd")).toString();
    r.connID = m.value(QStringLiteral("connID")).toString();
    r.line = m.value(QStringLiteral("line")).toString();
    r.number = m.value(QStringLiteral("number")).toString();
    r.msn = m.value(QStringLiteral("msn")).toString();
    r.extension = m.value(QStringLiteral("extension")).toString();
    r.extensionTitle = m.value(QStringLiteral("extensionTitle")).toString();
    r.duration = m.value(QStringLiteral("duration")).toString();
    QStringList contact = m.value(QStringLiteral("contact")).toStringList();
    while (contact.size() < 3)
        contact.append(QString());
    r.contact = contact.mid(0, 3);
    r.calltype = m.value(QStringLiteral("calltype"), int(Incoming)).toInt();
    r.dateStart = m.value(QStringLiteral("dateStart")).toDateTime();
    r.dateEnd = m.value(QStringLiteral("dateEnd")).toDateTime();
    r.connected = m.value(QStringLiteral("connected")).toBool();
    r.externalStart = m.value(QStringLiteral("externalStart")).toBool();
    r.showCall = m.value(QStringLiteral("showCall"), true).toBool();
    if (m.contains(QStringLiteral("MemoID")))
        r.MemoID = m.value(QStringLiteral("MemoID")).toLongLong();
    r.MemoSubject = m.value(QStringLiteral("MemoSubject")).toString();
    r.MemoBody = m.value(QStringLiteral("MemoBody")).toString();
    r.UID = m.value(QStringLiteral("UID")).toString();
    r.UILocalNote = m.value(QStringLiteral("UILocalNote"));
    return r;
}

QString CallRecord::uniqueID()
{
    return QUuid::createUuid().toString(QUuid::WithoutBraces).toUpper();
}
