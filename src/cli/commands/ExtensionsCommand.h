#pragma once

#include "PhoneListCommand.h"

// extensions refresh|list: the telephones of the router.
class ExtensionsCommand final : public PhoneListCommand
{
public:
    ExtensionsCommand() : PhoneListCommand(Kind::Extensions) {}
};
