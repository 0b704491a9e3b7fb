#pragma once

#include "Command.h"

#include <string>
#include <vector>

// dect on|off.
class DectCommand final : public Command
{
public:
    void setup(CLI::App& app, CliContext& ctx) override;

private:
    std::string m_state;
};
