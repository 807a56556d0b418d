// The command line's grammar, its help and its complaints.
#include "command_line.h"

#include <algorithm>
#include <string_view>

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

/// RRGGBB, a "#" before it or not, as 0x00BBGGRR.
DWORD ReadColour(std::string_view text) {
  constexpr std::size_t kDigits = 6;
  constexpr std::string_view kHexadecimal = "0123456789abcdefABCDEF";
  std::string_view digits = text;
  if (digits.starts_with('#')) digits.remove_prefix(1);
  if (digits.size() != kDigits || digits.find_first_not_of(kHexadecimal) != std::string_view::npos) {
    throw CLI::ValidationError(
        "--key", Shortened(std::string(text)) + " is no colour; give red, green and blue as six hexadecimal digits");
  }
  const auto value = static_cast<DWORD>(std::stoul(std::string(digits), nullptr, 16));
  return (value & 0xFF) << 16 | (value & 0xFF00) | value >> 16;
}

// Each adds a command to the grammar; `request` is what it will have been asked for.

const CLI::App* AddCompile(CLI::App& app, CompileRequest& request) {
  CLI::App* const command = app.add_subcommand("compile", "Compile a project file into an object image");
  command->add_option("PROJECT", request.project, "The project file, XML (required)")->required()->option_text(" ");
  command->add_option("-o,--output", request.image, "The object image (required); it is replaced whole, or not at all")
      ->required()
      ->option_text("IMAGE");
  command->footer(std::string("The project's icon and code files go into the image as they are. Relative names in "
                              "the project start\nat the project's folder.\n\n"
                              "Example:\n  ondrel compile console.xml -o console.img\n\n") +
                  kExitCodes);
  return command;
}

const CLI::App* AddShow(CLI::App& app, ShowRequest& request) {
  CLI::App* const command = app.add_subcommand("show", "Show what a project file or an object image holds");
  command->add_option("FILE", request.file, "A project file or an object image, told by its content (required)")
      ->required()
      ->option_text(" ");
  command->add_flag("--json", request.json, "Print one JSON object; cookies are strings of decimal digits");
  command->footer(std::string("Example:\n  ondrel show console.xml\n  ondrel show --json console.img\n\n") +
                  kExitCodes);
  return command;
}

const CLI::App* AddIcon(CLI::App& app, IconRequest& request) {
  CLI::App* const command =
      app.add_subcommand("icon", "Show what an icon file, a program or a library gives as an icon");
  command->add_option("FILE", request.file, "An .ico, .exe or .dll file, told by its content (required)")
      ->required()
      ->option_text(" ");
  command->add_option("-o,--output", request.picture, "A PNG picture of the icon; it is replaced whole, or not at all")
      ->option_text("PICTURE");
  command->footer(
      std::string("Of all images of the file's first icon, one becomes the large icon and one the small one; one that\n"
                  "has not the icon's size is scaled. The picture shows, from left to right, the large icon, its\n"
                  "mask, the small icon and its mask; a mask is white where the icon is transparent.\n\n"
                  "Example:\n  ondrel icon disk.ico\n  ondrel icon console.exe -o console.png\n\n") +
      kExitCodes);
  return command;
}

const CLI::App* AddStrips(CLI::App& app, StripsRequest& request) {
  CLI::App* const command = app.add_subcommand("strips", "Write a definition's icons side by side into pictures");
  command->add_option("FILE", request.file, "A project file or an object image, told by its content (required)")
      ->required()
      ->option_text(" ");
  command
      ->add_option_function<std::string>(
          "--key", [&request](const std::string& text) { request.key = ReadColour(text); },
          "The colour of transparent pixels, as FF00FF (required)")
      ->required()
      ->option_text("RRGGBB");
  const CLI::Option* const smallPicture =
      command->add_option("--small", request.pictures.smallIcons, "A PNG picture of the small icons")
          ->option_text("PICTURE");
  const CLI::Option* const largePicture =
      command->add_option("--large", request.pictures.largeIcons, "A PNG picture of the large icons")
          ->option_text("PICTURE");
  command->callback([smallPicture, largePicture] {
    if (smallPicture->empty() && largePicture->empty()) throw CLI::RequiredError("--small or --large");
  });
  command->footer(
      std::string("The icons stand in the order of their cookies. At least one picture is to be named; the pictures\n"
                  "are replaced whole, or not at all.\n\n"
                  "Example:\n  ondrel strips console.img --key FF00FF --small small.png --large large.png\n\n") +
      kExitCodes);
  return command;
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
  ShowRequest show;
  IconRequest icon;
  StripsRequest strips;
  const CLI::App* const compileCommand = AddCompile(app, compile);
  const CLI::App* const showCommand = AddShow(app, show);
  const CLI::App* const iconCommand = AddIcon(app, icon);
  AddStrips(app, strips);

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
  if (showCommand->parsed()) return show;
  if (iconCommand->parsed()) return icon;
  return strips;
}

}  // namespace ondrel::command
