#pragma once

#include "Command.h"

// status: WLAN and DECT state, WLAN names, model and firmware, router language.
class StatusCommand final : public Command
{
public:
    void setup(CLI::App& app, CliContext& ctx) override;
};
