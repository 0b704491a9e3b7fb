#pragma once

#include <QByteArray>
#include <QList>

// Collects the call monitor's bytes and hands out complete lines: a read may carry several
// lines or only part of one. Lines end in LF or CR LF; the terminator is not returned.
class MonitorLineBuffer
{
public:
    // A line longer than this is garbage: it is dropped whole, also the part of it that arrives
    // in later reads, so that how the bytes were split into reads never decides what is kept.
    static constexpr qsizetype MaxLineLength = 4096;

    QList<QByteArray> append(const QByteArray& bytes);
    qsizetype pending() const { return m_pending.size(); }
    void clear()
    {
        m_pending.clear();
        m_skipping = false;
    }

private:
    QByteArray m_pending;
    bool m_skipping = false; // inside an over-long line, until its LF
};
