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

void ExpectBothFail(const ProjectFolder& folder, const std::string& file, const std::string& start,
                    const std::string& status) {
  const std::string listing = folder.Listing();
  ExpectFailure(folder.Run({"compile", file, "-o", kImageName}), start, status);
  ExpectFailure(folder.Show(file), start, status);
  ExpectFailure(folder.Run({"show", "--json", file}), start, status);
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
