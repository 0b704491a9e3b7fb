#pragma once

// Builds answering machine index files the way the router writes them, for the tests.

#include <QByteArray>
#include <QList>
#include <QString>
#include <QtEndian>

struct MetaRecord
{
    QString number;
    QString recFile;
    QString calledLine;
    quint32 duration = 0;
    int day = 1, month = 1, year = 26, hour = 0, minute = 0;
};

// A message of November 2026 at a quarter past the hour, on the line 987654.
inline MetaRecord record(const char* number, const char* file, quint32 duration, int day, int hour)
{
    MetaRecord r;
    r.number = QString::fromLatin1(number);
    r.recFile = QString::fromLatin1(file);
    r.calledLine = QStringLiteral("987654");
    r.duration = duration;
    r.day = day;
    r.month = 11;
    r.year = 26;
    r.hour = hour;
    r.minute = 15;
    return r;
}

inline void putText(QByteArray& rec, int at, int width, const QString& text)
{
    const QByteArray bytes = text.toLatin1().left(width);
    for (int i = 0; i < bytes.size(); ++i)
        rec[at + i] = bytes.at(i);
}

inline QByteArray metaRecord(const MetaRecord& r, bool littleEndian, quint32 sequence = 0)
{
    // Bytes the reader ignores are filled, as on the router, not left zero.
    QByteArray rec(348, '\x5A');
    const auto put32 = [&](int at, quint32 v) {
        if (littleEndian)
            qToLittleEndian(v, rec.data() + at);
        else
            qToBigEndian(v, rec.data() + at);
    };
    put32(0, 348);
    put32(4, sequence);
    put32(8, 0);
    put32(16, r.duration * 1000);
    put32(20, r.duration);
    put32(24, 1);
    rec.replace(52, 24, QByteArray(24, '\0'));
    putText(rec, 52, 24, r.number);
    rec.replace(124, 9, QByteArray(9, '\0'));
    putText(rec, 124, 9, r.recFile);
    putText(rec, 156, 60, QStringLiteral("/var/media/ftp/USB/FRITZ/voicebox/rec/") + r.recFile);
    rec[284] = char(r.day);
    rec[285] = char(r.month);
    rec[286] = char(r.year);
    rec[287] = char(r.hour);
    rec[288] = char(r.minute);
    rec[289] = char(0);
    rec.replace(320, 24, QByteArray(24, '\0'));
    putText(rec, 320, 24, r.calledLine);
    return rec;
}

// Oldest first, as the router appends; lead bytes in front of the first record.
inline QByteArray metaFile(const QList<MetaRecord>& records, bool littleEndian, int leadBytes = 0)
{
    QByteArray file(leadBytes, '\0');
    quint32 seq = 0;
    for (const MetaRecord& r : records)
        file += metaRecord(r, littleEndian, seq++);
    return file;
}
