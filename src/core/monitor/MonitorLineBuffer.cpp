#include "monitor/MonitorLineBuffer.h"

#include "base/Logging.h"

QList<QByteArray> MonitorLineBuffer::append(const QByteArray& bytes)
{
    QList<QByteArray> lines;
    m_pending.append(bytes);
    qsizetype start = 0;
    for (;;) {
        const qsizetype nl = m_pending.indexOf('\n', start);
        if (nl < 0)
            break;
        qsizetype end = nl;
        if (end > start && m_pending.at(end - 1) == '\r')
            --end;
        if (end > start)
            lines.append(m_pending.mid(start, end - start));
        start = nl + 1;
    }
    m_pending.remove(0, start);
    if (m_pending.size() > MaxLineLength) {
        qCWarning(lcMonitor) << "Dropping" << m_pending.size() << "bytes without a line end";
        m_pending.clear();
    }
    return lines;
}
