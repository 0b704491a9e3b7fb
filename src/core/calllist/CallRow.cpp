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

QList<CallRow> CallRow::fromTable(const QStringList& columns, const QList<QVariantList>& rows)
{
    auto index = [&](const char* name) { return columns.indexOf(QLatin1String(name)); };
    const qsizetype iRowid = index("rowid"), iProfile = index("profile"), iState = index("callstate"),
                    iDate = index("calldate"), iNumber = index("phonenumber"),
                    iExtension = index("extension"), iLine = index("line"), iDuration = index("duration"),
                    iName = index("name"), iAbid = index("abid"), iLabel = index("label");
    auto at = [](const QVariantList& row, qsizetype i) {
        return i >= 0 && i < row.size() ? row[i] : QVariant();
    };
    QList<CallRow> out;
    out.reserve(rows.size());
    for (const QVariantList& r : rows) {
        CallRow row;
        row.rowid = at(r, iRowid).toLongLong();
        row.profile = at(r, iProfile).toInt();
        row.callstate = at(r, iState).toInt();
        row.calldate = at(r, iDate).toLongLong();
        row.phonenumber = at(r, iNumber).toString();
        row.extension = at(r, iExtension).toString();
        row.line = at(r, iLine).toString();
        row.duration = at(r, iDuration).toString();
        row.name = at(r, iName).toString();
        row.abid = at(r, iAbid).toString();
        row.label = at(r, iLabel).toString();
        out.append(std::move(row));
    }
    return out;
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
