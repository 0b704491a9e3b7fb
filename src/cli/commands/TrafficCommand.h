#pragma once

#include "Command.h"

// traffic [--count N]: the router's traffic by queue every four seconds.
class TrafficCommand : public Command
{
public:
    void setup(CLI::App& app, CliContext& ctx) override;

private:
    int m_count = 0;
};
