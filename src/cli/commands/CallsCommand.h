#pragma once

#include "Command.h"

#include <string>
#include <vector>

class TNCallinglist;
class CliContext;

// calls list|counters|stats|years|delete
class CallsCommand final : public Command
{
public:
    void setup(CLI::App& app, CliContext& ctx) override;

private:
    void list(CliContext& ctx);
    void counters(CliContext& ctx);
    void stats(CliContext& ctx);
    void years(CliContext& ctx);
    void remove(CliContext& ctx);

    struct ListOptions
    {
        std::string state = "all";
        std::string search, column, sort;
        bool asc = false, desc = false;
        int limit = 0;
    } m_list;
    struct StatsOptions
    {
        int year = 0, month = 0;
        std::string state;
    } m_stats;
    std::vector<long long> m_rowids;
};

// The call database of the context, or a CliError when it cannot be opened.
TNCallinglist& cliCallinglist(CliContext& ctx);
