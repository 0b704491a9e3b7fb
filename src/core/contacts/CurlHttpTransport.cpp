#include "contacts/HttpTransport.h"

#include <curl/curl.h>

#include <memory>
#include <mutex>

namespace {

struct Sink
{
    QByteArray* body;
    qint64 limit;
};

size_t writeBody(char* data, size_t size, size_t count, void* user)
{
    auto* sink = static_cast<Sink*>(user);
    const size_t bytes = size * count;
    if (sink->body->size() + qint64(bytes) > sink->limit)
        return 0; // ends the transfer with CURLE_WRITE_ERROR
    sink->body->append(data, qsizetype(bytes));
    return bytes;
}

struct EasyDeleter
{
    void operator()(CURL* curl) const { curl_easy_cleanup(curl); }
};
struct ListDeleter
{
    void operator()(curl_slist* list) const { curl_slist_free_all(list); }
};

} // namespace

CurlHttpTransport::CurlHttpTransport()
{
    static std::once_flag once;
    std::call_once(once, [] { curl_global_init(CURL_GLOBAL_DEFAULT); });
}

HttpResponse CurlHttpTransport::send(const HttpRequest& request)
{
    HttpResponse response;
    std::unique_ptr<CURL, EasyDeleter> curl(curl_easy_init());
    if (!curl) {
        response.error = QStringLiteral("the HTTP client could not be set up");
        return response;
    }
    const std::string url = request.url.toStdString();
    const std::string method = request.method.toStdString();
    std::unique_ptr<curl_slist, ListDeleter> headers;
    for (const auto& [name, value] : request.headers) {
        const QByteArray line = name + ": " + value;
        headers.reset(curl_slist_append(headers.release(), line.constData()));
    }
    Sink sink{&response.body, request.maxBodyBytes};
    CURL* c = curl.get();
    curl_easy_setopt(c, CURLOPT_URL, url.c_str());
    curl_easy_setopt(c, CURLOPT_PROTOCOLS_STR, "http,https");
    curl_easy_setopt(c, CURLOPT_REDIR_PROTOCOLS_STR, "http,https");
    curl_easy_setopt(c, CURLOPT_FOLLOWLOCATION, 1L);
    curl_easy_setopt(c, CURLOPT_MAXREDIRS, 5L);
    curl_easy_setopt(c, CURLOPT_NOSIGNAL, 1L); // background threads
    curl_easy_setopt(c, CURLOPT_TIMEOUT_MS, long(request.timeoutMs));
    curl_easy_setopt(c, CURLOPT_CONNECTTIMEOUT_MS, long(request.timeoutMs));
    curl_easy_setopt(c, CURLOPT_NOPROXY, "localhost,127.0.0.1,::1");
    curl_easy_setopt(c, CURLOPT_HTTPHEADER, headers.get());
    curl_easy_setopt(c, CURLOPT_WRITEFUNCTION, writeBody);
    curl_easy_setopt(c, CURLOPT_WRITEDATA, &sink);
    if (request.sendBody || request.method == "POST") {
        curl_easy_setopt(c, CURLOPT_POSTFIELDSIZE, long(request.body.size()));
        curl_easy_setopt(c, CURLOPT_POSTFIELDS, request.body.constData());
    }
    if (request.method != "POST" && !(request.method == "GET" && !request.sendBody))
        curl_easy_setopt(c, CURLOPT_CUSTOMREQUEST, method.c_str());
    const CURLcode code = curl_easy_perform(c);
    if (code != CURLE_OK) {
        response.error = QString::fromUtf8(curl_easy_strerror(code));
        response.body.clear();
        return response;
    }
    curl_easy_getinfo(c, CURLINFO_RESPONSE_CODE, &response.status);
    response.ok = true;
    return response;
}
