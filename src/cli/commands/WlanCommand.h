#pragma once

#include "Command.h"

#include <string>
#include <vector>

// wlan on|off|2on|2off|5on|5off.
class WlanCommand final : public Command
{
public:
    void setup(CLI::App& app, CliContext& ctx) override;

private:
    std::string m_state;
};
