#pragma once

#include <QString>

#include <string>

namespace httplib {
class Server;
}
class RouterState;
struct SimParams;

// The login pages: /login_sid.lua of current firmware (MD5 or, with version=2, PBKDF2) and the
// older /cgi-bin/webcm login_sid.xml form. A box without login answers neither with a challenge.
class SimLogin
{
public:
    explicit SimLogin(RouterState& state) : m_state(state) {}
    void install(httplib::Server& server);

    // The answer of webcm's getpage=../html/login_sid.xml.
    std::string formLoginAnswer(const SimParams& params);

private:
    std::string luaLogin(const SimParams& params, bool pbkdf2);
    std::string sessionInfo(const QString& sid, const QString& challenge, int blockTime,
                            const QString& rights, bool withUsers) const;
    QString rightsFor(const QString& userName) const;

    RouterState& m_state;
};
