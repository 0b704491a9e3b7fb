#pragma once

#include "voicemail/FTPError.h"

#include <QByteArray>
#include <QObject>
#include <QString>
#include <QStringList>

#include <atomic>
#include <memory>

class TNPreferences;

// One FTP session with the router's storage (plain FTP or explicit FTP over TLS). Operations block;
// run them on a worker thread. Paths are relative to the FTP root ("FRITZ/voicebox/meta0").
class NotificationCenter;

class VBFTPConnection
{
public:
    struct Settings
    {
        QString host;
        int port = 21;
        QString user;
        QString password;
        bool tls = false;
        bool remote = false; // decides "Home" or "Remote" in errors
        int timeoutSeconds = 15;
    };

    // Host, port, user, password and TLS flag of the location (remote host when remote access is on).
    static Settings settingsUsePreferences(const TNPreferences& prefs);

    // Cancels its transfer when "STOPFTPTRANSFER" is posted to notifications.
    explicit VBFTPConnection(NotificationCenter& notifications);
    NotificationCenter& notifications() const { return m_notifications; }
    ~VBFTPConnection();
    VBFTPConnection(const VBFTPConnection&) = delete;
    VBFTPConnection& operator=(const VBFTPConnection&) = delete;

    bool connectUsePreferences(const TNPreferences& prefs, int connID);
    bool connectWithSettings(const Settings& settings, int connID);
    void disconnect();
    bool isConnected() const { return m_connected; }
    int connID() const { return m_connID; }

    // File contents, or a null array on failure.
    QByteArray dataForFile(const QString& path);
    bool downloadFile(const QString& path, const QString& localPath);
    bool uploadData(const QByteArray& data, const QString& folder, const QString& file);
    bool deleteFile(const QString& file, const QString& folder);
    bool renameFile(const QString& from, const QString& to, const QString& folder);

    // Full paths of the folder's entries: folders as "<path><name>/", files as "<path><name>".
    // The mask ("*.pdf") filters files; "*.*", "*" and "" take every file.
    QStringList directoryListingForPath(const QString& path, const QString& mask = QStringLiteral("*.*"));
    // "<path><sub>/" when path holds that folder, else an empty string.
    QString searchPath(const QString& path, const QString& subdirectory);

    // Stops the running transfer; safe from any thread. Also done on "STOPFTPTRANSFER".
    void cancelFTP();

    const FTPError& lastError() const { return m_error; }

private:
    struct Impl;
    bool perform(const QString& url, bool connecting);
    QString urlFor(const QString& path) const;
    void fail(FTPError::Kind kind, const QString& message);

    std::unique_ptr<Impl> d;
    Settings m_settings;
    int m_connID = 0;
    bool m_connected = false;
    FTPError m_error;
    std::atomic<bool> m_cancel{false};
    NotificationCenter& m_notifications;
    std::unique_ptr<QObject> m_observer;
};
