// A folder with a project and its files, and the command run in it.
#pragma once

#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

#include <nlohmann/json.hpp>

#include "support/run_command.h"
#include "support/sanitizers.h"
#include "support/temporary_folder.h"

namespace ondrel::test {

inline constexpr const char* kProjectName = "console.xml";
inline constexpr const char* kImageName = "console.img";

/// Lines of text; the first is line 1.
std::string Lines(std::initializer_list<std::string_view> lines);

/// An icon file with a red 32 x 32 image of 32 bits and a blue 16 x 16 one of 24 bits.
std::string SmallIconFile();

/// Writes a project whose image is a little larger than its one code file, a.js.
void WriteLargeDefinition(const TemporaryFolder& folder);
inline constexpr std::size_t kLargeCodeFile = 300'000;  // bytes

/// A project of nodes that are each the only child of the one before.
std::string ChainProject(int nodes);
/// An image of such nodes.
std::string ChainImage(int nodes);
/// Deep enough that recursion over the depth would end a program.
inline constexpr int kDeepChain = kSanitized ? 20'000 : 100'000;

/// The folder is the command's working folder.
class ProjectFolder : public TemporaryFolder {
 public:
  CommandLine Command(std::vector<std::string> arguments) const;
  CommandResult Run(std::vector<std::string> arguments) const { return RunCommand(Command(std::move(arguments))); }

  void WriteProject(std::string_view text) const { Write(kProjectName, text); }
  CommandResult Compile() const { return Run({"compile", kProjectName, "-o", kImageName}); }
  CommandResult Show(std::string_view file) const { return Run({"show", std::string(file)}); }
  /// What `show --json` prints. Raises when the command fails or prints no JSON.
  nlohmann::json Json(std::string_view file) const;
};

/// The command is done, without a word on standard error.
void ExpectSuccess(const CommandResult& result);
/// The command failed in time with `exitCode`, printed nothing, and said "ondrel: <start>...<end>" in one line. `start`
/// names the place and what is wrong with it, `end` is the status in its parentheses.
void ExpectFailure(const CommandResult& result, std::string_view start, std::string_view status, int exitCode = 1);

}  // namespace ondrel::test
