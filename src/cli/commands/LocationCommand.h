#pragma once

#include "Command.h"

// location add|list|show|use|remove|set|password
class LocationCommand final : public Command
{
public:
    void setup(CLI::App& app, CliContext& ctx) override;

private:
    struct AddOptions
    {
        std::string name, host, user, prefixes;
        bool passwordStdin = false;
        int webPort = 0, monitorPort = 0, tr064Port = 0, ftpPort = 0;
    } m_add;
    std::string m_target;
    std::string m_key, m_value;
    bool m_remote = false, m_ftp = false, m_passwordStdin = false;
};
