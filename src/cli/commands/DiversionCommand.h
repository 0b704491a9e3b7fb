#pragma once

#include "Command.h"

#include <string>
#include <vector>

// diversion on|off.
class DiversionCommand final : public Command
{
public:
    void setup(CLI::App& app, CliContext& ctx) override;

private:
    std::string m_state;
};
