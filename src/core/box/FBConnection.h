#pragma once

#include <QByteArray>
#include <QList>
#include <QPair>
#include <QString>

#include "box/RouterFailure.h"

#include <functional>

class RouterSession;
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
    // Without a location: no credentials for digest, no certificate pin, no 401 bookkeeping.
    FBConnection() = default;
    // A request to the location's router within its session.
    FBConnection(TNPreferences& config, RouterSession& session) : m_config(&config), m_session(&session) {}

    QString startWithRequest(const FBRequest& request, bool needsOutput, FBEncoding encoding);

    // When not empty and not ";;" the transfer ends as soon as the text so far contains it.
    QString cancelOnString;
    // Seconds until the answer must have begun; an answer that has begun is never cut.
    int timeoutSeconds = 20;
    // HTTP digest credentials for this request only.
    QString digestUser;
    QString digestPassword;
    bool useDigest = false;
    // Replaces the default 401 reaction (the failure "errorWrongPass", once per loginError of
    // the request's own session).
    std::function<void()> onUnauthorized;

    TNPreferences* config() const { return m_config; }
    RouterSession* session() const { return m_session; }
    void setLocation(TNPreferences* config, RouterSession* session)
    {
        m_config = config;
        m_session = session;
    }

    // Outcome of the last request.
    bool errorOccured = false;
    bool timedOut = false;
    bool certificateRefused = false;
    long httpStatus = 0;
    int curlCode = 0;
    QString errorDescription;
    // What the user is told about the last request (a refused password); empty otherwise.
    RouterFailure failure;

    void customCancel();

private:
    void defaultUnauthorized();
    QString retryWithDigest(const FBRequest& request, bool needsOutput, FBEncoding encoding,
                            const QString& user, const QString& password);

    TNPreferences* m_config = nullptr;
    RouterSession* m_session = nullptr;
};
