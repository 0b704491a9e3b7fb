#pragma once

#include <QByteArray>
#include <QList>
#include <QPair>
#include <QString>

// A blocking HTTP exchange for the web directories. Kept small so that the router transport can
// take its place later.
struct HttpRequest
{
    QString url;
    QByteArray method = "GET";
    QList<QPair<QByteArray, QByteArray>> headers;
    QByteArray body;
    bool sendBody = false; // also for GET: the custom query sends its body with every method
    int timeoutMs = 10000;
    qint64 maxBodyBytes = 2 * 1024 * 1024; // a directory page is far smaller
};

struct HttpResponse
{
    bool ok = false; // a complete answer arrived (any status)
    long status = 0;
    QByteArray body;
    QString error;
};

class HttpTransport
{
public:
    virtual ~HttpTransport() = default;
    virtual HttpResponse send(const HttpRequest& request) = 0;
};

// libcurl, one easy handle per request; safe to use from several threads at once.
class CurlHttpTransport final : public HttpTransport
{
public:
    CurlHttpTransport();
    HttpResponse send(const HttpRequest& request) override;
};
