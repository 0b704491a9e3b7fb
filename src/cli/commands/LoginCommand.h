#pragma once

#include "Command.h"

#include <string>
#include <vector>

// login: logs in and prints the session result, the kind of SID and the rights.
class LoginCommand final : public Command
{
public:
    void setup(CLI::App& app, CliContext& ctx) override;
};
