// How `ondrel show` is called.
#include "show.h"
#include "usage/usage_parts.h"

namespace ondrel::command {
namespace {

ColourChoice ReadColourChoice(const std::string& text) {
  if (text == "auto") return ColourChoice::automatic;
  if (text == "always") return ColourChoice::always;
  if (text == "never") return ColourChoice::never;
  throw CLI::ValidationError("--color", "give auto, always or never");
}

}  // namespace

void DescribeShow(CLI::App& command, Run& run) {
  const auto request = std::make_shared<ShowRequest>();
  AddDefinition(command, request->file, request->reading);
  command.add_flag("--json", request->json, "Print one JSON object; cookies are strings of decimal digits");
  CLI::Option* const node =
      command.add_option("--node", request->node, "Show this node, those below it, and the files that they use");
  node->option_text("NODE");
  command.add_option("--record", request->record, "Show this node or dialog alone, with all its fields")
      ->option_text("NODE")
      ->excludes(node);
  command
      .add_option_function<std::string>(
          "--color", [request](const std::string& text) { request->colours = ReadColourChoice(text); },
          "Whether to use colours; auto is for terminals, and unless NO_COLOR is set")
      ->option_text("auto|always|never");
  SetClosingText(command, "NODE is a cookie, or the names from the top-level node down with \"/\" between them.",
                 "  ondrel show console.xml\n  ondrel show --json console.img\n"
                 "  ondrel show console.xml --node \"Disk Console/Volumes\"\n"
                 "  ondrel show console.img --record 5\n");
  RunWith(command, run, request, Show);
}

}  // namespace ondrel::command
