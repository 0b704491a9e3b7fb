#pragma once

#include <QByteArray>
#include <QList>
#include <QPair>
#include <QString>

#include <functional>

class TNPreferences;

// One prepared HTTP request to the router or the web.
struct FBRequest
{
    QString url;
    QByteArray method = "GET";
    QList<QPair<QByteArray, QByteArray>> headers;
    QByteArray body;

    void setHeader(const QByteArray& name, const QByteArray& value) { headers.append({name, value}); }
    // POST with the form content type.
    void setFormBody(const QByteArray& form);
};

enum class FBEncoding { Ascii, Utf8, Latin1 };

// One synchronous HTTP request on the calling thread (libcurl). The answer text, "-2" when the
// request failed or timed out before the answer began, "" when nothing came.
class FBConnection
{
public:
    explicit FBConnection(TNPreferences* config = nullptr) : m_config(config) {}

    QString startWithRequest(const FBRequest& request, bool needsOutput, FBEncoding encoding,
                             TNPreferences* config);

    // When not empty and not ";;" the transfer ends as soon as the text so far contains it.
    QString cancelOnString;
    // Seconds until the answer must have begun; an answer that has begun is never cut.
    int timeoutSeconds = 20;
    // HTTP digest credentials for this request only.
    QString digestUser;
    QString digestPassword;
    bool useDigest = false;
    // Replaces the default 401 reaction (alert "errorWrongPass" once per loginError).
    std::function<void()> onUnauthorized;

    TNPreferences* config() const { return m_config; }
    void setConfig(TNPreferences* config) { m_config = config; }

    // Outcome of the last request.
    bool errorOccured = false;
    bool timedOut = false;
    bool certificateRefused = false;
    long httpStatus = 0;
    int curlCode = 0;
    QString errorDescription;

    // Tests shorten every time-out with this (0: the given values).
    static void setTimeoutOverrideForTesting(int seconds);
    static int effectiveTimeout(int seconds);

    void customCancel();

private:
    void defaultUnauthorized();
    QString retryWithDigest(const FBRequest& request, bool needsOutput, FBEncoding encoding, const QString& user,
                            const QString& password);

    TNPreferences* m_config = nullptr;
};
