#include "Command.h"

#include "commands/CallsCommand.h"
#include "commands/DectCommand.h"
#include "commands/DialCommand.h"
#include "commands/DiscoverCommand.h"
#include "commands/DiversionCommand.h"
#include "commands/ExtensionsCommand.h"
#include "commands/FaxCommand.h"
#include "commands/FaxLinesCommand.h"
#include "commands/HangupCommand.h"
#include "commands/LinesCommand.h"
#include "commands/LocationCommand.h"
#include "commands/LoginCommand.h"
#include "commands/LookupCommand.h"
#include "commands/MemoCommand.h"
#include "commands/MonitorCommand.h"
#include "commands/NumberCommand.h"
#include "commands/PhonebookCommand.h"
#include "commands/QueryCommand.h"
#include "commands/SettingsCommand.h"
#include "commands/SetupCommand.h"
#include "commands/SmartlistCommand.h"
#include "commands/StatusCommand.h"
#include "commands/TrafficCommand.h"
#include "commands/VoicemailCommand.h"
#include "commands/WlanCommand.h"

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
    commands.push_back(std::make_unique<LoginCommand>());
    commands.push_back(std::make_unique<QueryCommand>());
    commands.push_back(std::make_unique<DialCommand>());
    commands.push_back(std::make_unique<HangupCommand>());
    commands.push_back(std::make_unique<DiversionCommand>());
    commands.push_back(std::make_unique<WlanCommand>());
    commands.push_back(std::make_unique<DectCommand>());
    commands.push_back(std::make_unique<StatusCommand>());
    commands.push_back(std::make_unique<ExtensionsCommand>());
    commands.push_back(std::make_unique<LinesCommand>());
    commands.push_back(std::make_unique<FaxLinesCommand>());
    commands.push_back(std::make_unique<PhonebookCommand>());
    commands.push_back(std::make_unique<SetupCommand>());
    commands.push_back(std::make_unique<TrafficCommand>());
    return commands;
}
