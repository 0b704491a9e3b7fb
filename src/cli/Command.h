#pragma once

#include <CLI/CLI.hpp>

#include <memory>
#include <vector>

class CliContext;

// One top-level sub-command of tondrel-cli.
class Command
{
public:
    virtual ~Command() = default;
    virtual void setup(CLI::App& app, CliContext& ctx) = 0;
};

// Every command the tool knows, in the order --help lists them.
std::vector<std::unique_ptr<Command>> allCommands();

// Parses and runs; returns the exit status. Used by main and by in-process tests.
int runCli(int argc, const char* const* argv, CliContext& ctx);
