#include "Command.h"

#include "commands/CallsCommand.h"
#include "commands/LocationCommand.h"
#include "commands/MemoCommand.h"
#include "commands/SmartlistCommand.h"

std::vector<std::unique_ptr<Command>> allCommands()
{
    std::vector<std::unique_ptr<Command>> commands;
    commands.push_back(std::make_unique<LocationCommand>());
    commands.push_back(std::make_unique<CallsCommand>());
    commands.push_back(std::make_unique<MemoCommand>());
    commands.push_back(std::make_unique<SmartlistCommand>());
    return commands;
}
