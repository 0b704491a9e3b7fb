// Any bytes as a recording: frame container and Speex decoder.
#include "voicemail/VBGetVoicemail.h"
#include "voicemail/VoicemailFrames.h"

#include <cstddef>
#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char*>(data), qsizetype(size));
    const VoicemailFrames::Stream s = VoicemailFrames::readFrames(bytes);
    qsizetype total = 0;
    for (const auto& f : s.frames)
        total += f.data.size();
    if (total > bytes.size())
        __builtin_trap();
    QByteArray wav;
    QString error;
    if (VBGetVoicemail::convertToWav(bytes, &wav, &error) && wav.size() < 44 && !bytes.startsWith("RIFF"))
        __builtin_trap();
    return 0;
}
