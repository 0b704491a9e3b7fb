#include "calllist/CallRow.h"

#include <QLocale>
#include <QRegularExpression>

CallRow CallRow::fromRecord(const QVariantMap& r)
{
    CallRow row;
    row.rowid = r.value(QStringLiteral("rowid")).toLongLong();
    row.profile = r.value(QStringLiteral("profile")).toInt();
    row.callstate = r.value(QStringLiteral("callstate")).toInt();
    row.calldate = r.value(QStringLiteral("calldate")).toLongLong();
    row.phonenumber = r.value(QStringLiteral("phonenumber")).toString();
    row.extension = r.value(QStringLiteral("extension")).toString();
    row.line = r.value(QStringLiteral("line")).toString();
    row.duration = r.value(QStringLiteral("duration")).toString();
    row.name = r.value(QStringLiteral("name")).toString();
    row.abid = r.value(QStringLiteral("abid")).toString();
    row.label = r.value(QStringLiteral("label")).toString();
    return row;
}

QVariantMap CallRow::toVariantMap() const
{
    return {
        {QStringLiteral("rowid"), rowid},
        {QStringLiteral("profile"), profile},
        {QStringLiteral("callstate"), callstate},
        {QStringLiteral("calldate"), calldate},
        {QStringLiteral("phonenumber"), phonenumber},
        {QStringLiteral("extension"), extension},
        {QStringLiteral("line"), line},
        {QStringLiteral("duration"), duration},
        {QStringLiteral("name"), name},
        {QStringLiteral("abid"), abid},
        {QStringLiteral("label"), label},
    };
}

QVariantList CallListEntry::toArray() const
{
    if (isDayHeader)
        return {dayText,   QString::number(dayCount),
                QString(), QString(),
                QString(), QString(),
                QString(), QString(),
                QString(), QString(),
                QString()};
    return {dateText,  call.name,  call.phonenumber, call.extension, call.line,      call.duration,
            call.abid, call.label, call.callstate,   call.rowid,     call.dateTime()};
}

QList<CallListEntry> buildCallListEntries(const QList<CallRow>& rows, const QString& dateFormat,
                                          const QString& dayFormat)
{
    QList<CallListEntry> entries;
    entries.reserve(rows.size() + rows.size() / 8 + 1);
    qsizetype header = -1;
    QDate currentDay;
    for (const CallRow& row : rows) {
        const QDateTime when = row.dateTime();
        if (header < 0 || when.date() != currentDay) {
            currentDay = when.date();
            CallListEntry h;
            h.isDayHeader = true;
            h.dayText = when.toString(dayFormat);
            entries.append(h);
            header = entries.size() - 1;
        }
        ++entries[header].dayCount;
        CallListEntry e;
        e.dateText = when.toString(dateFormat);
        e.call = row;
        entries.append(std::move(e));
    }
    return entries;
}

QString dayHeaderFormat()
{
    const QLocale locale;
    if (locale.language() == QLocale::C)
        return QStringLiteral("dd.MM.yyyy");
    QString date = locale.dateFormat(QLocale::ShortFormat);
    static const QRegularExpression shortYear(QStringLiteral("(?<!y)yy(?!y)"));
    date.replace(shortYear, QStringLiteral("yyyy"));
    return date;
}
