#include "voicemail/VBFTPConnection.h"

#include "base/Logging.h"
#include "base/NotificationCenter.h"
#include "base/NotificationNames.h"
#include "base/TNPreferences.h"

#include <QFile>
#include <QRegularExpression>

#include <curl/curl.h>

#include <mutex>

namespace {

size_t appendToArray(char* ptr, size_t size, size_t nmemb, void* userdata)
{
    static_cast<QByteArray*>(userdata)->append(ptr, qsizetype(size * nmemb));
    return size * nmemb;
}

size_t writeToFile(char* ptr, size_t size, size_t nmemb, void* userdata)
{
    auto* file = static_cast<QFile*>(userdata);
    return file->write(ptr, qint64(size * nmemb)) == qint64(size * nmemb) ? size * nmemb : 0;
}

struct UploadSource
{
    const QByteArray* data = nullptr;
    qsizetype position = 0;
};

size_t readFromArray(char* buffer, size_t size, size_t nitems, void* userdata)
{
    auto* src = static_cast<UploadSource*>(userdata);
    const qsizetype left = src->data->size() - src->position;
    const qsizetype n = std::min(left, qsizetype(size * nitems));
    memcpy(buffer, src->data->constData() + src->position, size_t(n));
    src->position += n;
    return size_t(n);
}

int progress(void* clientp, curl_off_t, curl_off_t, curl_off_t, curl_off_t)
{
    return static_cast<std::atomic<bool>*>(clientp)->load() ? 1 : 0;
}

// Folder names on the router are ISO-8859-1; encode their bytes for the URL.
QByteArray encodePath(const QString& path)
{
    QByteArray out;
    for (const char c : path.toLatin1()) {
        const auto u = quint8(c);
        if ((u >= 'a' && u <= 'z') || (u >= 'A' && u <= 'Z') || (u >= '0' && u <= '9') || u == '-' ||
            u == '.' || u == '_' || u == '~' || u == '/')
            out.append(c);
        else
            out.append('%').append(QByteArray::number(u, 16).rightJustified(2, '0').toUpper());
    }
    return out;
}

QString absolute(const QString& path)
{
    return path.startsWith(u'/') ? path : QStringLiteral("/%1").arg(path);
}

QString folderWithSlash(const QString& folder)
{
    return folder.isEmpty() || folder.endsWith(u'/') ? folder : folder + u'/';
}

bool maskMatches(const QString& mask, const QString& name)
{
    if (mask.isEmpty() || mask == u"*" || mask == u"*.*")
        return true;
    const QRegularExpression re(QRegularExpression::wildcardToRegularExpression(mask),
                                QRegularExpression::CaseInsensitiveOption);
    return re.match(name).hasMatch();
}

} // namespace

struct VBFTPConnection::Impl
{
    CURL* curl = nullptr;
    char errorBuffer[CURL_ERROR_SIZE] = {};
    curl_slist* commands = nullptr;

    ~Impl()
    {
        clearCommands();
        if (curl)
            curl_easy_cleanup(curl);
    }
    void clearCommands()
    {
        if (commands)
            curl_slist_free_all(commands);
        commands = nullptr;
    }
};

VBFTPConnection::Settings VBFTPConnection::settingsUsePreferences(const TNPreferences& prefs)
{
    Settings s;
    s.remote = prefs.remoteAccess && !prefs.remoteHostName.isEmpty();
    s.host = s.remote ? prefs.remoteHostName : prefs.hostName;
    s.port = prefs.ftpPort > 0 ? prefs.ftpPort : 21;
    s.user = prefs.currentFTPUser();
    s.password = prefs.FTPPassWord;
    s.tls = prefs.FTPSSL;
    return s;
}

VBFTPConnection::VBFTPConnection(NotificationCenter& notifications)
    : d(std::make_unique<Impl>()), m_notifications(notifications), m_observer(std::make_unique<QObject>())
{
    static std::once_flag once;
    std::call_once(once, [] { curl_global_init(CURL_GLOBAL_DEFAULT); });
    m_notifications.addObserver(m_observer.get(), Notifications::STOPFTPTRANSFER,
                                [this](const Notification&) { cancelFTP(); });
}

VBFTPConnection::~VBFTPConnection()
{
    m_notifications.removeObserver(m_observer.get());
    disconnect();
}

bool VBFTPConnection::connectUsePreferences(const TNPreferences& prefs, int connID)
{
    return connectWithSettings(settingsUsePreferences(prefs), connID);
}

bool VBFTPConnection::connectWithSettings(const Settings& settings, int connID)
{
    disconnect();
    m_settings = settings;
    m_connID = connID;
    m_cancel = false;
    d->curl = curl_easy_init();
    if (!d->curl) {
        fail(FTPError::Kind::NoConnection, QStringLiteral("could not start the FTP client"));
        return false;
    }
    // Logging in without a transfer tells a wrong password from a missing server at once.
    curl_easy_setopt(d->curl, CURLOPT_NOBODY, 1L);
    m_connected = perform(urlFor(QString()), true);
    if (!m_connected) {
        const FTPError error = m_error;
        disconnect();
        m_error = error;
    }
    return m_connected;
}

void VBFTPConnection::disconnect()
{
    if (d->curl) {
        curl_easy_cleanup(d->curl);
        d->curl = nullptr;
    }
    d->clearCommands();
    m_connected = false;
}

QString VBFTPConnection::urlFor(const QString& path) const
{
    QString host = m_settings.host;
    if (host.contains(u':') && !host.startsWith(u'['))
        host = QStringLiteral("[%1]").arg(host);
    return QStringLiteral("ftp://%1:%2/").arg(host).arg(m_settings.port) +
           QString::fromLatin1(encodePath(path));
}

void VBFTPConnection::fail(FTPError::Kind kind, const QString& message)
{
    m_error.kind = kind;
    m_error.message = message;
    m_error.remote = m_settings.remote;
}

bool VBFTPConnection::perform(const QString& url, bool connecting)
{
    CURL* c = d->curl;
    if (!c) {
        fail(FTPError::Kind::NoConnection, QStringLiteral("not connected"));
        return false;
    }
    const QByteArray urlBytes = url.toLatin1();
    const QByteArray user = m_settings.user.toUtf8();
    const QByteArray password = m_settings.password.toUtf8();
    d->errorBuffer[0] = '\0';
    curl_easy_setopt(c, CURLOPT_URL, urlBytes.constData());
    curl_easy_setopt(c, CURLOPT_USERNAME, user.constData());
    curl_easy_setopt(c, CURLOPT_PASSWORD, password.constData());
    curl_easy_setopt(c, CURLOPT_ERRORBUFFER, d->errorBuffer);
    curl_easy_setopt(c, CURLOPT_NOSIGNAL, 1L);
    curl_easy_setopt(c, CURLOPT_CONNECTTIMEOUT, long(m_settings.timeoutSeconds));
    curl_easy_setopt(c, CURLOPT_SERVER_RESPONSE_TIMEOUT, long(m_settings.timeoutSeconds));
    curl_easy_setopt(c, CURLOPT_LOW_SPEED_LIMIT, 1L);
    curl_easy_setopt(c, CURLOPT_LOW_SPEED_TIME, long(m_settings.timeoutSeconds));
    curl_easy_setopt(c, CURLOPT_FTP_FILEMETHOD, long(CURLFTPMETHOD_SINGLECWD));
    curl_easy_setopt(c, CURLOPT_NOPROGRESS, 0L);
    curl_easy_setopt(c, CURLOPT_XFERINFOFUNCTION, &progress);
    curl_easy_setopt(c, CURLOPT_XFERINFODATA, &m_cancel);
    if (m_settings.tls) {
        curl_easy_setopt(c, CURLOPT_USE_SSL, long(CURLUSESSL_ALL));
        // Routers present self-signed certificates; there is nothing to verify them against.
        curl_easy_setopt(c, CURLOPT_SSL_VERIFYPEER, 0L);
        curl_easy_setopt(c, CURLOPT_SSL_VERIFYHOST, 0L);
    }
    curl_easy_setopt(c, CURLOPT_QUOTE, d->commands);

    const CURLcode rc = m_cancel ? CURLE_ABORTED_BY_CALLBACK : curl_easy_perform(c);
    // Reset for the next operation; the control connection stays open in the handle.
    curl_easy_reset(c);
    d->clearCommands();
    if (rc == CURLE_OK) {
        m_error = FTPError();
        return true;
    }
    const QString message =
        d->errorBuffer[0] ? QString::fromUtf8(d->errorBuffer) : QString::fromUtf8(curl_easy_strerror(rc));
    FTPError::Kind kind = FTPError::Kind::Failed;
    switch (rc) {
    case CURLE_LOGIN_DENIED:
        kind = FTPError::Kind::LoginDenied;
        break;
    case CURLE_ABORTED_BY_CALLBACK:
        kind = FTPError::Kind::Cancelled;
        break;
    case CURLE_OPERATION_TIMEDOUT:
        kind = connecting && m_settings.tls ? FTPError::Kind::TLSTimeout : FTPError::Kind::NoConnection;
        break;
    case CURLE_COULDNT_CONNECT:
    case CURLE_COULDNT_RESOLVE_HOST:
    case CURLE_WEIRD_SERVER_REPLY:
    case CURLE_GOT_NOTHING:
    case CURLE_RECV_ERROR:
    case CURLE_SEND_ERROR:
    case CURLE_SSL_CONNECT_ERROR:
    case CURLE_USE_SSL_FAILED:
        kind = connecting ? FTPError::Kind::NoConnection : FTPError::Kind::Failed;
        break;
    default:
        break;
    }
    fail(kind, message);
    qCWarning(lcVoicemail) << "FTP error" << int(rc) << message;
    return false;
}

QByteArray VBFTPConnection::dataForFile(const QString& path)
{
    if (!d->curl) {
        fail(FTPError::Kind::NoConnection, QStringLiteral("not connected"));
        return {};
    }
    QByteArray data;
    const QString url = urlFor(absolute(path).mid(1));
    curl_easy_setopt(d->curl, CURLOPT_WRITEFUNCTION, &appendToArray);
    curl_easy_setopt(d->curl, CURLOPT_WRITEDATA, &data);
    if (!perform(url, false))
        return {};
    if (data.isNull())
        data = QByteArray(""); // an empty file is not a failure
    return data;
}

bool VBFTPConnection::downloadFile(const QString& path, const QString& localPath)
{
    if (!d->curl) {
        fail(FTPError::Kind::NoConnection, QStringLiteral("not connected"));
        return false;
    }
    QFile file(localPath);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate)) {
        fail(FTPError::Kind::Failed, file.errorString());
        return false;
    }
    curl_easy_setopt(d->curl, CURLOPT_WRITEFUNCTION, &writeToFile);
    curl_easy_setopt(d->curl, CURLOPT_WRITEDATA, &file);
    const bool ok = perform(urlFor(absolute(path).mid(1)), false);
    file.close();
    if (!ok)
        file.remove();
    return ok;
}

bool VBFTPConnection::uploadData(const QByteArray& data, const QString& folder, const QString& file)
{
    if (!d->curl) {
        fail(FTPError::Kind::NoConnection, QStringLiteral("not connected"));
        return false;
    }
    UploadSource source{&data, 0};
    curl_easy_setopt(d->curl, CURLOPT_UPLOAD, 1L);
    curl_easy_setopt(d->curl, CURLOPT_READFUNCTION, &readFromArray);
    curl_easy_setopt(d->curl, CURLOPT_READDATA, &source);
    curl_easy_setopt(d->curl, CURLOPT_INFILESIZE_LARGE, curl_off_t(data.size()));
    return perform(urlFor(absolute(folderWithSlash(folder) + file).mid(1)), false);
}

bool VBFTPConnection::deleteFile(const QString& file, const QString& folder)
{
    if (!d->curl) {
        fail(FTPError::Kind::NoConnection, QStringLiteral("not connected"));
        return false;
    }
    d->commands = curl_slist_append(
        d->commands, ("DELE " + absolute(folderWithSlash(folder) + file).toLatin1()).constData());
    curl_easy_setopt(d->curl, CURLOPT_NOBODY, 1L);
    return perform(urlFor(QString()), false);
}

bool VBFTPConnection::renameFile(const QString& from, const QString& to, const QString& folder)
{
    if (!d->curl) {
        fail(FTPError::Kind::NoConnection, QStringLiteral("not connected"));
        return false;
    }
    const QString dir = folderWithSlash(folder);
    d->commands = curl_slist_append(d->commands, ("RNFR " + absolute(dir + from).toLatin1()).constData());
    d->commands = curl_slist_append(d->commands, ("RNTO " + absolute(dir + to).toLatin1()).constData());
    curl_easy_setopt(d->curl, CURLOPT_NOBODY, 1L);
    return perform(urlFor(QString()), false);
}

QStringList VBFTPConnection::directoryListingForPath(const QString& path, const QString& mask)
{
    if (!d->curl) {
        fail(FTPError::Kind::NoConnection, QStringLiteral("not connected"));
        return {};
    }
    const QString folder = folderWithSlash(path.startsWith(u'/') ? path.mid(1) : path);
    QByteArray listing;
    curl_easy_setopt(d->curl, CURLOPT_WRITEFUNCTION, &appendToArray);
    curl_easy_setopt(d->curl, CURLOPT_WRITEDATA, &listing);
    if (!perform(urlFor(folder), false))
        return {};

    // Unix-style LIST lines: type and rights, links, owner, group, size, three date fields, name.
    static const QRegularExpression line(
        QStringLiteral(R"(^([dl\-])\S*\s+\S+\s+\S+\s+\S+\s+\S+\s+\S+\s+\S+\s+\S+\s(.+)$)"));
    QStringList out;
    for (const QByteArray& raw : listing.split('\n')) {
        const QString text = QString::fromLatin1(raw).trimmed();
        const auto m = line.match(text);
        if (!m.hasMatch())
            continue;
        QString name = m.captured(2);
        const bool isDir = m.captured(1) == u"d";
        if (m.captured(1) == u"l")
            name = name.section(QStringLiteral(" -> "), 0, 0);
        if (name == u"." || name == u"..")
            continue;
        if (isDir)
            out.append(QStringLiteral("%1%2/").arg(folder, name));
        else if (maskMatches(mask, name))
            out.append(QStringLiteral("%1%2").arg(folder, name));
    }
    return out;
}

QString VBFTPConnection::searchPath(const QString& path, const QString& subdirectory)
{
    const QString wanted = folderWithSlash(path.startsWith(u'/') ? path.mid(1) : path) + subdirectory + u'/';
    const QStringList entries = directoryListingForPath(path);
    return entries.contains(wanted) ? wanted : QString();
}

void VBFTPConnection::cancelFTP()
{
    m_cancel = true;
}
