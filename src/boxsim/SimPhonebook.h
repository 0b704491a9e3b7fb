#pragma once

#include <QByteArray>
#include <QList>
#include <QMutex>
#include <QPair>
#include <QString>

#include <functional>
#include <string>

namespace httplib {
class Server;
struct Request;
} // namespace httplib
class Scenario;

// The router's configuration page /cgi-bin/firmwarecfg for phone book 0: export as ISO Latin-1
// XML, import of an uploaded book (kept until the next one). The scenario's "phonebook" holds
// the book; uploads are counted for the control endpoint:
//   GET /_sim/phonebook -> {"book": the current book, "uploads": n}
class SimPhonebook
{
public:
    using SessionCheck = std::function<bool(const QString& sid)>;

    SimPhonebook(Scenario& scenario, SessionCheck sessionCheck);
    void install(httplib::Server& server);
    void installControl(httplib::Server& server);

    // The router reads form parts separated by plain line feeds, which httplib's multipart
    // parser refuses; the pre-routing step hides the form's type so the body arrives raw.
    static void keepFormBodyRaw(const httplib::Request& req);

    // Form parts in order, with LF or CRLF line ends; empty when the body is no such form.
    static QList<QPair<QString, QByteArray>> formParts(const QByteArray& body, const QByteArray& contentType);

    static QString defaultBook();

private:
    std::string handle(const httplib::Request& req, int* status);
    bool authorised(const QList<QPair<QString, QByteArray>>& parts) const;
    std::string exportBook() const;
    std::string importBook(const QByteArray& file, int* status);

    Scenario& m_scenario;
    SessionCheck m_sessionCheck;
    mutable QMutex m_mutex;
    int m_uploads = 0;
};
