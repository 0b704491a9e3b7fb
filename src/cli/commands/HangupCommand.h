#pragma once

#include "Command.h"

#include <string>
#include <vector>

// hangup: ends the click-to-dial call.
class HangupCommand final : public Command
{
public:
    void setup(CLI::App& app, CliContext& ctx) override;

private:
    std::string m_port;
};
