#pragma once

#include <QByteArray>
#include <QList>

// Collects the call monitor's bytes and hands out complete lines: a read may carry several
// lines or only part of one. Lines end in LF or CR LF; the terminator is not returned.
class MonitorLineBuffer
{
public:
    // A line longer than this without a terminator is garbage: it is dropped, not kept forever.
    static constexpr qsizetype MaxLineLength = 4096;

    QList<QByteArray> append(const QByteArray& bytes);
    qsizetype pending() const { return m_pending.size(); }
    void clear() { m_pending.clear(); }

private:
    QByteArray m_pending;
};
