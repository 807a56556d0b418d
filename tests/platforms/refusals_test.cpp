// Projects that are refused: by both builds, with the same status or with those that the documentation gives, and with
// the same words of the command.
#include <gtest/gtest.h>

#include <map>
#include <sstream>

#include "platforms/malformed_projects.h"
#include "platforms/two_platforms.h"

namespace ondrel::test {
namespace {

constexpr const char* kProject = "console.xml";

/// What each build gives.
struct Outcomes {
  std::string native;
  std::string windows;
  bool operator==(const Outcomes&) const = default;
};

void PrintTo(const Outcomes& outcomes, std::ostream* out) {
  *out << "Linux: " << outcomes.native << ", Windows: " << outcomes.windows;
}

// The table under the heading "Statuses that differ": | project | Linux | Windows |
std::map<std::string, Outcomes> DocumentedDifferences() {
  std::istringstream page(ReadBytes(std::filesystem::path(ONDREL_SOURCE_DIR) / "docs/platforms.md"));
  std::map<std::string, Outcomes> table;
  bool inSection = false;
  for (std::string line; std::getline(page, line);) {
    if (line.starts_with("#")) inSection = line.find("Statuses that differ") != std::string::npos;
    if (!inSection || !line.starts_with("| ") || line.starts_with("| project")) continue;
    std::vector<std::string> cells;
    std::istringstream row(line.substr(1));
    for (std::string cell; std::getline(row, cell, '|');) {
      const std::size_t first = cell.find_first_not_of(' ');
      cells.push_back(first == std::string::npos ? "" : cell.substr(first, cell.find_last_not_of(' ') - first + 1));
    }
    if (cells.size() >= 3) table[cells[0]] = {cells[1], cells[2]};
  }
  return table;
}

std::string Outcome(const Platform& platform, const TemporaryFolder& folder) {
  const CommandResult result = platform.Run("project_probe", {"status", kProject}, folder.Path());
  EXPECT_EQ(result.exitCode, 0) << platform.Name() << ": " << Told(result);
  const std::string outcome = result.output.substr(0, result.output.find('\n'));
  return outcome.starts_with("status ") ? outcome.substr(7) : outcome;
}

TEST(Refusals, HaveTheSameStatusesOrThoseThatAreDocumented) {
  const std::map<std::string, Outcomes> documented = DocumentedDifferences();
  std::map<std::string, Outcomes> different;
  const TemporaryFolder folder;
  for (const MalformedProject& project : MalformedProjects()) {
    folder.Write(kProject, project.text);
    const Outcomes outcomes{Outcome(Platforms()[0], folder), Outcome(Platforms()[1], folder)};
    EXPECT_NE(outcomes.native, "done") << project.name;
    if (outcomes.native != outcomes.windows) different.emplace(project.name, outcomes);
  }
  EXPECT_EQ(different, documented);
}

TEST(Refusals, AreExplainedInTheSameWords) {
  const TemporaryFolder folder;
  for (const MalformedProject& project : MalformedProjects()) {
    folder.Write(kProject, project.text);
    const std::vector<std::string> arguments = {"compile", kProject, "-o", "console.img"};
    const CommandResult native = Platforms()[0].Run("ondrel", arguments, folder.Path());
    const CommandResult windows = Platforms()[1].Run("ondrel", arguments, folder.Path());
    EXPECT_EQ(native.exitCode, 1) << project.name;
    EXPECT_EQ(Told(windows), Told(native)) << project.name;
  }
}

TEST(Refusals, OfCommandLinesAndFilesAreTheSame) {
  const TemporaryFolder folder;
  folder.Write("console.xml", "<Project/>");
  folder.Write("noise.img", std::string(100, '\7'));
  folder.Write("empty.img", "");
  const std::vector<std::vector<std::string>> commandLines = {
      {},
      {"--help"},
      {"--version"},
      {"compile", "--help"},
      {"show", "--help"},
      {"icon", "--help"},
      {"strips", "--help"},
      {"icon"},
      {"strips", "console.xml", "--key", "FF00F", "--small", "a.png"},
      {"strips", "console.xml", "--key", "FF00FF"},
      {"strips", "console.xml", "--key", "FF00FF", "--small", "a.png"},
      {"paint"},
      {"show"},
      {"show", "--colour", "console.xml"},
      {"show", "/etc"},
      {"show", "missing.img"},
      {"show", "missing\\console.xml"},
      {"show", "noise.img"},
      {"show", "empty.img"},
      {"show", "."},
      {"show", ""},
      {"compile", "console.xml"},
      {"compile", "noise.img", "-o", "a.img"},
      {"compile", "console.xml", "-o", "console.xml"},
      {"compile", "console.xml", "-o", "missing/a.img"},
      {"compile", "console.xml", "-o", "."},
      {"compile", "console.xml", "-o", "\xC3\xA4\xE2\x82\xAC\xF0\x9F\x98\x80.img"},
      {"show", "\xC3\xA4\xE2\x82\xAC\xF0\x9F\x98\x80.img"},
  };
  for (const std::vector<std::string>& arguments : commandLines) {
    std::string line = "ondrel";
    for (const std::string& argument : arguments) line += " '" + argument + "'";
    const CommandResult native = Platforms()[0].Run("ondrel", arguments, folder.Path());
    const CommandResult windows = Platforms()[1].Run("ondrel", arguments, folder.Path());
    EXPECT_EQ(Told(windows), Told(native)) << line;
  }
}

}  // namespace
}  // namespace ondrel::test
