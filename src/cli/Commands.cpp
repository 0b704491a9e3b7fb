#include "Command.h"

#include "commands/LocationCommand.h"
#include "commands/MonitorCommand.h"

std::vector<std::unique_ptr<Command>> allCommands()
{
    std::vector<std::unique_ptr<Command>> commands;
    commands.push_back(std::make_unique<LocationCommand>());
    commands.push_back(std::make_unique<MonitorCommand>());
    return commands;
}
