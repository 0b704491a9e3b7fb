#pragma once

#include "Command.h"

#include <string>
#include <vector>

// dial NUMBER [--port P]: click to dial.
class DialCommand final : public Command
{
public:
    void setup(CLI::App& app, CliContext& ctx) override;

private:
    std::string m_number;
    std::string m_port;
};
