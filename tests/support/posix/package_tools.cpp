// Packages as dpkg knows them.
#include "support/posix/package_tools.h"

#include <sstream>
#include <stdexcept>

#include "support/run_command.h"

namespace ondrel::test {
namespace {

constexpr PackageTool kDpkgQuery{"/usr/bin/dpkg-query", "dpkg"};
constexpr std::chrono::minutes kTimeLimit{1};

[[noreturn]] void ThrowNotInstalled(const std::string& package) {
  throw std::runtime_error("the package " + package + " is not installed: run scripts/install-deps");
}

std::vector<std::string> Lines(const std::string& text) {
  std::vector<std::string> lines;
  std::istringstream stream(text);
  for (std::string line; std::getline(stream, line);) lines.push_back(line);
  return lines;
}

}  // namespace

std::string RunTool(const PackageTool& tool, std::vector<std::string> arguments, const std::filesystem::path& folder,
                    OnFailure onFailure) {
  if (!std::filesystem::exists(tool.program)) ThrowNotInstalled(tool.package);
  const CommandResult result =
      RunCommand({.program = tool.program,
                  .arguments = std::move(arguments),
                  .environment = {{"MAGICK_THREAD_LIMIT", "1"}},  // icons are too small for more
                  .workingFolder = folder,
                  .timeLimit = kTimeLimit});
  if (!result.exitCode || (result.exitCode != 0 && onFailure == OnFailure::raise)) {
    throw std::runtime_error(std::string(tool.program) + " failed: " + result.errors);
  }
  return result.output;
}

std::vector<std::filesystem::path> PackageFiles(const std::string& package) {
  std::vector<std::filesystem::path> files;
  const std::string known = RunTool(
      kDpkgQuery, {"--show", "--showformat=${db:Status-Status} ${binary:Package}\n", package}, "/", OnFailure::ignore);
  for (const std::string& line : Lines(known)) {
    constexpr std::string_view kInstalled = "installed ";
    if (!line.starts_with(kInstalled)) continue;
    for (const std::string& path : Lines(RunTool(kDpkgQuery, {"--listfiles", line.substr(kInstalled.size())}, "/"))) {
      if (std::filesystem::is_regular_file(std::filesystem::symlink_status(path))) files.emplace_back(path);
    }
  }
  if (files.empty()) ThrowNotInstalled(package);
  return files;
}

}  // namespace ondrel::test
