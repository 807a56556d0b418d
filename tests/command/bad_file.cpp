#include "bad_file.h"

#include <algorithm>

#include <gtest/gtest.h>

namespace ondrel::test {
namespace {

/// A file's address as XML takes it.
std::string Address(const std::filesystem::path& file) {
  std::string path = Utf8(file);
  std::replace(path.begin(), path.end(), '\\', '/');
  return (path.starts_with('/') ? "file://" : "file:///") + path;
}

}  // namespace

void ExpectAllFail(const ProjectFolder& folder, const std::string& file, std::string_view start,
                   std::string_view status) {
  constexpr int kDiffFailed = 2;  // as of other programs of its kind
  const std::string listing = folder.Listing();
  const std::vector<std::vector<std::string>> commands = {
      {"compile", file, "-o", kImageName},
      {"show", file},
      {"show", "--json", file},
      {"strips", file, "--key", "FF00FF", "--small", "small.png", "--large", "large.png"},
      {"report", file, "-o", "page.html"},
      {"diff", file, file},
      {"add", "node", file, "x"},
      {"add", "dialog", file, "x"},
      {"add", "icon", file, "x.ico"},
      {"add", "code", file, "x.js"},
      {"set", file, "1", "--name", "x"},
      {"move-down", file, "1"},
      {"remove", file, "1", "--recursive"},
  };
  for (const std::vector<std::string>& command : commands) {
    SCOPED_TRACE(command.front() + ' ' + command[1]);
    ExpectFailure(folder.Run(command), start, status, command.front() == "diff" ? kDiffFailed : 1);
  }
  EXPECT_EQ(folder.Listing(), listing);
}

std::string ExternalEntityProject(const std::filesystem::path& file) {
  return "<!DOCTYPE Project [<!ENTITY e SYSTEM \"" + Address(file) +
         "\">]>\n<Project><NodeGroup><Node Cookie=\"1\" Name=\"a\" Icon=\"0\" Type=\"List\">&e;<MenuScript/>"
         "</Node></NodeGroup></Project>";
}

std::string ExternalSubsetProject(const std::filesystem::path& file) {
  return "<!DOCTYPE Project SYSTEM \"" + Address(file) + "\">\n<Project/>";
}

}  // namespace ondrel::test
