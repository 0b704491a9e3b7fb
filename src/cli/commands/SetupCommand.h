#pragma once

#include "Command.h"

#include <string>

// setup --host H [--user U] --password-stdin [--name N]: the setup assistant without windows.
class SetupCommand : public Command
{
public:
    void setup(CLI::App& app, CliContext& ctx) override;

private:
    std::string m_host, m_user, m_name;
    bool m_passwordStdin = false;
    int m_webPort = 80;
};
