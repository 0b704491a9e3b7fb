#pragma once

#include "Command.h"

#include <string>
#include <vector>

// voicemail list|get|delete: the answering machine messages on the router's storage
class VoicemailCommand final : public Command
{
public:
    void setup(CLI::App& app, CliContext& ctx) override;

private:
    int m_limit = -1;
    std::string m_sortBy = "date";
    std::string m_id;
    std::string m_out;
    std::vector<std::string> m_ids;
};
