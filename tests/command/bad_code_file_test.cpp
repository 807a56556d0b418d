// Code files that cannot go into an image.
#include <filesystem>

#include <gtest/gtest.h>

#include "bad_code_file.h"
#include "project_folder.h"

namespace ondrel::test {
namespace {

TEST(BadCodeFile, Missing) {
  ExpectCodeFileRefused(ProjectFolder(), R"(Name="gone.js")", "\"gone.js\": there is no such file; ", "0x80070002");
}

TEST(BadCodeFile, InAMissingFolder) {
  ExpectCodeFileRefused(ProjectFolder(), R"(Name="gone\b.js")", "\"gone\\b.js\": its folder is not there; ",
                        "0x80070003");
}

TEST(BadCodeFile, AFolder) {
  const ProjectFolder folder;
  std::filesystem::create_directory(folder / "sub");
  ExpectCodeFileRefused(folder, R"(Name="sub")", "\"sub\": it is a folder; ", "0x80070005");
}

TEST(BadCodeFile, TheProjectsOwnFolder) {
  ExpectCodeFileRefused(ProjectFolder(), R"(Name="")", "\"\": it is a folder; ", "0x80070005");
}

TEST(BadCodeFile, TooLargeForAnImage) {
  const ProjectFolder folder;
  folder.Write("large.js", "");
  std::filesystem::resize_file(folder / "large.js", std::uintmax_t{1} << 32);  // a hole: it takes no room
  ExpectCodeFileRefused(folder, R"(Name="large.js")", "\"large.js\": it has 4 GiB or more; ", "0x80070057");
}

}  // namespace
}  // namespace ondrel::test
