#pragma once

#include <QByteArray>
#include <QList>

// The router's recording container: a stream of length-prefixed codec frames.
//   01..FA n  then n bytes of one frame
//   FB n      n frames of silence
//   FF lo hi  then a frame of the 16-bit little-endian length
//   00, FC..FE  end of the stream
namespace VoicemailFrames {

struct Frame
{
    QByteArray data;      // empty for silence
    int silentFrames = 0; // > 0 for silence
};

struct Stream
{
    QList<Frame> frames;
    bool truncated = false; // the file ended inside a frame
};

Stream readFrames(const QByteArray& container);

// Builds a container from frames (the inverse of readFrames), for writing test recordings.
QByteArray writeFrames(const QList<Frame>& frames);

} // namespace VoicemailFrames
