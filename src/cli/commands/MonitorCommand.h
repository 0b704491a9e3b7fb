#pragma once

#include "Command.h"

// monitor [--count N] [--timeout S]: the live calls of the current location's router.
class MonitorCommand final : public Command
{
public:
    void setup(CLI::App& app, CliContext& ctx) override;

private:
    void run(CliContext& ctx);

    int m_count = 0;
    double m_timeout = 0;
};
