#pragma once

#include <QString>

#include <string>

namespace httplib {
class Server;
struct Request;
} // namespace httplib
class JournalServer;
class RouterState;
class SimLogin;
struct SimParams;

// The router's pages: the older /cgi-bin/webcm (queries, settings, commands, pages), the Lua
// pages of current firmware (query.lua, settings pages), the information page and the start page.
class SimWebInterface
{
public:
    SimWebInterface(RouterState& state, SimLogin& login) : m_state(state), m_login(login) {}
    void install(httplib::Server& server);
    // Journal requests to /cgi-bin/webcm go there.
    void setJournal(JournalServer* journal) { m_journal = journal; }

private:
    std::string webcm(const httplib::Request& req, int* status);
    std::string queryLua(const SimParams& params, bool* ok);
    bool luaSession(const SimParams& params, QString* user = nullptr);
    void applySettings(const SimParams& params, const QString& via);

    RouterState& m_state;
    SimLogin& m_login;
    JournalServer* m_journal = nullptr;
};
