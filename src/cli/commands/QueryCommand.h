#pragma once

#include "Command.h"

#include <string>
#include <vector>

// query VAR...: reads router variables, one value per line.
class QueryCommand final : public Command
{
public:
    void setup(CLI::App& app, CliContext& ctx) override;

private:
    std::vector<std::string> m_names;
};
