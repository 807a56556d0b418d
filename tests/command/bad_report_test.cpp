// Definitions that `ondrel report` writes no page of, and places that it writes none to.
#include <filesystem>

#include <gtest/gtest.h>

#include "bad_file.h"
#include "bad_project.h"
#include "report_page.h"

namespace ondrel::test {
namespace {

/// The command refuses a definition, and an old page stays.
void ExpectReportRefused(const ProjectFolder& folder, const std::string& file, const std::string& start,
                         const std::string& status) {
  folder.Write(kPageName, "old page");
  const std::string listing = folder.Listing();
  ExpectFailure(RunReport(folder, file), start, status);
  EXPECT_EQ(folder.Listing(), listing);
  EXPECT_EQ(ReadBytes(folder / kPageName), "old page");
}

TEST(BadReport, OfAFileThatIsNoDefinition) {
  ExpectReportRefused(ProjectFolder(), "gone.xml", "gone.xml: there is no such file; ", "0x80070002");
  ExpectReportRefused(ProjectFolder(), "gone/console.xml", "gone/console.xml: its folder is not there; ", "0x80070003");
  ExpectReportRefused(ProjectFolder(), "", "the name is empty; ", "0x80070003");
  ExpectReportRefused(ProjectFolder(), ".", ".: it is a folder; ", "0x80070005");
  const ProjectFolder folder;
  folder.Write("empty", "");
  ExpectReportRefused(folder, "empty", "empty: the file is empty; ", "0x8007000D");
  folder.Write("disk.ico", SmallIconFile());
  ExpectReportRefused(folder, "disk.ico", "disk.ico: it is neither a project file nor an object image",
                      "archive cause 7");
}

TEST(BadReport, OfAProjectThatDoesNotLoad) {
  const struct {
    std::string text;
    const char* complaint;
    const char* status;
  } cases[] = {
      {"<Project>\n<NodeGroup>\n</Project>\n", "3: the XML cannot be read: ", "0x8007000D"},
      {"<Nodes/>", "1: the root element is \"Nodes\"", "0x8007000D"},
      {Nodes({R"(<Node Name="b" Icon="0" Type="List"><MenuScript/></Node>)"}), "3: a node has no Cookie attribute; ",
       "0x8007000D"},
      {Nodes({R"(<Node Cookie="1" Name="b" Icon="0" Type="List"><MenuScript/><Scripts><Script/></Scripts></Node>)"}),
       "3: a Script of node 1 has no File attribute, and reading it would never end; ", "0x8007000D"},
      {Files({R"(<Icon Cookie="1" Name="gone.ico"/>)"}),
       "3: icon file 1, \"gone.ico\": there is no such file; check its name", "0x80070002"},
      {Files({R"(<Icon Cookie="1" Name="cut.ico"/>)"}), "3: icon file 1, \"cut.ico\": its icon is damaged; ",
       "0x8007000D"},
      {Files({R"(<File Cookie="1" Name="a"/>)", R"(<File Cookie="1" Name="b"/>)"}),
       "4: code file 1 has the cookie of the code file in line 3; ", "0x800700B7"},
  };
  for (const auto& [text, complaint, status] : cases) {
    SCOPED_TRACE(complaint);
    const BadProjectFolder folder(text);
    ExpectReportRefused(folder, kProjectName, "console.xml:" + std::string(complaint), status);
  }
}

TEST(BadReport, OfAnExternalEntity) {
  const ProjectFolder folder;
  folder.WriteProject(ExternalEntityProject(folder.Write("secret.txt", "the secret text")));
  ExpectReportRefused(folder, kProjectName, "console.xml:", "0x8007000D");
}

TEST(BadReport, OfAnImageThatIsCut) {
  const ProjectFolder folder;
  WriteReported(folder);
  folder.Write("gone.js", "");
  ExpectSuccess(folder.Compile());
  const std::string image = ReadBytes(folder / kImageName);
  for (const std::size_t size : {std::size_t{20}, image.size() / 2, image.size() - 1}) {
    folder.Write("cut.img", image.substr(0, size));
    ExpectReportRefused(folder, "cut.img", "cut.img: it ends early, after ", "archive cause 3");
  }
}

TEST(BadReport, OverTheDefinitionOrOneOfItsFiles) {
  const ProjectFolder folder;
  WriteReported(folder);
  folder.Write("gone.js", "");
  ExpectSuccess(folder.Compile());
  std::filesystem::create_hard_link(folder / kProjectName, folder / "other.html");
  const struct {
    const char* file;
    const char* place;
    const char* what;
  } cases[] = {
      {kProjectName, "console.xml", "the project"}, {kProjectName, "icons/../console.xml", "the project"},
      {kProjectName, "other.html", "the project"},  {kProjectName, "icons/top.ico", "icon file \"icons\\top.ico\""},
      {kProjectName, "a.js", "code file \"a.js\""}, {kImageName, "console.img", "the object image"}};
  const std::string listing = folder.Listing();
  for (const auto& [file, place, what] : cases) {
    const std::string before = ReadBytes(folder / place);
    ExpectFailure(folder.Run({"report", file, "-o", place}),
                  std::string(place) + ": the report would overwrite " + what + "; give it another name", "0x80070057");
    EXPECT_EQ(ReadBytes(folder / place), before);
    EXPECT_EQ(folder.Listing(), listing);
  }
}

TEST(BadReport, OverAFolderOrInNone) {
  const ProjectFolder folder;
  WriteReported(folder);
  const std::string listing = folder.Listing();
  const auto expectRefused = [&](const char* place, const char* start, const char* status) {
    ExpectFailure(folder.Run({"report", kProjectName, "-o", place}), start, status);
    EXPECT_EQ(folder.Listing(), listing);
  };
  expectRefused("icons", "icons: it is a folder; ", "0x80070005");
  expectRefused("gone/page.html", "gone/page.html: its folder is not there; ", "0x80070003");
  expectRefused("", "the name is empty; ", "0x80070003");
}

}  // namespace
}  // namespace ondrel::test
