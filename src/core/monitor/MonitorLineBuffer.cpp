#include "monitor/MonitorLineBuffer.h"

#include "base/Logging.h"

QList<QByteArray> MonitorLineBuffer::append(const QByteArray& bytes)
{
    QList<QByteArray> lines;
    qsizetype from = 0;
    if (m_skipping) {
        const qsizetype nl = bytes.indexOf('\n');
        if (nl < 0)
            return lines;
        m_skipping = false;
        from = nl + 1;
    }
    m_pending.append(QByteArrayView(bytes).sliced(from));
    qsizetype start = 0;
    for (;;) {
        const qsizetype nl = m_pending.indexOf('\n', start);
        if (nl < 0)
            break;
        qsizetype end = nl;
        if (end > start && m_pending.at(end - 1) == '\r')
            --end;
        if (end - start > MaxLineLength)
            qCWarning(lcMonitor) << "Dropping a line of" << end - start << "bytes";
        else if (end > start)
            lines.append(m_pending.mid(start, end - start));
        start = nl + 1;
    }
    m_pending.remove(0, start);
    // A CR at the end may still become part of the line end.
    const qsizetype atLeast = m_pending.size() - (m_pending.endsWith('\r') ? 1 : 0);
    if (atLeast > MaxLineLength) {
        qCWarning(lcMonitor) << "Dropping" << m_pending.size() << "bytes without a line end";
        m_pending.clear();
        m_skipping = true;
    }
    return lines;
}
