#pragma once

#include "Command.h"

// lookup NUMBER [--reverse]: caller cache, address book, then the web directories.
class LookupCommand final : public Command
{
public:
    void setup(CLI::App& app, CliContext& ctx) override;

private:
    std::string m_number;
    std::string m_addressBook;
    std::string m_prefixes;
    bool m_reverse = false;
    double m_timeout = 10;
};
