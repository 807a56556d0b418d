// What the descriptions of several commands have in common.
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "definition_file.h"
#include "usage/usage.h"

namespace ondrel::command {

/// The exit codes of most commands, as the last line of their help.
inline constexpr const char* kExitCodes = "Exit codes: 0 done, 1 failed, 2 wrong usage.";

/// Stands before the examples in the closing text.
inline constexpr std::string_view kExampleHeading = "Example:\n";

/// The text behind the options: what else there is to know, examples ("ondrel ..." lines, each with its line feed), and
/// the exit codes.
void SetClosingText(CLI::App& command, std::string_view text, std::string_view examples,
                    std::string_view exitCodes = kExitCodes);

/// A definition to read, in either form: the operand FILE and the option --raw-text.
void AddDefinition(CLI::App& command, std::string& file, TextReading& reading);
/// The option --raw-text alone.
void AddTextReading(CLI::App& command, TextReading& reading);

/// Has `run` carry out `work` on the request that the options fill, when the command has been parsed.
template <class Request>
void RunWith(CLI::App& command, Run& run, const std::shared_ptr<Request>& request, int (*work)(const Request&)) {
  command.final_callback([&run, request, work] { run = [request, work] { return work(*request); }; });
}

}  // namespace ondrel::command
