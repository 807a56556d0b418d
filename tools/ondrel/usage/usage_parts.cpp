// Options and closing lines that several commands share.
#include "usage/usage_parts.h"

namespace ondrel::command {

void SetClosingText(CLI::App& command, std::string_view text, std::string_view examples, std::string_view exitCodes) {
  std::string closing;
  if (!text.empty()) closing.append(text).append("\n\n");
  closing.append(kExampleHeading).append(examples).append("\n").append(exitCodes);
  command.footer(closing);
}

void AddTextReading(CLI::App& command, TextReading& reading) {
  command.add_flag_callback(
      "--raw-text", [&reading] { reading = TextReading::narrow; },
      "Read a project's text as a host's library does, through code page 1252, and not as UTF-8");
}

void AddDefinition(CLI::App& command, std::string& file, TextReading& reading) {
  command.add_option("FILE", file, "A project file or an object image, told by its content (required)")
      ->required()
      ->option_text(" ");
  AddTextReading(command, reading);
}

}  // namespace ondrel::command
