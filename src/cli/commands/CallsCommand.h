#pragma once

#include "Command.h"

#include <QString>

#include <string>
#include <vector>

class TNCallinglist;
class CliContext;

// calls list|counters|stats|years|delete|import|export
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
    // CallsImportExport.cpp
    void setupImportExport(CLI::App& calls, CliContext& ctx);
    void importJournal(CliContext& ctx);
    void exportCalls(CliContext& ctx);

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
    std::string m_importFile;
    struct ExportOptions
    {
        std::string format, state = "all", fields, delimiter = ";", enclose = "\"", out;
    } m_export;
};

// "in", "out", "missed", "all" or 1-3 as a call state (0 all); throws a usage error otherwise.
int parseCallState(const QString& text);

// The call database of the context, or a CliError when it cannot be opened.
TNCallinglist& cliCallinglist(CliContext& ctx);
