#pragma once

#include "Command.h"

// number clean|standard|unified TEXT
class NumberCommand final : public Command
{
public:
    void setup(CLI::App& app, CliContext& ctx) override;

private:
    std::string m_text;
    std::string m_prefixes;
};
