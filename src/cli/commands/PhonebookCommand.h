#pragma once

#include "Command.h"

#include <string>

// phonebook show|add|export-group: the router's phone book 0.
class PhonebookCommand : public Command
{
public:
    void setup(CLI::App& app, CliContext& ctx) override;

private:
    void show(CliContext& ctx);
    void add(CliContext& ctx);
    void exportGroup(CliContext& ctx);

    struct Add
    {
        std::string name, home, mobile, work, quickDial, vanity, quickDialOn;
        bool important = false;
    } m_add;
    std::string m_group;
    std::string m_addressBook;
};
