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

TEST(BadCodeFile, OfSeveralTheFirstOfTheProjectIsNamed) {
  const ProjectFolder folder;
  folder.WriteProject(Lines({R"(<Project><FileGroup>)", R"(<File Cookie="3" Name="z.js"/>)",
                             R"(<File Cookie="2" Name="a.js"/>)", R"(</FileGroup></Project>)"}));
  ExpectFailure(folder.Compile(), "console.xml:2: code file 3, \"z.js\": there is no such file; ", "0x80070002");
  EXPECT_EQ(folder.Listing(), "console.xml\n");
}

TEST(BadCodeFile, ComesBeforeWhatElseAnImageCannotHold) {
  constexpr std::string_view kNode = R"( Name="a" Icon="0" Type="List"><MenuScript/></Node>)";
  const ProjectFolder folder;
  folder.WriteProject(Lines({R"(<Project><NodeGroup><Node Cookie="1")" + std::string(kNode),
                             R"(<Node Cookie="2")" + std::string(kNode) + "</NodeGroup><FileGroup>",
                             R"(<File Cookie="3" Name="gone.js"/></FileGroup></Project>)"}));
  ExpectFailure(folder.Compile(), "console.xml:3: code file 3, \"gone.js\": there is no such file; ", "0x80070002");
  folder.Write("gone.js", "");
  ExpectFailure(folder.Compile(), "console.xml:2: node 2 is a second top-level node", "archive cause 7");
}

}  // namespace
}  // namespace ondrel::test
