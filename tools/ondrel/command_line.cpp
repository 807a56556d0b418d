// The command line's grammar, its help and its complaints.
#include "command_line.h"

#include <algorithm>

#include <CLI/CLI.hpp>

#include "failure.h"
#include "printable.h"

namespace ondrel::command {
namespace {

constexpr const char* kExitCodes = "Exit codes: 0 done, 1 failed, 2 wrong usage.";

Answer WrongUsage(const CLI::App& app, const CLI::ParseError& error) {
  std::string command = "ondrel";
  for (const CLI::App* chosen : app.get_subcommands()) command += ' ' + chosen->get_name();
  return {kWrongUsage, "ondrel: " + PrintablePath(error.what()) + "\nTry '" + command + " --help'.\n"};
}

}  // namespace

Request ParseCommandLine(std::vector<std::string> arguments) {
  CLI::App app("Compiles the definitions of console snap-ins, and shows what they hold.", "ondrel");
  app.set_version_flag("--version", "ondrel " ONDREL_VERSION, "Print the version and exit");
  app.allow_windows_style_options(false);  // "/tmp/console.img" is a path everywhere
  app.require_subcommand(1);
  app.footer(std::string("Example:\n  ondrel compile console.xml -o console.img\n  ondrel show console.img\n\n"
                         "Each command explains itself with --help.\n") +
             kExitCodes);

  CompileRequest compile;
  CLI::App* const compileCommand = app.add_subcommand("compile", "Compile a project file into an object image");
  compileCommand->add_option("PROJECT", compile.project, "The project file, XML (required)")
      ->required()
      ->option_text(" ");
  compileCommand
      ->add_option("-o,--output", compile.image, "The object image (required); it is replaced whole, or not at all")
      ->required()
      ->option_text("IMAGE");
  compileCommand->footer(
      std::string("The project's icon and code files go into the image as they are. Relative names in "
                  "the project start\nat the project's folder.\n\n"
                  "Example:\n  ondrel compile console.xml -o console.img\n\n") +
      kExitCodes);

  ShowRequest show;
  CLI::App* const showCommand = app.add_subcommand("show", "Show what a project file or an object image holds");
  showCommand->add_option("FILE", show.file, "A project file or an object image, told by its content (required)")
      ->required()
      ->option_text(" ");
  showCommand->add_flag("--json", show.json, "Print one JSON object; cookies are strings of decimal digits");
  showCommand->footer(std::string("Example:\n  ondrel show console.xml\n  ondrel show --json console.img\n\n") +
                      kExitCodes);

  try {
    std::reverse(arguments.begin(), arguments.end());  // the order that the parser takes a list in
    app.parse(std::move(arguments));
  } catch (const CLI::CallForHelp&) {
    const auto chosen = app.get_subcommands();
    return Answer{kDone, chosen.empty() ? app.help() : chosen.front()->help("ondrel")};
  } catch (const CLI::CallForVersion& version) {
    return Answer{kDone, std::string(version.what()) + '\n'};
  } catch (const CLI::ParseError& error) {
    return WrongUsage(app, error);
  }
  if (compileCommand->parsed()) return compile;
  return show;
}

}  // namespace ondrel::command
