// The walk over the grammar.
#include "usage/command_facts.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "usage/grammar.h"
#include "usage/usage_parts.h"

namespace ondrel::command {
namespace {

constexpr std::string_view kPlaceholdersOfFiles[] = {"PROJECT", "IMAGE", "FILE", "PICTURE", "PAGE", "A", "B"};
constexpr std::string_view kPlaceholderOfFolders = "DIR";

// What help shows behind an operand that says no more than its name does: nothing, or that there may be several.
constexpr std::string_view kAlone = " ";
constexpr std::string_view kSeveral = "...";

std::string ValueOf(const CLI::Option& option) {
  const std::string& text = option.get_option_text();
  if (option.get_positional() && (text.empty() || text == kAlone || text == kSeveral)) return option.get_name(true);
  return text;
}

OptionFacts FactsOf(const CLI::Option& option) {
  OptionFacts facts;
  if (option.get_positional()) {
    facts.names.push_back(option.get_name(true));
  } else {
    for (const std::string& name : option.get_snames()) facts.names.push_back('-' + name);
    for (const std::string& name : option.get_lnames()) facts.names.push_back("--" + name);
  }
  facts.value = ValueOf(option);
  facts.purpose = option.get_description();
  return facts;
}

/// Takes the closing text of the help apart again.
void SplitClosingText(std::string_view closing, CommandFacts& facts) {
  const std::size_t heading = closing.find(kExampleHeading);
  if (heading == std::string_view::npos) return;
  facts.remarks = closing.substr(0, heading);
  while (facts.remarks.ends_with('\n')) facts.remarks.pop_back();
  closing.remove_prefix(heading + kExampleHeading.size());
  const std::size_t end = closing.find("\n\n");
  facts.examples = std::string(closing.substr(0, end)) + '\n';
  facts.exitCodes = closing.substr(closing.rfind('\n') + 1);
}

CommandFacts FactsOf(const CLI::App& command, const std::string& parent) {
  CommandFacts facts;
  facts.name = parent.empty() ? command.get_name() : parent + ' ' + command.get_name();
  facts.parent = parent;
  facts.group = command.get_group();
  facts.purpose = command.get_description();
  for (const CLI::Option* const option : command.get_options()) {
    (option->get_positional() ? facts.operands : facts.options).push_back(FactsOf(*option));
  }
  SplitClosingText(command.get_footer(), facts);
  return facts;
}

// NOLINTNEXTLINE(misc-no-recursion): the grammar has three levels
void AddFacts(const CLI::App& command, const std::string& parent, std::vector<CommandFacts>& all) {
  all.push_back(FactsOf(command, parent));
  const std::string name = all.back().name;
  for (const CLI::App* const below : command.get_subcommands({})) AddFacts(*below, name, all);
}

}  // namespace

std::vector<CommandFacts> FactsOfAllCommands() {
  Run run;
  const auto grammar = MakeGrammar(run, "");
  std::vector<CommandFacts> all;
  AddFacts(*grammar, "", all);
  return all;
}

std::vector<const CommandFacts*> CommandsBelow(const std::vector<CommandFacts>& all, const std::string& name) {
  std::vector<const CommandFacts*> below;
  for (const CommandFacts& facts : all) {
    if (facts.parent == name) below.push_back(&facts);
  }
  return below;
}

ValueChoices ChoicesOf(const OptionFacts& option) {
  ValueChoices choices;
  std::string_view rest = option.value;
  while (!rest.empty()) {
    const std::size_t end = std::min(rest.find('|'), rest.size());
    const std::string_view word = rest.substr(0, end);
    rest.remove_prefix(std::min(end + 1, rest.size()));
    const bool isPlaceholder =
        std::any_of(word.begin(), word.end(), [](char unit) { return unit >= 'A' && unit <= 'Z'; });
    if (std::find(std::begin(kPlaceholdersOfFiles), std::end(kPlaceholdersOfFiles), word) !=
        std::end(kPlaceholdersOfFiles)) {
      choices.files = true;
    } else if (word == kPlaceholderOfFolders) {
      choices.folders = true;
    } else if (!isPlaceholder) {
      choices.words.emplace_back(word);
    }
  }
  return choices;
}

}  // namespace ondrel::command
