#include "voicemail/TNFTPDatasource.h"

#include "base/Localization.h"
#include "base/Logging.h"
#include "base/NotificationCenter.h"
#include "base/NotificationNames.h"
#include "base/TNPreferences.h"
#include "voicemail/VBFTPConnection.h"
#include "voicemail/VoicemailEntries.h"
#include "voicemail/VoicemailIndex.h"
#include "voicemail/VoicemailLookups.h"

#include <QMap>
#include <QPointer>
#include <QThreadPool>

namespace {

bool isNewer(const QDateTime& stamp, const QDateTime& marker)
{
    return !marker.isValid() || (stamp.isValid() && stamp > marker);
}

template <typename Entry> int countNew(const QList<Entry>& entries, const QDateTime& marker)
{
    int fresh = 0;
    for (const Entry& e : entries)
        fresh += isNewer(e.CallTimestamp, marker) ? 1 : 0;
    return fresh;
}

QDateTime seenMarker(const QDateTime& entryStamp, const QDateTime& now)
{
    return entryStamp.isValid() && entryStamp > now ? entryStamp : now;
}

} // namespace

TNFTPDatasource::TNFTPDatasource(NotificationCenter& notifications, VoicemailMarkerStore* markers,
                                 CallerNameLookup* names, QObject* parent)
    : QObject(parent), m_notifications(notifications), m_markers(markers), m_names(names)
{
}

TNFTPDatasource::~TNFTPDatasource() = default;

QStringList TNFTPDatasource::loadFRITZDirectories(VBFTPConnection& connection)
{
    const QStringList root = connection.directoryListingForPath(QString());
    if (connection.lastError().isError()) {
        hasError = true;
        lastErrorText = connection.lastError().alertText();
        return {};
    }
    QStringList found;
    const auto holdsBoxes = [&](const QString& fritz) {
        const QStringList inside = connection.directoryListingForPath(fritz);
        return inside.contains(fritz + QStringLiteral("voicebox/")) ||
               inside.contains(fritz + QStringLiteral("faxbox/"));
    };
    for (const QString& entry : root) {
        if (!entry.endsWith(u'/'))
            continue;
        const QString fritz =
            entry == u"FRITZ/" ? entry : connection.searchPath(entry, QStringLiteral("FRITZ"));
        if (!fritz.isEmpty() && holdsBoxes(fritz))
            found.append(fritz);
    }
    if (found.isEmpty()) {
        hasError = true;
        lastErrorText = Localization::localized(QStringLiteral("errorFTP_NO_DIR_FOUND"));
    }
    return found;
}

QList<VoicemailEntry> TNFTPDatasource::loadVoicemailsForDirectories(VBFTPConnection& connection,
                                                                    const QStringList& directories,
                                                                    const QVariantList& loadFlags)
{
    QList<VoicemailEntry> result;
    totalVoicemailCounter = 0;
    for (const QString& dir : directories) {
        const QString box = dir + QStringLiteral("voicebox/");
        const QStringList listing = connection.directoryListingForPath(box);
        const QString prefix = QStringLiteral("%1meta").arg(box);
        int number = 0;
        for (const QString& path : listing) {
            if (!path.startsWith(prefix) || path.size() != prefix.size() + 1)
                continue;
            const int i = number++;
            if (i >= loadFlags.size() || loadFlags.at(i).toInt() != 1)
                continue;
            const QByteArray data = connection.dataForFile(path);
            if (data.size() < VoicemailIndex::kRecordSize)
                continue;
            result += readMetaData(data, path);
        }
    }
    return result;
}

QList<VoicemailEntry> TNFTPDatasource::readMetaData(const QByteArray& data, const QString& path)
{
    const QString folder = path.section(u'/', 0, -2) + u'/';
    const QString file = path.section(u'/', -1);
    QList<VoicemailEntry> entries;
    int read = 0;
    for (const qsizetype offset : VoicemailIndex::recordOffsets(data.size())) {
        const VoicemailIndex::Record record = VoicemailIndex::readRecord(data, offset);
        ++read;
        if (record.recFile.startsWith(QStringLiteral("rec")))
            entries.append(VoicemailEntries::entryForRecord(record, folder, file, m_names));
        // The limit is checked after a record is read: a limit of 0 still reads the newest one.
        if (loadNumberOfVoicemails >= 0 && read >= loadNumberOfVoicemails)
            break;
    }
    totalVoicemailCounter += read;
    return entries;
}

QList<FaxEntry> TNFTPDatasource::loadFAXForDirectories(VBFTPConnection& connection,
                                                       const QStringList& directories)
{
    QList<FaxEntry> result;
    for (const QString& dir : directories) {
        for (const QString& path :
             connection.directoryListingForPath(dir + QStringLiteral("faxbox/"), QStringLiteral("*.pdf"))) {
            if (!path.endsWith(u'/') && path.endsWith(QStringLiteral(".pdf"), Qt::CaseInsensitive))
                result.append(preprocessFaxFile(path));
        }
    }
    return result;
}

FaxEntry TNFTPDatasource::preprocessFaxFile(const QString& path) const
{
    return VoicemailEntries::entryForFaxFile(path, m_names);
}

QVariantList TNFTPDatasource::preprocessVoicemails(const QList<VoicemailEntry>& entries) const
{
    return VoicemailEntries::grouped(entries, sortBy);
}

QVariantList TNFTPDatasource::preprocessFax(const QList<FaxEntry>& entries) const
{
    return VoicemailEntries::grouped(entries, sortBy);
}

bool TNFTPDatasource::loadVoicemailsFinished(int connID, const QList<VoicemailEntry>& entries)
{
    if (connID != currentConnID) {
        qCInfo(lcVoicemail) << "dropping voicemails of an older run" << connID;
        return false;
    }
    if (m_markers)
        lastSavedVoicemailDate = m_markers->lastSavedVoicemailDate();
    {
        QMutexLocker lock(&m_mutex);
        m_voicemails = entries;
    }
    voicemailCounter = int(entries.size());
    newVoicemailsCounter = countNew(entries, lastSavedVoicemailDate);
    emit voicemailsLoaded(preprocessVoicemails(entries));
    return true;
}

bool TNFTPDatasource::loadingFaxFinished(int connID, const QList<FaxEntry>& entries)
{
    if (connID != currentConnID) {
        qCInfo(lcVoicemail) << "dropping faxes of an older run" << connID;
        return false;
    }
    if (m_markers)
        lastSavedFaxDate = m_markers->lastSavedFaxDate();
    {
        QMutexLocker lock(&m_mutex);
        m_faxes = entries;
    }
    faxCounter = int(entries.size());
    newFaxCounter = countNew(entries, lastSavedFaxDate);
    emit faxLoaded(preprocessFax(entries));
    return true;
}

QByteArray TNFTPDatasource::deleteVoicemailsInMetaData(const QStringList& recFiles,
                                                       const QByteArray& metaData)
{
    return VoicemailIndex::withoutRecords(metaData, recFiles);
}

bool TNFTPDatasource::deleteVoicemailEntries(VBFTPConnection& connection,
                                             const QList<VoicemailEntry>& entries, QString* error)
{
    QStringList problems;
    // Index file (PATH + FILE) -> recordings that are gone.
    QMap<QString, QStringList> removed;
    for (const VoicemailEntry& e : entries) {
        if (connection.deleteFile(e.RecFile, QStringLiteral("%1rec/").arg(e.PATH)))
            removed[e.PATH + e.FILE].append(e.RecFile);
        else
            problems.append(QStringLiteral("%1: %2").arg(e.RecFile, connection.lastError().alertText()));
    }
    for (auto it = removed.cbegin(); it != removed.cend(); ++it) {
        const QString folder = it.key().section(u'/', 0, -2) + u'/';
        const QString file = it.key().section(u'/', -1);
        const QByteArray old = connection.dataForFile(it.key());
        if (old.isNull()) {
            problems.append(QStringLiteral("%1: %2").arg(file, connection.lastError().alertText()));
            continue;
        }
        const QByteArray rewritten = deleteVoicemailsInMetaData(it.value(), old);
        if (rewritten == old)
            continue;
        // Upload beside the old file and rename over it, so a failed upload leaves it intact.
        const QString temporary = file + QStringLiteral(".new");
        if (!connection.uploadData(rewritten, folder, temporary)) {
            problems.append(QStringLiteral("%1: %2").arg(file, connection.lastError().alertText()));
            connection.deleteFile(temporary, folder);
            continue;
        }
        if (!connection.renameFile(temporary, file, folder)) {
            problems.append(QStringLiteral("%1: %2").arg(file, connection.lastError().alertText()));
            connection.deleteFile(temporary, folder);
        }
    }
    if (!problems.isEmpty() && error)
        *error = problems.join(QStringLiteral("; "));
    return problems.isEmpty();
}

bool TNFTPDatasource::deleteFaxEntries(VBFTPConnection& connection, const QList<FaxEntry>& entries,
                                       QString* error)
{
    QStringList problems;
    for (const FaxEntry& e : entries) {
        const QString folder = e.PATH.section(u'/', 0, -2) + u'/';
        if (!connection.deleteFile(e.fileName(), folder))
            problems.append(QStringLiteral("%1: %2").arg(e.fileName(), connection.lastError().alertText()));
    }
    if (!problems.isEmpty() && error)
        *error = problems.join(QStringLiteral("; "));
    return problems.isEmpty();
}

QList<VoicemailEntry> TNFTPDatasource::allVoicemailsEntriesList() const
{
    QMutexLocker lock(&m_mutex);
    return m_voicemails;
}

QList<FaxEntry> TNFTPDatasource::allFaxEntriesList() const
{
    QMutexLocker lock(&m_mutex);
    return m_faxes;
}

bool TNFTPDatasource::isNewVoicemail(const VoicemailEntry& entry) const
{
    return isNewer(entry.CallTimestamp, lastSavedVoicemailDate);
}

bool TNFTPDatasource::isNewFax(const FaxEntry& entry) const
{
    return isNewer(entry.CallTimestamp, lastSavedFaxDate);
}

void TNFTPDatasource::markVoicemailSeen(const VoicemailEntry& entry, const QDateTime& now)
{
    lastSavedVoicemailDate = seenMarker(entry.CallTimestamp, now);
    if (m_markers)
        m_markers->setLastSavedVoicemailDate(lastSavedVoicemailDate);
    newVoicemailsCounter = countNew(allVoicemailsEntriesList(), lastSavedVoicemailDate);
}

void TNFTPDatasource::markFaxSeen(const FaxEntry& entry, const QDateTime& now)
{
    lastSavedFaxDate = seenMarker(entry.CallTimestamp, now);
    if (m_markers)
        m_markers->setLastSavedFaxDate(lastSavedFaxDate);
    newFaxCounter = countNew(allFaxEntriesList(), lastSavedFaxDate);
}

void TNFTPDatasource::resetVoicemails(bool clean)
{
    m_notifications.post(Notifications::STOPFTPTRANSFER);
    {
        QMutexLocker lock(&m_mutex);
        m_voicemails.clear();
        m_faxes.clear();
    }
    if (clean) {
        voicemailCounter = newVoicemailsCounter = totalVoicemailCounter = 0;
        faxCounter = newFaxCounter = 0;
    }
}

void TNFTPDatasource::reloadVoicemails(std::shared_ptr<TNPreferences> prefs)
{
    const int connID = newConnID();
    hasError = false;
    isCurrentlyUpdating = true;
    QPointer<TNFTPDatasource> self(this);
    // The connection is made here so that it observes "STOPFTPTRANSFER" on this thread.
    auto connection = std::make_shared<VBFTPConnection>(m_notifications);
    const int limit = loadNumberOfVoicemails;
    VoicemailMarkerStore* markers = m_markers;
    CallerNameLookup* names = m_names;
    QThreadPool::globalInstance()->start([self, prefs, connID, connection, limit, markers, names]() mutable {
        // The run works on its own datasource so that nothing here is shared with the main thread.
        TNFTPDatasource run(connection->notifications(), markers, names);
        run.loadNumberOfVoicemails = limit;
        // The connection goes back with the result, to be released on the thread that made it.
        std::shared_ptr<VBFTPConnection> conn = std::move(connection);
        const auto deliver = [&self](auto fn) {
            if (self)
                QMetaObject::invokeMethod(self.data(), std::move(fn), Qt::QueuedConnection);
        };
        const auto fail = [&](const QString& message) {
            deliver([self, connID, message, conn = std::move(conn)] {
                // A newer run owns the window now; the old one's failure (often its cancel) is moot.
                if (connID != self->currentConnID)
                    return;
                self->hasError = true;
                self->isCurrentlyUpdating = false;
                self->lastErrorText = message;
                emit self->loadingFailed(Localization::localized(QStringLiteral("Voicemail / Fax")), message);
            });
        };
        if (!conn->connectUsePreferences(*prefs, connID))
            return fail(conn->lastError().alertText());
        const QStringList dirs = run.loadFRITZDirectories(*conn);
        if (dirs.isEmpty())
            return fail(run.lastErrorText);
        const QList<VoicemailEntry> voicemails =
            run.loadVoicemailsForDirectories(*conn, dirs, prefs->loadVoicemails);
        const QList<FaxEntry> faxes = run.loadFAXForDirectories(*conn, dirs);
        const int total = run.totalVoicemailCounter;
        conn->disconnect();
        deliver([self, connID, voicemails, faxes, total, conn = std::move(conn)] {
            if (connID == self->currentConnID)
                self->totalVoicemailCounter = total;
            if (connID == self->currentConnID)
                self->isCurrentlyUpdating = false;
            self->loadVoicemailsFinished(connID, voicemails);
            self->loadingFaxFinished(connID, faxes);
        });
    });
}
