#include "voicemail/VoicemailIndex.h"

#include <QSet>

namespace VoicemailIndex {

namespace {

quint32 word(const QByteArray& data, qsizetype at, ByteOrder order)
{
    const auto b = [&](qsizetype i) { return quint32(quint8(data.at(at + i))); };
    if (order == ByteOrder::Little)
        return b(0) | (b(1) << 8) | (b(2) << 16) | (b(3) << 24);
    return (b(0) << 24) | (b(1) << 16) | (b(2) << 8) | b(3);
}

// NUL-padded ASCII; anything after the first NUL is left-over garbage from older records.
QString text(const QByteArray& data, qsizetype at, qsizetype width)
{
    QByteArray field = data.mid(at, width);
    const qsizetype nul = field.indexOf('\0');
    if (nul >= 0)
        field.truncate(nul);
    return QString::fromLatin1(field);
}

ByteOrder orderOf(const QByteArray& data, qsizetype at)
{
    if (word(data, at, ByteOrder::Big) == quint32(kRecordSize))
        return ByteOrder::Big;
    if (word(data, at, ByteOrder::Little) == quint32(kRecordSize))
        return ByteOrder::Little;
    return ByteOrder::Unknown;
}

} // namespace

QList<qsizetype> recordOffsets(qsizetype fileSize)
{
    QList<qsizetype> offsets;
    for (qsizetype start = fileSize - kRecordSize; start >= 0; start -= kRecordSize)
        offsets.append(start);
    return offsets;
}

Record readRecord(const QByteArray& data, qsizetype offset)
{
    Record r;
    r.offset = offset;
    r.order = orderOf(data, offset);
    // The whole 32-bit duration in the record's byte order (a 300 s message is 5:00).
    r.duration = r.order == ByteOrder::Unknown ? 0 : word(data, offset + 20, r.order);
    r.number = text(data, offset + 52, 24);
    r.recFile = text(data, offset + 124, 9);
    const auto byteAt = [&](qsizetype i) { return int(quint8(data.at(offset + i))); };
    r.day = byteAt(284);
    r.month = byteAt(285);
    r.year = byteAt(286);
    r.hour = byteAt(287);
    r.minute = byteAt(288);
    r.calledLine = text(data, offset + 320, 24);
    return r;
}

QByteArray withoutRecords(const QByteArray& data, const QStringList& recFiles, int* removed)
{
    const QSet<QString> names(recFiles.cbegin(), recFiles.cend());
    const qsizetype count = data.size() / kRecordSize;
    const qsizetype head = data.size() - count * kRecordSize;
    QByteArray out = data.left(head);
    int dropped = 0;
    for (qsizetype start = head; start + kRecordSize <= data.size(); start += kRecordSize) {
        if (names.contains(readRecord(data, start).recFile)) {
            ++dropped;
            continue;
        }
        out.append(data.mid(start, kRecordSize));
    }
    if (removed)
        *removed = dropped;
    return out;
}

} // namespace VoicemailIndex
