// What `ondrel extract` writes of an image that `ondrel compile` made, and that it compiles to the same bytes again.
#include <filesystem>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "icon_views.h"
#include "project_folder.h"

namespace ondrel::test {
namespace {

using testing::HasSubstr;
using testing::Not;

constexpr const char* kExtractedProject = "out/project.xml";

CommandResult ExtractImage(const ProjectFolder& folder) { return folder.Run({"extract", kImageName, "-d", "out"}); }

/// Takes a project of the folder to an image, that to another project, and that to an image again.
void ExpectTheSameImageAgain(const ProjectFolder& folder, const std::string& project = kProjectName) {
  ExpectSuccess(folder.Run({"compile", project, "-o", kImageName}));
  const CommandResult extracted = ExtractImage(folder);
  ExpectSuccess(extracted);
  EXPECT_THAT(extracted.output, testing::EndsWith("; project.xml compiles to the same image\n"));
  ExpectSuccess(folder.Run({"compile", kExtractedProject, "-o", "again.img"}));
  EXPECT_TRUE(ReadBytes(folder / kImageName) == ReadBytes(folder / "again.img"));
}

const std::string kExtractedDefinition = Lines({
    R"(<Project><NodeGroup>)",
    R"(<Node Cookie="1" Name="Top" Icon="7" Type="HTML"><ChildQueries><Query Tag="Disks" File="13"/></ChildQueries>)",
    R"(<MenuScript File="11"/><Scripts><Script File="-5"/><Script File="0"/><Script File="11"/></Scripts>)",
    R"(<StyleSheet File="12"/><RenderQueries><Query Tag="Sum" File="13"/></RenderQueries>)",
    R"(</Node></NodeGroup><DialogGroup>)",
    R"(<Dialog Cookie="3" Name="Ask" Icon="0" Type="Dialog"><MenuScript/><StyleSheet/></Dialog></DialogGroup>)",
    R"(<FileGroup><Icon Cookie="7" Name="top.ico"/><File Cookie="11" Name="e.js"/><File Cookie="12" Name="d.xsl"/>)",
    R"(<File Cookie="13" Name="c.wql"/><File Cookie="14" Name="b.dat"/><File Cookie="-5" Name="a.js"/>)",
    R"(</FileGroup></Project>)",
});

void WriteExtractedDefinition(const ProjectFolder& folder) {
  folder.WriteProject(kExtractedDefinition);
  folder.Write("top.ico", SmallIconFile());
  folder.Write("a.js", "first");
  folder.Write("b.dat", std::string("\0\r\n\xFF", 4));
  folder.Write("c.wql", "select");
  folder.Write("d.xsl", "");
  folder.Write("e.js", "first");
}

TEST(Extract, NamesFilesByUseAndCookieInTheOrderOfTheImage) {
  const ProjectFolder folder;
  WriteExtractedDefinition(folder);
  ExpectSuccess(folder.Compile());
  const CommandResult result = ExtractImage(folder);
  ExpectSuccess(result);
  EXPECT_EQ(result.output, "out: 1 node, 1 dialog, 1 icon, 5 code files; project.xml compiles to the same image\n");
  EXPECT_EQ(folder.Listing(),
            "a.js\nb.dat\nc.wql\nconsole.img\nconsole.xml\nd.xsl\ne.js\nout\nout/code\n"
            "out/code/0001-script--5.js\nout/code/0002-file-14.txt\nout/code/0003-query-13.xml\n"
            "out/code/0004-style-12.xsl\nout/code/0005-script-11.js\n"
            "out/icons\nout/icons/icon-7.ico\nout/icons/icon-7.png\nout/project.xml\ntop.ico\n");
  EXPECT_EQ(ReadBytes(folder / "out/code/0001-script--5.js"), "first");
  EXPECT_EQ(ReadBytes(folder / "out/code/0002-file-14.txt"), std::string("\0\r\n\xFF", 4));
  EXPECT_EQ(ReadBytes(folder / "out/code/0003-query-13.xml"), "select");
  EXPECT_EQ(ReadBytes(folder / "out/code/0004-style-12.xsl"), "");
  EXPECT_EQ(ReadBytes(folder / "out/code/0005-script-11.js"), "first");
}

TEST(Extract, ADefinitionWithEverythingCompilesToTheSameImageAgain) {
  const ProjectFolder folder;
  WriteExtractedDefinition(folder);
  ExpectTheSameImageAgain(folder);
}

TEST(Extract, TheExampleCompilesToTheSameImageAgain) {
  const std::filesystem::path example =
      std::filesystem::path(ONDREL_SOURCE_DIR) / "examples" / "disk-console" / "disk-console.xml";
  ExpectTheSameImageAgain(ProjectFolder(), Utf8(example));
}

TEST(Extract, AnEmptyDefinitionIsAProjectAlone) {
  const ProjectFolder folder;
  folder.WriteProject("<Project/>");
  ExpectTheSameImageAgain(folder);
  EXPECT_EQ(folder.Listing(), "again.img\nconsole.img\nconsole.xml\nout\nout/project.xml\n");
}

TEST(Extract, ManyCodeFilesStayInTheirOrder) {
  constexpr int kFiles = 2'000;
  const ProjectFolder folder;
  std::string text = "<Project><FileGroup>";
  for (int file = 0; file < kFiles; ++file) {
    const std::string name = std::to_string(file) + ".js";
    text += "<File Cookie=\"" + std::to_string(kFiles - file) + "\" Name=\"" + name + "\"/>";
    folder.Write(name, std::to_string(file));
  }
  folder.WriteProject(text + "</FileGroup></Project>");
  ExpectTheSameImageAgain(folder);
  // The order of the paths is another one than that of the cookies and of the numbers in the names.
  EXPECT_EQ(ReadBytes(folder / "out/code/0001-file-2000.txt"), "0");
  EXPECT_EQ(ReadBytes(folder / "out/code/0002-file-1999.txt"), "1");
  EXPECT_EQ(ReadBytes(folder / "out/code/0003-file-1990.txt"), "10");
  EXPECT_EQ(ReadBytes(folder / "out/code/2000-file-1001.txt"), "999");
}

TEST(Extract, NamesOfNodesNeverBecomePaths) {
  const ProjectFolder folder;
  folder.WriteProject(
      Lines({R"(<Project><NodeGroup><Node Cookie="1" Name="..\..\x" Icon="0" Type="List"><MenuScript File="4"/>)",
             R"(<Nodes><Node Cookie="2" Name="/etc/y" Icon="0" Type="List"><MenuScript/></Node>)",
             R"(<Node Cookie="3" Name="a&#9;b&#10;c&#13;&#x9B;31m" Icon="0" Type="List"><MenuScript/></Node></Nodes>)",
             R"(</Node></NodeGroup><DialogGroup>)",
             R"(<Dialog Cookie="5" Name="C:\z" Icon="0" Type="Dialog"><MenuScript/><StyleSheet/></Dialog>)",
             R"(</DialogGroup><FileGroup><File Cookie="4" Name="up\..\a.js"/></FileGroup></Project>)"}));
  folder.Write("a.js", "code");
  folder.Write("up/kept", "");
  ExpectTheSameImageAgain(folder);
  EXPECT_EQ(folder.Listing(),
            "a.js\nagain.img\nconsole.img\nconsole.xml\nout\nout/code\nout/code/0001-script-4.js\nout/project.xml\n"
            "up\nup/kept\n");
}

TEST(Extract, TextBeyondAsciiIsWrittenAsReferences) {
  const ProjectFolder folder;
  folder.WriteProject(
      "<Project><NodeGroup><Node Cookie=\"1\" Name=\"T\xC3\xB6p &#x1F4BE;\" Icon=\"0\" Type=\"HTML\">"
      "<MenuScript/><StyleSheet/><RenderQueries><Query Tag=\"\xE2\x82\xAC\" File=\"0\"/></RenderQueries>"
      "</Node></NodeGroup></Project>");
  ExpectTheSameImageAgain(folder);
  const std::string text = ReadBytes(folder / kExtractedProject);
  EXPECT_TRUE(std::all_of(text.begin(), text.end(), [](char byte) { return (byte & 0x80) == 0; }));
  EXPECT_THAT(text, HasSubstr("Name=\"T&#246;p &#128190;\""));
  EXPECT_THAT(text, HasSubstr("Tag=\"&#8364;\""));
}

TEST(Extract, AScriptWithoutAFileIsWrittenSoThatItLoads) {
  const ProjectFolder folder;
  WriteExtractedDefinition(folder);
  ExpectSuccess(folder.Compile());
  ExpectSuccess(ExtractImage(folder));
  const std::string text = ReadBytes(folder / kExtractedProject);
  EXPECT_THAT(text, HasSubstr("<Script File=\"0\"/>"));
  EXPECT_THAT(text, Not(HasSubstr("<Script/>")));
}

TEST(Extract, AnEmptyFolderIsTaken) {
  const ProjectFolder folder;
  WriteExtractedDefinition(folder);
  ExpectSuccess(folder.Compile());
  std::filesystem::create_directory(folder / "out");
  const CommandResult result = folder.Run({"extract", kImageName, "--directory", "./out/"});
  ExpectSuccess(result);
  EXPECT_THAT(result.output, testing::StartsWith("./out/: 1 node, "));
  EXPECT_TRUE(std::filesystem::exists(folder / kExtractedProject));
}

// Icons

struct ExtractedIcon {
  const char* name;
  int largeBits;
  int smallBits;
  const char* depths;  ///< Of the images that the extracted file has.
};

std::ostream& operator<<(std::ostream& out, const ExtractedIcon& icon) { return out << icon.name; }

class ExtractedIcons : public testing::TestWithParam<ExtractedIcon> {};

TEST_P(ExtractedIcons, CompileToTheSameImageAgain) {
  const auto& [name, largeBits, smallBits, depths] = GetParam();
  const ProjectFolder folder;
  folder.WriteProject(R"(<Project><FileGroup><Icon Cookie="7" Name="a.ico"/></FileGroup></Project>)");
  folder.Write("a.ico",
               IconFileBytes({PatternPicture(kLargeSize, kLargeSize, largeBits), PatternPicture(16, 16, smallBits)}));
  ExpectTheSameImageAgain(folder);
  EXPECT_THAT(folder.Run({"icon", "out/icons/icon-7.ico"}).output, HasSubstr(depths));
}

constexpr const char* kBothPlain =
    "\n     1  32 x 32  24 bit\n     2  16 x 16  24 bit\n\n"
    "Icon   Size     Made from\nlarge  32 x 32  image 1, exact\nsmall  16 x 16  image 2, exact\n";

INSTANTIATE_TEST_SUITE_P(Extract, ExtractedIcons,
                         testing::Values(ExtractedIcon{"Bits1", 1, 1, kBothPlain},
                                         ExtractedIcon{"Bits4", 4, 4, kBothPlain},
                                         ExtractedIcon{"Bits8", 8, 8, kBothPlain},
                                         ExtractedIcon{"Bits16", 16, 16, kBothPlain},
                                         ExtractedIcon{"Bits24", 24, 24, kBothPlain},
                                         ExtractedIcon{"Bits32", 32, 32, "\n     1  32 x 32  32 bit\n"}),
                         [](const auto& info) { return std::string(info.param.name); });

TEST(ExtractedIconFile, KeepsImagesOfTwoDepths) {
  const ProjectFolder folder;
  folder.WriteProject(R"(<Project><FileGroup><Icon Cookie="7" Name="a.ico"/></FileGroup></Project>)");
  folder.Write("a.ico", IconFileBytes({PatternPicture(32, 32, 32), PatternPicture(16, 16, 8)}));
  ExpectTheSameImageAgain(folder);
  EXPECT_THAT(folder.Run({"icon", "out/icons/icon-7.ico"}).output,
              HasSubstr("\n     1  32 x 32  32 bit\n     2  16 x 16  24 bit\n"));
}

TEST(ExtractedIconFile, AScaledImageIsKeptAsItWasScaled) {
  const ProjectFolder folder;
  folder.WriteProject(R"(<Project><FileGroup><Icon Cookie="7" Name="a.ico"/></FileGroup></Project>)");
  folder.Write("a.ico", IconFileBytes({PatternPicture(48, 40, 32)}));
  ExpectTheSameImageAgain(folder);
}

TEST(ExtractedIconFile, WithoutAMaskIsOpaque) {
  IconPicture large = PatternPicture(32, 32, 24);
  IconPicture smallPicture = PatternPicture(16, 16, 24);
  large.transparent.clear();
  smallPicture.transparent.clear();
  const ProjectFolder folder;
  folder.WriteProject(R"(<Project><FileGroup><Icon Cookie="7" Name="a.ico"/></FileGroup></Project>)");
  folder.Write("a.ico", IconFileBytes({large, smallPicture}));
  ExpectTheSameImageAgain(folder);
}

TEST(ExtractedIconFile, IsPicturedInTheColoursOfTheLargeImage) {
  IconPicture large = SolidPicture(32, 32, 24, 0x336699);
  large.transparent[large.Index(3, 2)] = true;
  const ProjectFolder folder;
  folder.WriteProject(R"(<Project><FileGroup><Icon Cookie="7" Name="a.ico"/></FileGroup></Project>)");
  folder.Write("a.ico", IconFileBytes({large}));
  ExpectSuccess(folder.Compile());
  ExpectSuccess(ExtractImage(folder));
  RgbaPicture expected(32, 32, {0x33, 0x66, 0x99, 0xFF});
  expected.At(3, 2)[3] = 0;
  const RgbaPicture picture = DecodePng(ReadBytes(folder / "out/icons/icon-7.png"));
  EXPECT_EQ(picture.At(3, 2)[3], 0);
  RgbaPicture shown = picture;
  shown.At(3, 2) = expected.At(3, 2);  // systems differ in the colour of what is not seen
  EXPECT_TRUE(SamePicture(shown, expected));
}

}  // namespace
}  // namespace ondrel::test
