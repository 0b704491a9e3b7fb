#pragma once

#include "Command.h"

// discover: SSDP search for routers on the network.
class DiscoverCommand final : public Command
{
public:
    void setup(CLI::App& app, CliContext& ctx) override;

private:
    double m_timeout = 5;
    std::string m_target;
};
