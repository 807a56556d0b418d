// The manual, from the grammar.
#pragma once

#include <string>
#include <vector>

#include "usage/command_facts.h"

namespace ondrel::command {

/// The name of a page's file without its section: "ondrel-add".
std::string ManPageName(const CommandFacts& command);

/// The page of the program or of one of its commands, with the commands below it, in the format of man(7). The same
/// bytes for the same grammar.
std::string ManPage(const std::vector<CommandFacts>& all, const CommandFacts& command);

/// The commands that have a page of their own: the program, and what stands directly below it.
std::vector<const CommandFacts*> CommandsWithPages(const std::vector<CommandFacts>& all);

}  // namespace ondrel::command
