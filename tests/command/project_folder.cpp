// What tests of the command expect of every run.
#include "project_folder.h"

#include <algorithm>
#include <chrono>
#include <stdexcept>

#include <gmock/gmock.h>

#include "support/icon_bytes.h"
#include "support/model/hand_bytes.h"
#include "support/sanitizers.h"

namespace ondrel::test {
namespace {

// Bad input must be refused within a second. The sanitizers slow the program down and take their time at its end.
constexpr std::chrono::milliseconds kLongestRefusal{kSlowed ? 5'000 : 1'000};

}  // namespace

std::string Lines(std::initializer_list<std::string_view> lines) {
  std::string text;
  for (const std::string_view line : lines) text.append(line).append("\n");
  return text;
}

std::string SmallIconFile() {
  return IconFileBytes({SolidPicture(32, 32, 32, 0xFF0000), SolidPicture(16, 16, 24, 0x0000FF)});
}

void WriteLargeDefinition(const TemporaryFolder& folder) {
  folder.Write(kProjectName, R"(<Project><FileGroup><File Cookie="1" Name="a.js"/></FileGroup></Project>)");
  folder.Write("a.js", std::string(kLargeCodeFile, 'x'));
}

std::string ChainProject(int nodes) {
  std::string text = "<Project><NodeGroup>";
  for (int level = 0; level < nodes; ++level) {
    text += "<Node Cookie=\"" + std::to_string(level) + "\" Name=\"n\" Icon=\"0\" Type=\"List\"><MenuScript/><Nodes>";
  }
  for (int level = 0; level < nodes; ++level) text += "</Nodes></Node>";
  return text + "</NodeGroup></Project>";
}

std::string ChainImage(int nodes) {
  std::string image = Long(1) + Long(1) + Count(1);  // versions of the set and of its records, top-level nodes
  for (int level = 0; level < nodes; ++level) {
    image += Cookie(level) + ShortText("n") + Cookie(0) + Long(0) + Count(0) + Cookie(0) + Count(0);
    image += Count(level + 1 < nodes ? 1 : 0);
  }
  return image + Count(0) + Count(0) + Count(0) + Count(0);  // dialogs, icon files, code files from disk and memory
}

CommandLine ProjectFolder::Command(std::vector<std::string> arguments) const {
  CommandLine commandLine;
  commandLine.program = ONDREL_COMMAND;
  commandLine.arguments = std::move(arguments);
  commandLine.workingFolder = Path();
  return commandLine;
}

nlohmann::json ProjectFolder::Json(std::string_view file) const {
  const CommandResult result = Run({"show", "--json", std::string(file)});
  if (result.exitCode != 0) throw std::runtime_error("show --json failed: " + result.errors);
  return nlohmann::json::parse(result.output);
}

void ExpectSuccess(const CommandResult& result) {
  EXPECT_EQ(result.exitCode, 0);
  EXPECT_EQ(result.errors, "");
}

void ExpectFailure(const CommandResult& result, std::string_view start, std::string_view status, int exitCode) {
  EXPECT_EQ(result.exitCode, exitCode) << (result.timedOut ? "stopped: it took too long" : result.errors);
  EXPECT_EQ(result.output, "");
  EXPECT_THAT(result.errors, testing::StartsWith("ondrel: " + std::string(start)));
  EXPECT_THAT(result.errors, testing::EndsWith(" (" + std::string(status) + ")\n"));
  EXPECT_EQ(std::count(result.errors.begin(), result.errors.end(), '\n'), 1) << result.errors;
  EXPECT_LE(result.duration.count(), kLongestRefusal.count()) << "milliseconds";
}

}  // namespace ondrel::test
