#pragma once

#include "base/NumberForms.h"

#include <string>

class CliContext;

namespace contactsCli {
// --prefixes when given, else the target location's; empty without any location.
Prefixis prefixisFor(CliContext& ctx, const std::string& option);
} // namespace contactsCli
