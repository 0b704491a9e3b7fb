#pragma once

#include <QString>
#include <QStringList>

#include <functional>
#include <optional>

class AddressBook;
class Clock;
class SettingsStore;
class TNCallinglist;

// What one import did.
struct JournalImportResult
{
    int result = 0; // imported calls; 0 nothing done (import already running); -1 unreadable journal
    int missed = 0; // imported calls stored as missed
    bool incoming = false;
    int badLines = 0; // rows that did not parse, skipped
    int duplicates = 0;
    bool stoppedEarly = false; // a download met calls older than the stored ones
    QString cancelString;      // ";dd.MM.yy HH:mm;" of the newest stored call, ";;" without one
    std::optional<QString> badge;
};

// getCSVListFromHost:forProfile: — merges the router's journal (downloaded) or a journal file
// into the call database of one profile.
class JournalImporter
{
public:
    // Fetches the journal text for a download; the router may stop sending once the cancel
    // string (the newest stored call) went by. Returns the text ("" or a page on failure).
    using Downloader = std::function<QString(const QString& cancelString)>;
    using Progress = std::function<void(qsizetype done, qsizetype total)>;

    JournalImporter(TNCallinglist& calls, SettingsStore& settings, const AddressBook* book,
                    Clock* clock = nullptr);

    void setDownloader(Downloader d) { m_download = std::move(d); }
    void setProgress(Progress p) { m_progress = std::move(p); }

    // path empty: download through the downloader.
    JournalImportResult getCSVListFromHost(const QString& path, int profile);

private:
    JournalImportResult importText(const QString& text, bool download, int profile, qint64 lastSaved,
                                   JournalImportResult r);
    void finishUnreadable(int profile);

    TNCallinglist& m_calls;
    SettingsStore& m_settings;
    const AddressBook* m_book;
    Clock* m_clock;
    Downloader m_download;
    Progress m_progress;
};
