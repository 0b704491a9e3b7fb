#include "box/FBConnection.h"

#include "base/Localization.h"
#include "base/Logging.h"
#include "base/SettingsKeys.h"
#include "base/TNPreferences.h"
#include "base/TNPreferencesManager.h"
#include "box/FBCertificatePin.h"
#include "box/RouterSession.h"

#include <QElapsedTimer>
#include <QUrl>

#include <curl/curl.h>

namespace {

struct Transfer
{
    QByteArray data;
    bool began = false;
    bool cancelled = false;
    bool timedOut = false;
    QByteArray cancelOn;
    FBEncoding encoding = FBEncoding::Ascii;
    qint64 timeoutMs = 20000;
    QElapsedTimer clock;
    QByteArray authenticate; // the WWW-Authenticate header of the answer
};

QString decode(const QByteArray& data, FBEncoding encoding)
{
    return encoding == FBEncoding::Utf8 ? QString::fromUtf8(data) : QString::fromLatin1(data);
}

size_t onHeader(char* line, size_t size, size_t count, void* user)
{
    auto* t = static_cast<Transfer*>(user);
    t->began = true;
    const QByteArray header(line, qsizetype(size * count));
    if (header.toLower().startsWith("www-authenticate:"))
        t->authenticate = header.mid(17).trimmed();
    return size * count;
}

size_t onData(char* ptr, size_t size, size_t count, void* user)
{
    auto* t = static_cast<Transfer*>(user);
    t->began = true;
    t->data.append(ptr, qsizetype(size * count));
    if (!t->cancelOn.isEmpty() && decode(t->data, t->encoding).contains(QString::fromUtf8(t->cancelOn))) {
        t->cancelled = true;
        return 0; // ends the transfer; what came so far is the answer
    }
    return size * count;
}

int onProgress(void* user, curl_off_t, curl_off_t, curl_off_t, curl_off_t)
{
    auto* t = static_cast<Transfer*>(user);
    if (!t->began && t->clock.elapsed() > t->timeoutMs) {
        t->timedOut = true;
        return 1;
    }
    return 0;
}

void ensureCurlInit()
{
    static const bool done = [] { return curl_global_init(CURL_GLOBAL_DEFAULT) == CURLE_OK; }();
    Q_UNUSED(done);
}

// The first certificate seen for the remote host is kept with the location.
void rememberPin(TNPreferences* config, RouterSession* session, const QString& pin)
{
    if (!config || !session || pin.isEmpty())
        return;
    {
        QMutexLocker lock(&session->mutex());
        config->remoteCertificateKey = pin;
    }
    if (auto* mgr = session->preferencesManager(); mgr && !config->uid.isEmpty())
        mgr->saveLocationValue(pin, keys::RemoteCertificateKey, config->uid);
    qCInfo(lcBox) << "pinned the remote router's certificate";
}
} // namespace

void FBRequest::setFormBody(const QByteArray& form)
{
    method = "POST";
    setHeader("Content-type", "application/x-www-form-urlencoded");
    body = form;
}

QString FBConnection::retryWithDigest(const FBRequest& request, bool needsOutput, FBEncoding encoding,
                                      const QString& user, const QString& password)
{
    FBRequest plain = request;
    plain.headers.removeIf(
        [](const QPair<QByteArray, QByteArray>& h) { return h.first.toLower() == "authorization"; });
    useDigest = true;
    digestUser = user;
    digestPassword = password;
    const QString answer = startWithRequest(plain, needsOutput, encoding);
    useDigest = false;
    digestUser.clear();
    digestPassword.clear();
    return answer;
}

void FBConnection::customCancel()
{
    qCDebug(lcBox) << "customCancel";
    errorOccured = true;
    timedOut = true;
}

void FBConnection::defaultUnauthorized()
{
    // The request's own location: another one may be current in the tray or on the command line.
    if (!m_session)
        return;
    {
        QMutexLocker lock(&m_session->mutex());
        if (m_session->loginError)
            return;
        m_session->loginError = true;
    }
    failure = RouterFailure::make(RouterFailure::Kind::WrongPassword, QStringLiteral("errorWrongPass"));
}

QString FBConnection::startWithRequest(const FBRequest& request, bool needsOutput, FBEncoding encoding)
{
    Q_UNUSED(needsOutput);
    ensureCurlInit();
    failure = {};
    errorOccured = timedOut = certificateRefused = false;
    httpStatus = 0;
    curlCode = 0;
    errorDescription.clear();

    CURL* curl = curl_easy_init();
    if (!curl) {
        errorOccured = true;
        return QStringLiteral("-2");
    }
    Transfer t;
    t.encoding = encoding;
    if (!cancelOnString.isEmpty() && cancelOnString != u";;")
        t.cancelOn = cancelOnString.toUtf8();
    t.timeoutMs = qint64(timeoutSeconds) * 1000;

    const std::string url = request.url.toStdString();
    curl_easy_setopt(curl, CURLOPT_URL, url.c_str());
    curl_easy_setopt(curl, CURLOPT_NOSIGNAL, 1L);
    curl_easy_setopt(curl, CURLOPT_CONNECTTIMEOUT_MS, long(t.timeoutMs));
    curl_easy_setopt(curl, CURLOPT_HEADERFUNCTION, onHeader);
    curl_easy_setopt(curl, CURLOPT_HEADERDATA, &t);
    curl_easy_setopt(curl, CURLOPT_WRITEFUNCTION, onData);
    curl_easy_setopt(curl, CURLOPT_WRITEDATA, &t);
    curl_easy_setopt(curl, CURLOPT_NOPROGRESS, 0L);
    curl_easy_setopt(curl, CURLOPT_XFERINFOFUNCTION, onProgress);
    curl_easy_setopt(curl, CURLOPT_XFERINFODATA, &t);

    curl_slist* headers = nullptr;
    for (const auto& [name, value] : request.headers)
        headers = curl_slist_append(headers, (name + ": " + value).constData());
    headers = curl_slist_append(headers, "Expect:");
    curl_easy_setopt(curl, CURLOPT_HTTPHEADER, headers);

    if (request.method == "POST") {
        curl_easy_setopt(curl, CURLOPT_POST, 1L);
        curl_easy_setopt(curl, CURLOPT_POSTFIELDSIZE, long(request.body.size()));
        curl_easy_setopt(curl, CURLOPT_POSTFIELDS, request.body.constData());
    } else if (request.method != "GET") {
        curl_easy_setopt(curl, CURLOPT_CUSTOMREQUEST, request.method.constData());
    }

    std::string user, password;
    if (useDigest) {
        user = digestUser.toStdString();
        password = digestPassword.toStdString();
        curl_easy_setopt(curl, CURLOPT_HTTPAUTH, long(CURLAUTH_DIGEST));
        curl_easy_setopt(curl, CURLOPT_USERNAME, user.c_str());
        curl_easy_setopt(curl, CURLOPT_PASSWORD, password.c_str());
    }

    // Routers use self-signed certificates: no chain check, but the public key is pinned.
    const bool https = request.url.startsWith(u"https://", Qt::CaseInsensitive);
    std::string pin;
    if (https) {
        curl_easy_setopt(curl, CURLOPT_SSL_VERIFYPEER, 0L);
        curl_easy_setopt(curl, CURLOPT_SSL_VERIFYHOST, 0L);
        curl_easy_setopt(curl, CURLOPT_CERTINFO, 1L);
        if (m_config && m_session) {
            QMutexLocker lock(&m_session->mutex());
            pin = m_config->remoteCertificateKey.toStdString();
        }
        if (!pin.empty())
            curl_easy_setopt(curl, CURLOPT_PINNEDPUBLICKEY, pin.c_str());
    }

    t.clock.start();
    const CURLcode rc = curl_easy_perform(curl);
    curlCode = int(rc);
    curl_easy_getinfo(curl, CURLINFO_RESPONSE_CODE, &httpStatus);

    if (https && pin.empty() && rc == CURLE_OK)
        rememberPin(m_config, m_session, FBCertificatePin::pinFromCurl(curl));
    curl_slist_free_all(headers);
    curl_easy_cleanup(curl);

    // Remote access of older firmware asks for HTTP digest before any page: answered once with
    // the remote-access user and password, for this request only.
    if (httpStatus == 401 && !useDigest && t.authenticate.toLower().startsWith("digest") && m_config &&
        m_session) {
        QString user, password;
        bool remote = false;
        {
            QMutexLocker lock(&m_session->mutex());
            remote = m_config->remoteAccess && QUrl(request.url).host() == m_config->remoteHostName;
            user = m_config->remoteUserName;
            password = m_config->remotePassWord;
        }
        if (remote)
            return retryWithDigest(request, needsOutput, encoding, user, password);
    }

    if (httpStatus == 401) {
        if (onUnauthorized)
            onUnauthorized();
        else
            defaultUnauthorized();
    }

    if (rc != CURLE_OK && !(rc == CURLE_WRITE_ERROR && t.cancelled)) {
        if (t.timedOut) {
            customCancel();
        } else {
            errorOccured = true;
            certificateRefused = rc == CURLE_SSL_PINNEDPUBKEYNOTMATCH;
            errorDescription = certificateRefused
                                   ? Localization::localized(QStringLiteral("errorCertificateChanged"))
                                   : QString::fromUtf8(curl_easy_strerror(rc));
            qCInfo(lcBox) << "FBConnection didFailWithError" << int(rc) << errorDescription;
        }
        return QStringLiteral("-2");
    }
    if (t.data.isEmpty())
        return QString();
    return decode(t.data, encoding);
}
