// What `ondrel compile` writes and says.
#include <filesystem>
#include <fstream>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "project_folder.h"
#include "support/archive_bytes.h"
#include "support/icon_bytes.h"
#include "support/model/hand_bytes.h"

namespace ondrel::test {
namespace {

using testing::HasSubstr;

/// A node with a child, a dialog, an icon, and two code files in a folder.
const std::string kProject = Lines({
    R"(<?xml version="1.0" encoding="utf-8" standalone="yes"?>)",
    R"(<Project>)",
    R"( <NodeGroup>)",
    R"(  <Node Cookie="0" Name="Top" Icon="7" Type="List">)",
    R"(   <ChildQueries><Query Tag="t" File="9"/></ChildQueries><MenuScript File="8"/><Scripts/>)",
    R"(   <Nodes><Node Cookie="2" Name="Low" Icon="0" Type="html">)",
    R"(    <MenuScript/><Scripts><Script File="8"/></Scripts><StyleSheet File="9"/>)",
    R"(    <RenderQueries><Query Tag="r" File="8"/></RenderQueries></Node></Nodes>)",
    R"(  </Node>)",
    R"( </NodeGroup>)",
    R"( <DialogGroup><Dialog Cookie="3" Name="Ask" Icon="0" Type="Dialog"><MenuScript/><StyleSheet/></Dialog></DialogGroup>)",
    R"( <FileGroup>)",
    R"(  <Icon Cookie="7" Name="top.ico"/>)",
    R"(  <File Cookie="9" Name="sub\b.xsl"/>)",
    R"(  <File Cookie="8" Name="sub\a.js"/>)",
    R"( </FileGroup>)",
    R"(</Project>)",
});

void WriteSmallDefinition(const ProjectFolder& folder) {
  folder.WriteProject(kProject);
  folder.Write("top.ico", SmallIconFile());
  folder.Write("sub/a.js", "run()");
  folder.Write("sub/b.xsl", "");
}

/// Pixels of 4 bytes each.
std::string Pixels(int count, std::string_view pixel) {
  std::string bytes;
  for (int index = 0; index < count; ++index) bytes += pixel;
  return bytes;
}

constexpr std::string_view kRed("\x00\x00\xFF\xFF", 4);          // blue, green, red, alpha
constexpr std::string_view kWidenedBlue("\xFF\x00\x00\x00", 4);  // 24 bits are widened to 32, with alpha 0

/// The image of that definition, field by field.
std::string ExpectedImage(std::string_view smallPixel = kWidenedBlue) {
  std::string bytes = Long(1) + Long(1);  // versions of the set and of its records
  bytes += Count(1);                      // top-level nodes
  bytes += Cookie(0) + ShortText("Top") + Cookie(7) + Long(0);
  bytes += Count(1) + ShortText("t") + Cookie(9);  // child queries
  bytes += Cookie(8) + Count(0);                   // menu script, scripts
  bytes += Count(1);                               // children
  bytes += Cookie(2) + ShortText("Low") + Cookie(0) + Long(1) + Count(0) + Cookie(0);
  bytes += Count(1) + Cookie(8);                               // scripts
  bytes += Cookie(9) + Count(1) + ShortText("r") + Cookie(8);  // style sheet, render queries
  bytes += Count(0);
  bytes += Count(1);  // dialogs
  bytes += Cookie(3) + ShortText("Ask") + Cookie(0) + Long(2) + Count(0) + Cookie(0) + Count(0) + Cookie(0) + Count(0);
  bytes += Count(1);  // icon files
  bytes += Cookie(7);
  bytes += BitmapBytes(32, 32, 128, 32, Pixels(32 * 32, kRed)) + BitmapBytes(32, 32, 4, 1, std::string(4 * 32, '\0'));
  bytes +=
      BitmapBytes(16, 16, 64, 32, Pixels(16 * 16, smallPixel)) + BitmapBytes(16, 16, 2, 1, std::string(2 * 16, '\0'));
  bytes += Count(2);  // code files from disk, in the order of their paths
  bytes += Cookie(8) + ByteVector("run()");
  bytes += Cookie(9) + ByteVector("");
  bytes += Count(0);  // code files from memory
  return bytes;
}

TEST(Compile, WritesTheImageByteForByteAndSaysWhatIsInIt) {
  const ProjectFolder folder;
  WriteSmallDefinition(folder);
  folder.Write("top.ico", IconFileBytes({SolidPicture(32, 32, 32, 0xFF0000), SolidPicture(16, 16, 32, 0xFF0000)}));
  const CommandResult result = folder.Compile();
  ExpectSuccess(result);
  const std::string expected = ExpectedImage(kRed);
  EXPECT_EQ(Hex(ReadBytes(folder / kImageName)), Hex(expected));
  EXPECT_EQ(result.output,
            "console.img: 2 nodes, 1 dialog, 1 icon, 2 code files, " + std::to_string(expected.size()) + " bytes\n");
  EXPECT_EQ(folder.Listing(), "console.img\nconsole.xml\nsub\nsub/a.js\nsub/b.xsl\ntop.ico\n");
}

TEST(Compile, WritesTheSmallImageOfAnIconFileToo) {
  const ProjectFolder folder;
  WriteSmallDefinition(folder);
  ExpectSuccess(folder.Compile());
  EXPECT_EQ(Hex(ReadBytes(folder / kImageName)), Hex(ExpectedImage()));
}

TEST(Compile, WritesTheSameBytesFromAnyWorkingFolder) {
  const ProjectFolder folder;
  WriteSmallDefinition(folder);
  ExpectSuccess(folder.Compile());
  CommandLine elsewhere = folder.Command({"compile", "../console.xml", "-o", "other.img"});
  elsewhere.workingFolder = folder / "sub";
  ExpectSuccess(RunCommand(elsewhere));
  EXPECT_EQ(ReadBytes(folder / "sub/other.img"), ReadBytes(folder / kImageName));
  const CommandLine absolute =
      folder.Command({"compile", Utf8(folder / kProjectName), "-o", Utf8(folder / "absolute.img")});
  ExpectSuccess(RunCommand(absolute));
  EXPECT_EQ(ReadBytes(folder / "absolute.img"), ReadBytes(folder / kImageName));
}

TEST(Compile, ReplacesAnOldImage) {
  const ProjectFolder folder;
  WriteSmallDefinition(folder);
  folder.Write(kImageName, std::string(1'000'000, 'x'));
  ExpectSuccess(folder.Compile());
  EXPECT_EQ(ReadBytes(folder / kImageName).size(), ExpectedImage().size());
}

TEST(Compile, AnEmptyProjectGivesAnImageOfEmptySections) {
  const ProjectFolder folder;
  folder.WriteProject("<Project/>");
  const CommandResult result = folder.Compile();
  ExpectSuccess(result);
  EXPECT_EQ(result.output, "console.img: 0 nodes, 0 dialogs, 0 icons, 0 code files, 48 bytes\n");
  EXPECT_EQ(Hex(ReadBytes(folder / kImageName)),
            Hex(Long(1) + Long(1) + Count(0) + Count(0) + Count(0) + Count(0) + Count(0)));
}

TEST(Compile, NamesWithBackslashesAndSlashesFindTheSameFolders) {
  const ProjectFolder folder;
  folder.WriteProject(R"(<Project><FileGroup><File Cookie="1" Name="sub\deep/a.js"/></FileGroup></Project>)");
  folder.Write("sub/deep/a.js", "x");
  ExpectSuccess(folder.Compile());
}

TEST(Compile, AnAbsolutePathIsTakenAsItIs) {
  const ProjectFolder folder;
  const ProjectFolder other;
  const std::string path = Utf8(other.Write("a.js", "other"));
  folder.WriteProject("<Project><FileGroup><File Cookie=\"1\" Path=\"" + path + "\"/></FileGroup></Project>");
  ExpectSuccess(folder.Compile());
  EXPECT_THAT(ReadBytes(folder / kImageName), HasSubstr("other"));
}

class ImageOverItsSource : public testing::TestWithParam<const char*> {};

TEST_P(ImageOverItsSource, IsRefused) {
  const ProjectFolder folder;
  WriteSmallDefinition(folder);
  const std::string name = GetParam();
  const std::string listing = folder.Listing();
  const std::string bytes = ReadBytes(folder / name);
  ExpectFailure(folder.Run({"compile", kProjectName, "-o", name}), name + ": the image would overwrite", "0x80070057");
  EXPECT_EQ(folder.Listing(), listing);
  EXPECT_EQ(ReadBytes(folder / name), bytes);
}

TEST(Compile, ASecondNameOfTheProjectIsTheProject) {
  const ProjectFolder folder;
  WriteSmallDefinition(folder);
  std::filesystem::create_hard_link(folder / kProjectName, folder / "other.img");
  ExpectFailure(folder.Run({"compile", kProjectName, "-o", "other.img"}),
                "other.img: the image would overwrite the project", "0x80070057");
  EXPECT_EQ(ReadBytes(folder / kProjectName), kProject);
}

INSTANTIATE_TEST_SUITE_P(Compile, ImageOverItsSource,
                         testing::Values("console.xml", "./console.xml", "top.ico", "sub/a.js", "sub/../sub/b.xsl"));

TEST(Compile, ASecondTopLevelNodeIsRefusedWithItsLine) {
  const ProjectFolder folder;
  folder.WriteProject(
      Lines({R"(<Project><NodeGroup>)", R"(<Node Cookie="1" Name="a" Icon="0" Type="List"><MenuScript/></Node>)",
             R"(<Node Cookie="2" Name="b" Icon="0" Type="List"><MenuScript/></Node>)", R"(</NodeGroup></Project>)"}));
  folder.Write(kImageName, "old");
  ExpectFailure(folder.Compile(), "console.xml:3: node 2 is a second top-level node", "archive cause 7");
  EXPECT_EQ(ReadBytes(folder / kImageName), "old");
  EXPECT_EQ(folder.Listing(), "console.img\nconsole.xml\n");
}

TEST(Compile, ATreeOfAnyDepthCompiles) {
  const ProjectFolder folder;
  folder.WriteProject(ChainProject(kDeepChain));
  const CommandResult result = folder.Compile();
  ExpectSuccess(result);
  EXPECT_THAT(result.output, HasSubstr(": " + std::to_string(kDeepChain) + " nodes, "));
}

}  // namespace
}  // namespace ondrel::test
