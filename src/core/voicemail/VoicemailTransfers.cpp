#include "voicemail/VoicemailTransfers.h"

#include "voicemail/TNFTPDatasource.h"
#include "voicemail/VBGetPDF.h"
#include "voicemail/VBGetVoicemail.h"

#include <QCryptographicHash>
#include <QDir>

namespace VoicemailTransfers {

namespace {

// Connects; on failure the outcome carries the alert text.
bool open(VBFTPConnection& connection, const VBFTPConnection::Settings& settings, Outcome& outcome)
{
    if (connection.connectWithSettings(settings, connection.connID()))
        return true;
    outcome.kind = connection.lastError().kind;
    outcome.error = connection.lastError().alertText();
    return false;
}

// A failure after the connection stood: the connection's own error class when it had one.
Outcome failed(VBFTPConnection& connection, const QString& error)
{
    Outcome outcome;
    outcome.kind = connection.lastError().isError() ? connection.lastError().kind : FTPError::Kind::Failed;
    outcome.error = error.isEmpty() ? connection.lastError().alertText() : error;
    if (outcome.error.isEmpty())
        outcome.error = QStringLiteral("FTP transfer failed");
    return outcome;
}

// Fetch into the entry's cache folder.
template <typename Fetch>
Outcome fetchInto(VBFTPConnection& connection, const VBFTPConnection::Settings& settings,
                  const QString& folder, Fetch fetch)
{
    Outcome outcome;
    if (!QDir().mkpath(folder)) {
        outcome.kind = FTPError::Kind::Failed;
        outcome.error = QStringLiteral("%1: cannot create the folder").arg(folder);
        return outcome;
    }
    if (!open(connection, settings, outcome))
        return outcome;
    QString error;
    const QString path = fetch(folder, &error);
    if (path.isEmpty())
        outcome = failed(connection, error);
    else
        outcome.path = path;
    connection.disconnect();
    return outcome;
}

} // namespace

QString cacheFolderFor(const QString& cacheDir, const QString& remoteFolder)
{
    QString readable;
    for (const QChar c : remoteFolder)
        readable += (c.isLetterOrNumber() && c.unicode() < 128) || c == u'-' || c == u'.' ? c : QChar(u'_');
    // The digest keeps "a/b" and "a_b" apart.
    const QByteArray digest =
        QCryptographicHash::hash(remoteFolder.toUtf8(), QCryptographicHash::Sha1).toHex().left(8);
    return QDir(cacheDir).filePath(readable + u'-' + QString::fromLatin1(digest));
}

Outcome fetchVoicemail(VBFTPConnection& connection, const VBFTPConnection::Settings& settings,
                       const VoicemailEntry& entry, const QString& cacheDir)
{
    return fetchInto(connection, settings, cacheFolderFor(cacheDir, entry.PATH),
                     [&](const QString& folder, QString* error) {
                         return VBGetVoicemail(connection).getVoicemail(entry, folder, error);
                     });
}

Outcome fetchFax(VBFTPConnection& connection, const VBFTPConnection::Settings& settings,
                 const FaxEntry& entry, const QString& cacheDir)
{
    const QString remoteFolder = entry.PATH.section(u'/', 0, -2) + u'/';
    return fetchInto(connection, settings, cacheFolderFor(cacheDir, remoteFolder),
                     [&](const QString& folder, QString* error) {
                         return VBGetPDF(connection).getPDF(entry, folder, error);
                     });
}

Outcome deleteVoicemails(VBFTPConnection& connection, const VBFTPConnection::Settings& settings,
                         const QList<VoicemailEntry>& entries)
{
    Outcome outcome;
    if (!open(connection, settings, outcome))
        return outcome;
    TNFTPDatasource datasource(connection.notifications(), nullptr, nullptr);
    QString error;
    if (!datasource.deleteVoicemailEntries(connection, entries, &error))
        outcome = failed(connection, error);
    connection.disconnect();
    return outcome;
}

Outcome deleteFaxes(VBFTPConnection& connection, const VBFTPConnection::Settings& settings,
                    const QList<FaxEntry>& entries)
{
    Outcome outcome;
    if (!open(connection, settings, outcome))
        return outcome;
    TNFTPDatasource datasource(connection.notifications(), nullptr, nullptr);
    QString error;
    if (!datasource.deleteFaxEntries(connection, entries, &error))
        outcome = failed(connection, error);
    connection.disconnect();
    return outcome;
}

} // namespace VoicemailTransfers
