#pragma once

#include <QByteArray>
#include <QString>

#include <string>

namespace httplib {
class Server;
struct Request;
struct Response;
} // namespace httplib
class RouterState;

// TR-064 control: HTTP digest authentication ("dslf-config" is the user without a name), the
// actions the program uses, and SOAP faults (401 invalid action, 606 action not authorised).
class SimTr064
{
public:
    explicit SimTr064(RouterState& state);
    // prefix: "" on the TR-064 port, "/tr064" on the remote-access HTTPS port.
    void install(httplib::Server& server, const std::string& prefix);

    // The user the digest answer proves (followed by \x01, so that the nameless user is not
    // null), or a null string. Remote access of older firmware asks the same way.
    QString authenticate(const httplib::Request& req) const;
    // The WWW-Authenticate value that asks for it.
    std::string digestChallenge() const;

private:
    void handle(const httplib::Request& req, httplib::Response& res, const QString& controlPath);

    RouterState& m_state;
    QString m_nonce;
};
