#pragma once

#include <QDateTime>
#include <QString>
#include <QStringList>
#include <QVariantMap>

// One answering machine message, as read from an index record.
struct VoicemailEntry
{
    QString CallDuration;
    QString PhoneNumber;
    QStringList Contact;
    QString RecFile;
    QString CalledLine;
    QDateTime CallTimestamp;
    QString CallDate;
    QString CallTime;
    QString PATH; // folder of the index file, with a trailing "/"
    QString FILE; // index file name

    quint32 durationSeconds = 0;

    QVariantMap toMap() const;
    static VoicemailEntry fromMap(const QVariantMap& map);
    QString recordingPath() const { return PATH + QStringLiteral("rec/") + RecFile; }
    // Day and time of the message, from CallDate and CallTime: CallTimestamp is no valid date.
    QDateTime recordedAt() const;
};

// One received fax, built from its file name.
struct FaxEntry
{
    QStringList Contact;
    QString PhoneNumber;
    QString CallTime;
    QDateTime CallTimestamp;
    QString PATH; // the file's full path

    QVariantMap toMap() const;
    static FaxEntry fromMap(const QVariantMap& map);
    QString fileName() const { return PATH.section(u'/', -1); }
};
