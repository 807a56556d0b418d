// The command line's grammar, its help and its complaints.
#include "command_line.h"

#include <algorithm>
#include <cstdio>
#include <numeric>
#include <string_view>

#include "failure.h"
#include "output.h"
#include "printable.h"
#include "usage/grammar.h"
#include "usage/usage_parts.h"

namespace ondrel::command {
namespace {

Run Answer(std::string text) {
  return [text = std::move(text)] {
    WriteOutput(text);
    return kDone;
  };
}

Run WrongUsage(const CLI::App& app, const CLI::ParseError& error) {
  std::string command = "ondrel";
  for (auto chosen = app.get_subcommands(); !chosen.empty(); chosen = chosen.front()->get_subcommands()) {
    command += ' ' + chosen.front()->get_name();
  }
  return [text = "ondrel: " + PrintablePath(error.what()) + "\nTry '" + command + " --help'.\n"] {
    std::fputs(text.c_str(), stderr);
    return kWrongUsage;
  };
}

/// How many characters have to be put in, taken out or replaced to make one word of another.
std::size_t Distance(std::string_view word, std::string_view other) {
  std::vector<std::size_t> row(other.size() + 1);
  std::iota(row.begin(), row.end(), std::size_t{0});
  for (std::size_t line = 1; line <= word.size(); ++line) {
    std::size_t diagonal = row.front();
    row.front() = line;
    for (std::size_t column = 1; column <= other.size(); ++column) {
      const std::size_t replaced = diagonal + (word[line - 1] == other[column - 1] ? 0 : 1);
      diagonal = row[column];
      row[column] = std::min({replaced, row[column] + 1, row[column - 1] + 1});
    }
  }
  return row.back();
}

bool IsCommand(const CLI::App& app, const std::string& argument) {
  const auto commands = app.get_subcommands({});
  return std::any_of(commands.begin(), commands.end(),
                     [&](const CLI::App* command) { return command->get_name() == argument; });
}

/// The complaint about a first argument that is no command, with the command that is spelled nearly like it.
Run UnknownCommand(const CLI::App& app, const std::string& argument) {
  constexpr std::size_t kLongestTypo = 2;
  constexpr std::size_t kLongestWord = 24;  // longer ones are no misspelt command
  std::string text = "ondrel: there is no command " + PrintablePath(Shortened(argument));
  std::size_t nearest = kLongestTypo + 1;
  std::string likely;
  for (const CLI::App* const command : app.get_subcommands({})) {
    if (argument.size() > kLongestWord) break;
    const std::size_t distance = Distance(argument, command->get_name());
    if (distance >= std::min(nearest, argument.size())) continue;
    nearest = distance;
    likely = command->get_name();
  }
  if (!likely.empty()) text += "; did you mean '" + likely + "'?";
  return [text = text + "\nTry 'ondrel --help'.\n"] {
    std::fputs(text.c_str(), stderr);
    return kWrongUsage;
  };
}

}  // namespace

Run ParseCommandLine(std::vector<std::string> arguments) {
  Run run;
  const auto app = MakeGrammar(run, arguments.empty() ? std::string() : arguments.front());
  if (!arguments.empty() && !arguments.front().starts_with('-') && !IsCommand(*app, arguments.front())) {
    return UnknownCommand(*app, arguments.front());
  }
  try {
    std::reverse(arguments.begin(), arguments.end());  // the order that the parser takes a list in
    app->parse(std::move(arguments));
  } catch (const CLI::CallForHelp&) {
    return Answer(app->help());
  } catch (const CLI::CallForVersion& version) {
    return Answer(std::string(version.what()) + '\n');
  } catch (const CLI::ParseError& error) {
    return WrongUsage(*app, error);
  }
  return run;
}

}  // namespace ondrel::command
