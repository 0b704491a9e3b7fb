#pragma once

#include "Command.h"

#include <string>
#include <vector>

// fax list|get|delete: received faxes on the router's storage
class FaxCommand final : public Command
{
public:
    void setup(CLI::App& app, CliContext& ctx) override;

private:
    std::string m_sortBy = "date";
    std::string m_id;
    std::string m_out;
    std::vector<std::string> m_ids;
};
