#include "voicemail/VoicemailFrames.h"

namespace VoicemailFrames {

Stream readFrames(const QByteArray& c)
{
    Stream s;
    qsizetype pos = 0;
    const qsizetype size = c.size();
    while (pos < size) {
        const auto marker = quint8(c.at(pos++));
        if (marker == 0x00 || (marker >= 0xFC && marker <= 0xFE))
            break;
        if (marker == 0xFB) {
            if (pos >= size) {
                s.truncated = true;
                break;
            }
            const int count = quint8(c.at(pos++));
            if (count > 0)
                s.frames.append(Frame{QByteArray(), count});
            continue;
        }
        qsizetype length = marker;
        if (marker == 0xFF) {
            if (pos + 2 > size) {
                s.truncated = true;
                break;
            }
            length = qsizetype(quint8(c.at(pos))) | (qsizetype(quint8(c.at(pos + 1))) << 8);
            pos += 2;
        }
        if (pos + length > size) {
            s.truncated = true;
            break;
        }
        if (length > 0)
            s.frames.append(Frame{c.mid(pos, length), 0});
        pos += length;
    }
    return s;
}

QByteArray writeFrames(const QList<Frame>& frames)
{
    QByteArray out;
    for (const Frame& f : frames) {
        if (f.data.isEmpty()) {
            for (int left = f.silentFrames; left > 0; left -= 255)
                out.append(char(0xFB)).append(char(std::min(left, 255)));
        } else if (f.data.size() <= 0xFA) {
            out.append(char(f.data.size())).append(f.data);
        } else {
            const auto n = quint16(f.data.size());
            out.append(char(0xFF)).append(char(n & 0xFF)).append(char(n >> 8)).append(f.data);
        }
    }
    out.append('\0');
    return out;
}

} // namespace VoicemailFrames
