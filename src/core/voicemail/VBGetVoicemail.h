#pragma once

#include "voicemail/VoicemailEntry.h"

#include <QByteArray>
#include <QString>

#include <vector>

class VBFTPConnection;

// Fetches one recording of the answering machine and turns it into a WAV file.
class VBGetVoicemail
{
public:
    static constexpr int kSampleRate = 8000;
    // Longer than any answering machine keeps; guards against a hostile file inflating forever.
    static constexpr qsizetype kMaxSamples = qsizetype(kSampleRate) * 3600;

    explicit VBGetVoicemail(VBFTPConnection& connection) : m_connection(connection) {}

    // Downloads PATH + "rec/" + RecFile into tempDir (".output_new.spx") and converts it
    // (".output.wav"). Returns the WAV file's path, or an empty string with error set.
    QString getVoicemail(const VoicemailEntry& entry, const QString& tempDir, QString* error);

    // A recording (frame container, or a file that already is a RIFF WAV) as WAV bytes.
    static bool convertToWav(const QByteArray& recording, QByteArray* wav, QString* error);
    static QByteArray wavFromSamples(const std::vector<qint16>& samples, int sampleRate = kSampleRate);

private:
    VBFTPConnection& m_connection;
};
