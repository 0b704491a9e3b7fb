#pragma once

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>

// The answering machine's index file ("meta0" ...): fixed records of 348 bytes aligned to the end
// of the file, written in the byte order of the router's processor.
namespace VoicemailIndex {

inline constexpr int kRecordSize = 348;

enum class ByteOrder { Big, Little, Unknown };

struct Record
{
    qsizetype offset = 0;
    ByteOrder order = ByteOrder::Unknown;
    quint32 duration = 0; // seconds
    QString number;
    QString recFile;
    QString calledLine;
    int day = 0, month = 0, year = 0, hour = 0, minute = 0;
};

// Record start offsets, newest (last in the file) first.
QList<qsizetype> recordOffsets(qsizetype fileSize);

// The record at offset; the caller guarantees offset + kRecordSize <= data.size().
Record readRecord(const QByteArray& data, qsizetype offset);

// The file with the records of the given recording names removed. Bytes in front of the first
// record and the order of the remaining records are kept. removed counts the records dropped.
QByteArray withoutRecords(const QByteArray& data, const QStringList& recFiles, int* removed = nullptr);

} // namespace VoicemailIndex
