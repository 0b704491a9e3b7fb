#pragma once

#include "PhoneListCommand.h"

// lines refresh|list: the own numbers of the router.
class LinesCommand final : public PhoneListCommand
{
public:
    LinesCommand() : PhoneListCommand(Kind::Lines) {}
};
