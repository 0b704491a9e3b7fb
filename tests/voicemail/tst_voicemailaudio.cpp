#include "SpeexTone.h"

#include "voicemail/VBGetVoicemail.h"
#include "voicemail/VoicemailFrames.h"

#include <QTest>
#include <QtEndian>

#include <cmath>

namespace {

QByteArray bytes(std::initializer_list<int> values)
{
    QByteArray out;
    for (const int v : values)
        out.append(char(v));
    return out;
}

quint32 le32(const QByteArray& d, int at)
{
    return qFromLittleEndian<quint32>(d.constData() + at);
}

} // namespace

class TestVoicemailAudio : public QObject
{
    Q_OBJECT
private slots:
    void frameContainer_data()
    {
        QTest::addColumn<QByteArray>("container");
        QTest::addColumn<QList<int>>("frames"); // frame sizes; negative: that many silent frames
        QTest::addColumn<bool>("truncated");
        QTest::newRow("two short frames, end byte")
            << bytes({2, 0xA, 0xB, 1, 0xC, 0}) << QList<int>{2, 1} << false;
        QTest::newRow("no end byte") << bytes({1, 0x7}) << QList<int>{1} << false;
        QTest::newRow("silence marker")
            << bytes({1, 7, 0xFB, 12, 1, 8}) << QList<int>{1, -12} + QList<int>{1} << false;
        QTest::newRow("silence of zero frames is nothing")
            << bytes({0xFB, 0, 1, 8}) << QList<int>{1} << false;
        QTest::newRow("long frame, little-endian length")
            << bytes({0xFF, 3, 0, 1, 2, 3, 1, 9}) << QList<int>{3, 1} << false;
        QTest::newRow("largest short frame")
            << bytes({0xFA}) + QByteArray(0xFA, 'x') << QList<int>{0xFA} << false;
        QTest::newRow("00 ends the stream") << bytes({1, 7, 0, 1, 8}) << QList<int>{1} << false;
        QTest::newRow("FC ends the stream") << bytes({1, 7, 0xFC, 1, 8}) << QList<int>{1} << false;
        QTest::newRow("FE ends the stream") << bytes({0xFE, 1, 8}) << QList<int>{} << false;
        QTest::newRow("frame cut short") << bytes({1, 7, 5, 1, 2}) << QList<int>{1} << true;
        QTest::newRow("long length cut short") << bytes({1, 7, 0xFF, 3}) << QList<int>{1} << true;
        QTest::newRow("silence count missing") << bytes({0xFB}) << QList<int>{} << true;
    }
    void frameContainer()
    {
        QFETCH(QByteArray, container);
        QFETCH(QList<int>, frames);
        QFETCH(bool, truncated);
        const VoicemailFrames::Stream s = VoicemailFrames::readFrames(container);
        QList<int> got;
        for (const auto& f : s.frames)
            got << (f.silentFrames > 0 ? -f.silentFrames : int(f.data.size()));
        QCOMPARE(got, frames);
        QCOMPARE(s.truncated, truncated);
    }

    void speexToneToWav_data()
    {
        QTest::addColumn<double>("frequency");
        QTest::addColumn<int>("toneFrames");
        QTest::addColumn<int>("silentFrames");
        QTest::newRow("500 Hz, one second, no silence") << 500.0 << 50 << 0;
        QTest::newRow("1 kHz with a pause") << 1000.0 << 50 << 25;
    }
    void speexToneToWav()
    {
        QFETCH(double, frequency);
        QFETCH(int, toneFrames);
        QFETCH(int, silentFrames);
        QByteArray wav;
        QString error;
        QVERIFY2(VBGetVoicemail::convertToWav(speexToneRecording(frequency, toneFrames, silentFrames), &wav,
                                              &error),
                 qPrintable(error));

        const quint32 samples = quint32(toneFrames + silentFrames) * 160;
        // The sizes in the header must match what follows, or players cut or refuse the file.
        QCOMPARE(le32(wav, 4), 36 + samples * 2);
        QCOMPARE(le32(wav, 24), 8000u);
        QCOMPARE(le32(wav, 40), samples * 2);
        QCOMPARE(quint32(wav.size()), 44 + samples * 2);

        const std::vector<qint16> pcm = wavSamples(wav);
        // The silence sits before the middle tone frame and stays silent.
        const size_t silenceStart = size_t(toneFrames / 2) * 160;
        for (size_t i = silenceStart; i < silenceStart + size_t(silentFrames) * 160; ++i)
            QCOMPARE(pcm.at(i), qint16(0));
        // Past the codec's start-up, the tone is the strongest frequency and loud enough.
        const std::vector<qint16> tone(pcm.begin() + 800, pcm.begin() + long(silenceStart));
        QVERIFY(std::abs(dominantFrequency(tone) - frequency) <= 50);
        double energy = 0;
        for (const qint16 s : tone)
            energy += double(s) * s;
        QVERIFY(std::sqrt(energy / double(tone.size())) > 2000); // the input had an RMS of about 5600
    }

    void undecodable_data()
    {
        QTest::addColumn<QByteArray>("recording");
        QTest::addColumn<QString>("errorPart");
        QByteArray noise;
        quint32 seed = 7;
        for (int i = 0; i < 38 * 20; ++i) {
            seed = seed * 1103515245u + 12345u;
            noise.append(char(seed >> 16));
        }
        QByteArray framedNoise;
        for (int i = 0; i < 20; ++i)
            framedNoise.append(char(38)).append(noise.mid(i * 38, 38));
        QTest::newRow("empty file") << QByteArray() << QStringLiteral("no audio");
        QTest::newRow("only silence") << bytes({0xFB, 50, 0}) << QStringLiteral("no audio");
        QTest::newRow("noise in frames") << framedNoise << QStringLiteral("not Speex");
        QTest::newRow("silence that would last for days")
            << QByteArray(40000, char(0xFB)) << QStringLiteral("longer");
    }
    void undecodable()
    {
        QFETCH(QByteArray, recording);
        QFETCH(QString, errorPart);
        QByteArray wav = "untouched";
        QString error;
        QVERIFY(!VBGetVoicemail::convertToWav(recording, &wav, &error));
        QVERIFY2(error.contains(errorPart), qPrintable(error));
        QCOMPARE(wav, QByteArray("untouched"));
    }

    void wavPassesThrough()
    {
        const QByteArray original = VBGetVoicemail::wavFromSamples({1, -1, 300, -300});
        QByteArray wav;
        QString error;
        QVERIFY(VBGetVoicemail::convertToWav(original, &wav, &error));
        QCOMPARE(wav, original);
    }

    void cutRecordingKeepsWhatDecodes()
    {
        const QByteArray full = speexToneRecording(1000, 20, 0);
        QByteArray wav;
        QString error;
        QVERIFY2(VBGetVoicemail::convertToWav(full.left(full.size() - 10), &wav, &error), qPrintable(error));
        QCOMPARE(le32(wav, 40), 19u * 160 * 2);
    }

    void garbageNeverCrashes()
    {
        // Mutated recordings: each either converts to a well-formed WAV or reports an error.
        const QByteArray good = speexToneRecording(800, 30, 5);
        quint32 seed = 99;
        for (int round = 0; round < 300; ++round) {
            QByteArray data = good;
            for (int k = 0; k < 1 + round % 8; ++k) {
                seed = seed * 1103515245u + 12345u;
                data[qsizetype(seed % quint32(data.size()))] = char(seed >> 16);
            }
            data.truncate(qsizetype(seed % quint32(data.size() + 1)));
            QByteArray wav;
            QString error;
            if (VBGetVoicemail::convertToWav(data, &wav, &error)) {
                QCOMPARE(le32(wav, 40), quint32(wav.size() - 44));
                QCOMPARE(le32(wav, 40) % 320, 0u);
            } else {
                QVERIFY(!error.isEmpty());
            }
        }
    }
};

QTEST_GUILESS_MAIN(TestVoicemailAudio)
#include "tst_voicemailaudio.moc"
