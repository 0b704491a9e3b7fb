#pragma once

#include "PhoneListCommand.h"

// faxlines refresh|list: the fax numbers of the router.
class FaxLinesCommand final : public PhoneListCommand
{
public:
    FaxLinesCommand() : PhoneListCommand(Kind::FaxLines) {}
};
