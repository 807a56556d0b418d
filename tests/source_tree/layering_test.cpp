// The rule that keeps one source tree fit for every system: what lies above the platform layer neither tests for a
// platform nor includes a header of one.

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <regex>
#include <string>
#include <vector>

namespace {

namespace fs = std::filesystem;

const fs::path kRoot = ONDREL_SOURCE_DIR;

std::vector<fs::path> SourcesAbovePlatform() {
  std::vector<fs::path> sources;
  for (const char* const layer : {"include", "src", "tools"}) {
    for (const auto& entry : fs::recursive_directory_iterator(kRoot / layer)) {
      const std::string ending = entry.path().extension().string();
      if (ending == ".h" || ending == ".cpp") sources.push_back(entry.path());
    }
  }
  return sources;
}

/// The lines of a file that match, as "file:line: text".
std::vector<std::string> MatchingLines(const fs::path& path, const std::regex& pattern, const std::regex& allowed) {
  std::vector<std::string> found;
  std::ifstream file(path);
  std::string line;
  for (int number = 1; std::getline(file, line); ++number) {
    if (std::regex_search(line, pattern) && !std::regex_search(line, allowed)) {
      found.push_back(path.lexically_relative(kRoot).string() + ":" + std::to_string(number) + ": " + line);
    }
  }
  return found;
}

std::vector<std::string> MatchingLines(const std::regex& pattern, const std::regex& allowed) {
  std::vector<std::string> found;
  for (const fs::path& path : SourcesAbovePlatform()) {
    for (std::string& line : MatchingLines(path, pattern, allowed)) found.push_back(std::move(line));
  }
  return found;
}

TEST(Layering, SourcesAreFound) { EXPECT_GT(SourcesAbovePlatform().size(), 20U); }

TEST(Layering, NothingAboveThePlatformLayerTestsForAPlatform) {
  const std::regex condition("^\\s*#\\s*(if|ifdef|ifndef|elif)\\b");
  const std::regex libraryOwnBuild("ONDREL_BUILDING_ONDREL$");
  EXPECT_EQ(MatchingLines(condition, libraryOwnBuild), std::vector<std::string>());
}

TEST(Layering, NothingAboveThePlatformLayerIncludesASystemHeader) {
  // The standard library's headers have neither an ending nor a folder.
  const std::regex include("^\\s*#\\s*include\\s*<");
  const std::regex allowed("<(ondrel/(?!platform/os/).+|CLI/.+|nlohmann/.+|[a-z_]+)>");
  EXPECT_EQ(MatchingLines(include, allowed), std::vector<std::string>());
}

TEST(Layering, TheModelIncludesNoLibraryButThePlatformLayer) {
  const std::regex library("<(CLI|nlohmann)/");
  for (const fs::path& path : SourcesAbovePlatform()) {
    if (path.lexically_relative(kRoot).begin()->string() == "tools") continue;
    EXPECT_EQ(MatchingLines(path, library, std::regex("$^")), std::vector<std::string>());
  }
}

}  // namespace
