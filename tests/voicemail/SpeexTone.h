#pragma once

// Encodes a sine tone with libspeex into the router's frame container, for the tests.

#include "voicemail/VoicemailFrames.h"

#include <QByteArray>
#include <QList>

#include <speex/speex.h>

#include <cmath>
#include <numbers>
#include <vector>

// frames of 160 samples (20 ms at 8 kHz), each as one Speex narrowband frame
inline QList<QByteArray> speexToneFrames(double frequency, int frameCount, int quality = 8)
{
    void* enc = speex_encoder_init(&speex_nb_mode);
    speex_encoder_ctl(enc, SPEEX_SET_QUALITY, &quality);
    int frameSize = 0;
    speex_encoder_ctl(enc, SPEEX_GET_FRAME_SIZE, &frameSize);
    SpeexBits bits;
    speex_bits_init(&bits);
    QList<QByteArray> frames;
    std::vector<spx_int16_t> pcm(static_cast<size_t>(frameSize));
    long n = 0;
    for (int f = 0; f < frameCount; ++f) {
        for (auto& s : pcm)
            s = spx_int16_t(8000.0 * std::sin(2.0 * std::numbers::pi * frequency * double(n++) / 8000.0));
        speex_bits_reset(&bits);
        speex_encode_int(enc, pcm.data(), &bits);
        QByteArray out(200, '\0');
        out.resize(speex_bits_write(&bits, out.data(), int(out.size())));
        frames.append(out);
    }
    speex_bits_destroy(&bits);
    speex_encoder_destroy(enc);
    return frames;
}

// A recording: tone frames, then silence, then more tone; one frame in the long "FF" form.
inline QByteArray speexToneRecording(double frequency, int toneFrames, int silentFrames)
{
    const QList<QByteArray> frames = speexToneFrames(frequency, toneFrames);
    QByteArray out;
    for (int i = 0; i < frames.size(); ++i) {
        if (i == frames.size() / 2 && silentFrames > 0)
            out.append(char(0xFB)).append(char(silentFrames));
        const QByteArray& f = frames.at(i);
        if (i == 1) // long form with a 16-bit little-endian length
            out.append(char(0xFF)).append(char(f.size() & 0xFF)).append(char(f.size() >> 8)).append(f);
        else
            out.append(char(f.size())).append(f);
    }
    out.append('\0');
    return out;
}

// Magnitude of one frequency in samples (Goertzel).
inline double toneMagnitude(const std::vector<qint16>& samples, double frequency, int rate = 8000)
{
    const double w = 2.0 * std::numbers::pi * frequency / rate;
    const double coeff = 2.0 * std::cos(w);
    double s1 = 0, s2 = 0;
    for (const qint16 x : samples) {
        const double s0 = double(x) + coeff * s1 - s2;
        s2 = s1;
        s1 = s0;
    }
    return std::sqrt(s1 * s1 + s2 * s2 - coeff * s1 * s2);
}

// The strongest frequency between 100 Hz and 3.5 kHz in 25 Hz steps.
inline double dominantFrequency(const std::vector<qint16>& samples)
{
    double best = 0, bestMag = -1;
    for (double f = 100; f <= 3500; f += 25) {
        const double m = toneMagnitude(samples, f);
        if (m > bestMag) {
            bestMag = m;
            best = f;
        }
    }
    return best;
}

// PCM samples of a 16-bit mono WAV (data chunk after the 44-byte header).
inline std::vector<qint16> wavSamples(const QByteArray& wav)
{
    std::vector<qint16> out;
    for (qsizetype i = 44; i + 1 < wav.size(); i += 2)
        out.push_back(qint16(quint16(quint8(wav.at(i))) | quint16(quint8(wav.at(i + 1)) << 8)));
    return out;
}
