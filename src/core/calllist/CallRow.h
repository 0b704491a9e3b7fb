#pragma once

#include <QDateTime>
#include <QList>
#include <QString>
#include <QVariantMap>

// One call as the list queries deliver it: the callinglist columns plus the cached caller.
struct CallRow
{
    qint64 rowid = 0;
    int profile = 0;
    int callstate = 0;
    qint64 calldate = 0; // Unix time, seconds
    QString phonenumber;
    QString extension;
    QString line;
    QString duration;
    QString name;
    QString abid;
    QString label;

    static CallRow fromRecord(const QVariantMap& record);
    // A row of values whose names are columns (as a query returns them).
    static QList<CallRow> fromTable(const QStringList& columns, const QList<QVariantList>& rows);
    // Keyed by the column names "rowid", "profile", "callstate", ... "label".
    QVariantMap toVariantMap() const;
    QDateTime dateTime() const { return QDateTime::fromSecsSinceEpoch(calldate); }
};

// One entry of the table: a day header (with the number of calls that day) or a call.
struct CallListEntry
{
    bool isDayHeader = false;
    QString dayText;  // headers
    int dayCount = 0; // headers
    QString dateText; // calls, in the list's date format
    CallRow call;     // calls

    // The array form the table reads: date text, name, number, extension, line, duration,
    // abid, label, callstate, rowid, date; headers carry day text and count, then empty fields.
    QVariantList toArray() const;
};

// Groups calls by local day, a header before the first call of each day.
QList<CallListEntry> buildCallListEntries(const QList<CallRow>& rows, const QString& dateFormat,
                                          const QString& dayFormat);

// The day pattern of headers: the locale's short date with four-digit year, "dd.MM.yyyy" in C.
QString dayHeaderFormat();
