#include "Command.h"

#include "commands/DiscoverCommand.h"
#include "commands/FaxCommand.h"
#include "commands/LocationCommand.h"
#include "commands/SettingsCommand.h"
#include "commands/VoicemailCommand.h"
#include "commands/LookupCommand.h"
#include "commands/NumberCommand.h"
#include "commands/CallsCommand.h"
#include "commands/MemoCommand.h"
#include "commands/SmartlistCommand.h"
#include "commands/MonitorCommand.h"

std::vector<std::unique_ptr<Command>> allCommands()
{
    std::vector<std::unique_ptr<Command>> commands;
    commands.push_back(std::make_unique<LocationCommand>());
    commands.push_back(std::make_unique<SettingsCommand>());
    commands.push_back(std::make_unique<VoicemailCommand>());
    commands.push_back(std::make_unique<FaxCommand>());
    commands.push_back(std::make_unique<DiscoverCommand>());
    commands.push_back(std::make_unique<NumberCommand>());
    commands.push_back(std::make_unique<LookupCommand>());
    commands.push_back(std::make_unique<CallsCommand>());
    commands.push_back(std::make_unique<MemoCommand>());
    commands.push_back(std::make_unique<SmartlistCommand>());
    commands.push_back(std::make_unique<MonitorCommand>());
    return commands;
}
