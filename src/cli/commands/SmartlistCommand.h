#pragma once

#include "Command.h"

#include <string>
#include <vector>

// smartlist add|list|delete|show
class SmartlistCommand final : public Command
{
public:
    void setup(CLI::App& app, CliContext& ctx) override;

private:
    std::string m_name;
    std::vector<std::string> m_conditions;
    bool m_any = false;
    long long m_id = 0;
    std::vector<long long> m_ids;
};
