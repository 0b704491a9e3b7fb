#pragma once

#include "Command.h"

#include <QVariantList>

#include <functional>

class TNPreferences;

// refresh|list of the router's extensions or lines, merged into the location: what the
// commands extensions, lines and faxlines share.
class PhoneListCommand : public Command
{
public:
    enum class Kind { Extensions, Lines, FaxLines };
    explicit PhoneListCommand(Kind kind) : m_kind(kind) {}
    void setup(CLI::App& app, CliContext& ctx) override;

private:
    Kind m_kind;
};
