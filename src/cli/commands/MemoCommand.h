#pragma once

#include "Command.h"

#include <string>
#include <vector>

// memo add|list|update|delete|search
class MemoCommand final : public Command
{
public:
    void setup(CLI::App& app, CliContext& ctx) override;

private:
    std::string m_number, m_date, m_subject, m_body, m_text, m_column;
    bool m_subjectSet = false, m_bodySet = false;
    long long m_id = 0;
    std::vector<long long> m_ids;
};
