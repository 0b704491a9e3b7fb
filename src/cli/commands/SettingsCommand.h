#pragma once

#include "Command.h"

// settings list|get|set: the global settings (address book, list behaviour, tray options).
class SettingsCommand final : public Command
{
public:
    void setup(CLI::App& app, CliContext& ctx) override;

private:
    std::string m_key, m_value;
};
