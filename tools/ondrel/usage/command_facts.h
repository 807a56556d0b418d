// The grammar as those see it who write about it: the man pages and the completions of shells.
#pragma once

#include <string>
#include <vector>

#include "usage/usage.h"

namespace ondrel::command {

struct OptionFacts {
  std::vector<std::string> names;  ///< "-o", "--output"; of an operand its name alone.
  std::string value;               ///< What stands behind it: "IMAGE", "list|html"; empty for a flag.
  std::string purpose;
};

/// What a shell can offer for a value.
struct ValueChoices {
  bool files = false;
  bool folders = false;
  std::vector<std::string> words;
};

struct CommandFacts {
  std::string name;     ///< "ondrel add node"
  std::string parent;   ///< "ondrel add"; empty for "ondrel".
  std::string group;    ///< The heading of the list that it stands in.
  std::string purpose;  ///< One line.
  std::vector<OptionFacts> options;
  std::vector<OptionFacts> operands;
  std::string remarks;   ///< Paragraphs, with their line ends.
  std::string examples;  ///< Lines, indented.
  std::string exitCodes;
};

/// The program, then its commands in the order of the help, each followed by the commands below it.
std::vector<CommandFacts> FactsOfAllCommands();

/// The facts of the commands directly below one.
std::vector<const CommandFacts*> CommandsBelow(const std::vector<CommandFacts>& all, const std::string& name);

/// Words of capitals are placeholders: of a file, of a folder ("DIR"), or of what only the user knows. Other words
/// stand for themselves.
ValueChoices ChoicesOf(const OptionFacts& option);

}  // namespace ondrel::command
