#pragma once

#include "voicemail/VoicemailEntry.h"

#include <QByteArray>
#include <QDateTime>
#include <QList>
#include <QMutex>
#include <QObject>
#include <QStringList>
#include <QVariantList>

#include <atomic>
#include <memory>

class CallerNameLookup;
class TNPreferences;
class VBFTPConnection;
class VoicemailMarkerStore;

// The voicemail and fax lists of the router's storage: finding the folders, reading the index
// files and fax names, counting new entries, deleting. The load and delete steps block on the
// FTP connection they are given; reloadVoicemails() runs them on a worker thread.
class NotificationCenter;

class TNFTPDatasource : public QObject
{
    Q_OBJECT
public:
    // notifications: where "STOPFTPTRANSFER" goes when the lists are reset.
    TNFTPDatasource(NotificationCenter& notifications, VoicemailMarkerStore* markers, CallerNameLookup* names,
                    QObject* parent = nullptr);
    ~TNFTPDatasource() override;

    // Counters of the last delivered run.
    int voicemailCounter = 0;
    int newVoicemailsCounter = 0;
    int totalVoicemailCounter = 0;
    int faxCounter = 0;
    int newFaxCounter = 0;
    QDateTime lastSavedVoicemailDate;
    QDateTime lastSavedFaxDate;
    int loadNumberOfVoicemails = -1; // records per index file; negative reads all
    QString sortBy = QStringLiteral("date");
    bool hasError = false;
    QString lastErrorText;
    std::atomic<bool> isCurrentlyUpdating{false};
    std::atomic<int> currentConnID{0};

    // "FRITZ/" folders (on a volume or at the root) that hold "voicebox/" or "faxbox/".
    QStringList loadFRITZDirectories(VBFTPConnection& connection);
    // Index files of each folder's "voicebox/", those whose "LoadVoicemails" flag is 1.
    QList<VoicemailEntry> loadVoicemailsForDirectories(VBFTPConnection& connection,
                                                       const QStringList& directories,
                                                       const QVariantList& loadFlags);
    QList<FaxEntry> loadFAXForDirectories(VBFTPConnection& connection, const QStringList& directories);

    // Records of one index file (path: its full path), newest first.
    QList<VoicemailEntry> readMetaData(const QByteArray& data, const QString& path);
    FaxEntry preprocessFaxFile(const QString& path) const;
    QVariantList preprocessVoicemails(const QList<VoicemailEntry>& entries) const;
    QVariantList preprocessFax(const QList<FaxEntry>& entries) const;

    // Takes a run's results unless a newer run has started since; false when they were dropped.
    bool loadVoicemailsFinished(int connID, const QList<VoicemailEntry>& entries);
    bool loadingFaxFinished(int connID, const QList<FaxEntry>& entries);

    // Removes the recordings and rewrites their index files. Returns false with error set when
    // anything failed; index files whose upload failed are left as they were.
    bool deleteVoicemailEntries(VBFTPConnection& connection, const QList<VoicemailEntry>& entries,
                                QString* error);
    bool deleteFaxEntries(VBFTPConnection& connection, const QList<FaxEntry>& entries, QString* error);
    static QByteArray deleteVoicemailsInMetaData(const QStringList& recFiles, const QByteArray& metaData);

    QList<VoicemailEntry> allVoicemailsEntriesList() const;
    QList<FaxEntry> allFaxEntriesList() const;

    // Later than the marker date of the last check (all are new while there is none).
    bool isNewVoicemail(const VoicemailEntry& entry) const;
    bool isNewFax(const FaxEntry& entry) const;
    // A message was heard (a fax read): the marker becomes the time of this check, though never
    // earlier than the entry itself, so that a router clock ahead of ours cannot leave it new.
    // Stored in the marker store; the new counter is counted again.
    void markVoicemailSeen(const VoicemailEntry& entry, const QDateTime& now);
    void markFaxSeen(const FaxEntry& entry, const QDateTime& now);

    // A new run on a worker thread; results arrive through the signals on this object's thread.
    void reloadVoicemails(std::shared_ptr<TNPreferences> prefs);
    // Stops a running transfer and empties the lists (clean: also the counters).
    void resetVoicemails(bool clean = false);
    int newConnID() { return ++currentConnID; }

signals:
    void voicemailsLoaded(const QVariantList& groupedEntries);
    void faxLoaded(const QVariantList& groupedEntries);
    void loadingFailed(const QString& title, const QString& message);

private:
    NotificationCenter& m_notifications;
    VoicemailMarkerStore* m_markers;
    CallerNameLookup* m_names;
    mutable QMutex m_mutex; // guards the lists below
    QList<VoicemailEntry> m_voicemails;
    QList<FaxEntry> m_faxes;
};
