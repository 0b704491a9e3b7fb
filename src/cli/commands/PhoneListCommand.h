#pragma once

#include "Command.h"

#include <QVariantList>

#include <functional>

class TNPreferences;

// extensions|lines|faxlines refresh|list: the router's extensions and lines, merged into the
// location. One class, three top-level commands that differ only in their list.
class PhoneListCommand final : public Command
{
public:
    enum class Kind { Extensions, Lines, FaxLines };
    explicit PhoneListCommand(Kind kind) : m_kind(kind) {}
    void setup(CLI::App& app, CliContext& ctx) override;

private:
    Kind m_kind;
};
