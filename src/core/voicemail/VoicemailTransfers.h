#pragma once

#include "voicemail/FTPError.h"
#include "voicemail/VBFTPConnection.h"
#include "voicemail/VoicemailEntry.h"

#include <QList>
#include <QString>

// Single pieces of FTP work on demand (fetch one message or fax, delete a selection), each in
// its own session: connect, work, disconnect. They block, so run them on a worker thread; make
// the connection on the thread that posts "STOPFTPTRANSFER", so that a cancel reaches it.
namespace VoicemailTransfers {

struct Outcome
{
    QString path; // the local file fetched
    FTPError::Kind kind = FTPError::Kind::None;
    QString error; // one line for the user; empty on success

    bool ok() const { return error.isEmpty(); }
};

// The folder under cacheDir for files of one storage folder: two volumes may both hold a
// "rec.0.000", and the router reuses recording names after a deletion.
QString cacheFolderFor(const QString& cacheDir, const QString& remoteFolder);

// The message as a WAV file in its cache folder (written afresh every time).
Outcome fetchVoicemail(VBFTPConnection& connection, const VBFTPConnection::Settings& settings,
                       const VoicemailEntry& entry, const QString& cacheDir);
// The fax as a PDF file in its cache folder.
Outcome fetchFax(VBFTPConnection& connection, const VBFTPConnection::Settings& settings,
                 const FaxEntry& entry, const QString& cacheDir);
// Removes the recordings and their records in the index files.
Outcome deleteVoicemails(VBFTPConnection& connection, const VBFTPConnection::Settings& settings,
                         const QList<VoicemailEntry>& entries);
Outcome deleteFaxes(VBFTPConnection& connection, const VBFTPConnection::Settings& settings,
                    const QList<FaxEntry>& entries);

} // namespace VoicemailTransfers
