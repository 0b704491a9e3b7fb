#include "voicemail/VBGetVoicemail.h"

#include "base/Logging.h"
#include "voicemail/VBFTPConnection.h"
#include "voicemail/VoicemailFrames.h"

#include <QDir>
#include <QFile>
#include <QSaveFile>
#include <QtEndian>

#include <speex/speex.h>

namespace {

bool isWav(const QByteArray& data)
{
    return data.size() >= 12 && data.startsWith("RIFF") && data.mid(8, 4) == "WAVE";
}

void putLE32(QByteArray& out, quint32 v)
{
    char b[4];
    qToLittleEndian(v, b);
    out.append(b, 4);
}

void putLE16(QByteArray& out, quint16 v)
{
    char b[2];
    qToLittleEndian(v, b);
    out.append(b, 2);
}

// Speex decoder state and bit buffer, released on every path out.
class SpeexDecoder
{
public:
    SpeexDecoder()
    {
        m_state = speex_decoder_init(&speex_nb_mode);
        int enhance = 1;
        speex_decoder_ctl(m_state, SPEEX_SET_ENH, &enhance);
        speex_decoder_ctl(m_state, SPEEX_GET_FRAME_SIZE, &m_frameSize);
        speex_bits_init(&m_bits);
    }
    ~SpeexDecoder()
    {
        speex_bits_destroy(&m_bits);
        speex_decoder_destroy(m_state);
    }
    SpeexDecoder(const SpeexDecoder&) = delete;
    SpeexDecoder& operator=(const SpeexDecoder&) = delete;

    int frameSize() const { return m_frameSize; }

    // Appends the samples of every codec frame in data; false when the bits are not Speex.
    bool decode(const QByteArray& data, std::vector<qint16>& samples)
    {
        speex_bits_read_from(&m_bits, const_cast<char*>(data.constData()), int(data.size()));
        std::vector<spx_int16_t> frame(static_cast<size_t>(m_frameSize));
        int decoded = 0;
        while (speex_bits_remaining(&m_bits) >= 5) {
            const int rc = speex_decode_int(m_state, &m_bits, frame.data());
            if (rc == -1)
                break; // terminator
            if (rc != 0 || speex_bits_remaining(&m_bits) < 0)
                return false;
            samples.insert(samples.end(), frame.begin(), frame.end());
            ++decoded;
        }
        return decoded > 0;
    }

private:
    void* m_state = nullptr;
    SpeexBits m_bits;
    int m_frameSize = 160;
};

} // namespace

QByteArray VBGetVoicemail::wavFromSamples(const std::vector<qint16>& samples, int sampleRate)
{
    const auto dataBytes = quint32(samples.size() * 2);
    QByteArray out;
    out.reserve(qsizetype(44 + dataBytes));
    out.append("RIFF");
    putLE32(out, 36 + dataBytes);
    out.append("WAVEfmt ");
    putLE32(out, 16);
    putLE16(out, 1); // PCM
    putLE16(out, 1); // mono
    putLE32(out, quint32(sampleRate));
    putLE32(out, quint32(sampleRate * 2));
    putLE16(out, 2);
    putLE16(out, 16);
    out.append("data");
    putLE32(out, dataBytes);
    for (const qint16 s : samples)
        putLE16(out, quint16(s));
    return out;
}

bool VBGetVoicemail::convertToWav(const QByteArray& recording, QByteArray* wav, QString* error)
{
    if (isWav(recording)) {
        *wav = recording;
        return true;
    }
    const VoicemailFrames::Stream stream = VoicemailFrames::readFrames(recording);
    SpeexDecoder decoder;
    std::vector<qint16> samples;
    int audioFrames = 0;
    for (qsizetype i = 0; i < stream.frames.size(); ++i) {
        const VoicemailFrames::Frame& f = stream.frames.at(i);
        const qsizetype added = f.silentFrames > 0 ? qsizetype(f.silentFrames) * decoder.frameSize() : 0;
        if (qsizetype(samples.size()) + added > kMaxSamples) {
            *error = QStringLiteral("the recording is longer than an hour; it is not a voicemail recording");
            return false;
        }
        if (f.silentFrames > 0) {
            samples.insert(samples.end(), size_t(added), 0);
            continue;
        }
        if (!decoder.decode(f.data, samples)) {
            *error =
                QStringLiteral("the recording could not be decoded (frame %1 is not Speex audio)").arg(i + 1);
            return false;
        }
        ++audioFrames;
        if (qsizetype(samples.size()) > kMaxSamples) {
            *error = QStringLiteral("the recording is longer than an hour; it is not a voicemail recording");
            return false;
        }
    }
    if (audioFrames == 0) {
        *error = QStringLiteral("the recording holds no audio");
        return false;
    }
    if (stream.truncated)
        qCWarning(lcVoicemail) << "recording ends inside a frame; the rest is dropped";
    *wav = wavFromSamples(samples);
    return true;
}

QString VBGetVoicemail::getVoicemail(const VoicemailEntry& entry, const QString& tempDir, QString* error)
{
    const QDir dir(tempDir);
    const QString base = dir.filePath(entry.RecFile.isEmpty() ? QStringLiteral("voicemail") : entry.RecFile);
    const QString spx = base + QStringLiteral(".output_new.spx");
    const QString wavPath = base + QStringLiteral(".output.wav");
    if (!m_connection.downloadFile(entry.recordingPath(), spx)) {
        *error = m_connection.lastError().alertText();
        return {};
    }
    QFile in(spx);
    if (!in.open(QIODevice::ReadOnly)) {
        *error = in.errorString();
        return {};
    }
    const QByteArray recording = in.readAll();
    in.close();
    in.remove();
    QByteArray wav;
    if (!convertToWav(recording, &wav, error))
        return {};
    QSaveFile out(wavPath);
    if (!out.open(QIODevice::WriteOnly) || out.write(wav) != wav.size() || !out.commit()) {
        *error = out.errorString();
        return {};
    }
    return wavPath;
}
