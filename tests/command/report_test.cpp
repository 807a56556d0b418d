// The page that `ondrel report` writes, as a file: its data, its policy, and what it never holds. What a browser makes
// of it is tested by tests/report.
#include <algorithm>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "report_page.h"
#include "strip_images.h"
#include "support/model/hand_bytes.h"
#include "support/model/icon_fixtures.h"

namespace ondrel::test {
namespace {

using nlohmann::json;
using testing::HasSubstr;
using testing::Not;

std::string FromBase64(std::string_view text) {
  constexpr std::string_view kDigits = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
  std::string bytes;
  unsigned bits = 0;
  int count = 0;
  for (const char digit : text.substr(0, text.find('='))) {
    bits = bits << 6 | static_cast<unsigned>(kDigits.find(digit));
    count += 6;
    if (count < 8) continue;
    count -= 8;
    bytes += static_cast<char>(bits >> count & 0xFF);
  }
  return bytes;
}

RgbaPicture PictureAt(const json& address) {
  constexpr std::string_view kPng = "data:image/png;base64,";
  const auto text = address.get<std::string>();
  EXPECT_EQ(text.substr(0, kPng.size()), kPng);
  return DecodePng(FromBase64(std::string_view(text).substr(kPng.size())));
}

const json kRunContents = {{"state", "text"}, {"encoding", "UTF-8"}, {"shownBytes", 6}, {"text", "run()\n"}};
const json kNoContents = {{"state", "text"}, {"encoding", "UTF-8"}, {"shownBytes", 0}, {"text", ""}};

TEST(Report, SaysInOneLineWhatThePageShows) {
  const ProjectFolder folder;
  WriteReported(folder);
  const CommandResult result = RunReport(folder, kProjectName);
  ExpectSuccess(result);
  EXPECT_THAT(result.output, testing::StartsWith("page.html: 4 nodes, 1 dialog, 1 icon, 2 code files, "));
  EXPECT_THAT(result.output, testing::AnyOf(testing::EndsWith(" finding\n"), testing::EndsWith(" findings\n")));
  EXPECT_EQ(std::count(result.output.begin(), result.output.end(), '\n'), 1);
  EXPECT_EQ(folder.Listing(), "a.js\nconsole.xml\nicons\nicons/top.ico\npage.html\n");
}

TEST(Report, NodesAreAFlatListWithTheirParentsAndLines) {
  const ProjectFolder folder;
  WriteReported(folder);
  const json data = ReportedData(folder, kProjectName);
  EXPECT_EQ(data["file"], "console.xml");
  EXPECT_EQ(data["form"], "project");
  ASSERT_EQ(data["nodes"].size(), 4U);
  const json top = {{"cookie", "9007199254740993"},
                    {"name", "T\xC3\xB6p"},
                    {"type", "HTML"},
                    {"icon", "-7"},
                    {"childQueries", {{{"tag", "Disks"}, {"file", "8"}}}},
                    {"renderQueries", json::array()},
                    {"menuScript", "8"},
                    {"scripts", {"8"}},
                    {"styleSheet", "9"},
                    {"parent", -1},
                    {"line", 2}};
  EXPECT_EQ(data["nodes"][0].dump(1), top.dump(1));
  std::vector<std::string> places;
  for (const json& node : data["nodes"]) {
    places.push_back(node["name"].get<std::string>() + ' ' + node["parent"].dump() + ' ' + node["line"].dump());
  }
  EXPECT_THAT(places, testing::ElementsAre("T\xC3\xB6p -1 2", "a 0 6", "aa 1 7", "b 0 8"));
  EXPECT_EQ(data["dialogs"][0]["name"], "Ask");
  EXPECT_EQ(data["dialogs"][0]["line"], 10);
}

TEST(Report, FilesComeWithWhatTheyHold) {
  const ProjectFolder folder;
  WriteReported(folder);
  const json files = ReportedData(folder, kProjectName)["codeFiles"];
  const json expected = {
      {{"cookie", "8"}, {"path", "a.js"}, {"bytes", 6}, {"contents", kRunContents}},
      {{"cookie", "9"},
       {"path", "gone.js"},
       {"bytes", nullptr},
       {"contents", {{"state", "unreadable"}, {"reason", "there is no such file; check its name"}}}}};
  EXPECT_EQ(files.dump(1), expected.dump(1));
}

TEST(Report, OfAnImageHasItsFilesAndNoLines) {
  const ProjectFolder folder;
  WriteReported(folder);
  folder.Write("gone.js", "");
  ExpectSuccess(folder.Compile());
  const json data = ReportedData(folder, kImageName);
  EXPECT_EQ(data["form"], "image");
  EXPECT_EQ(data["nodes"].size(), 4U);
  EXPECT_FALSE(data["nodes"][0].contains("line"));
  EXPECT_EQ(data["icons"][0]["path"], nullptr);
  EXPECT_EQ(data["codeFiles"][0]["path"], nullptr);
  EXPECT_EQ(data["codeFiles"][0]["contents"], kRunContents);
  EXPECT_EQ(data["codeFiles"][1]["contents"], kNoContents);
}

TEST(Report, AnIconIsHeldOnceHoweverManyNodesHaveIt) {
  const ProjectFolder folder;
  std::string nodes;
  for (int cookie = 0; cookie < 50; ++cookie) {
    nodes += "<Node Cookie=\"" + std::to_string(cookie) + "\" Name=\"n\" Icon=\"7\" Type=\"List\"><MenuScript/></Node>";
  }
  // With a second icon, no strip shows what the first one shows alone.
  folder.WriteProject("<Project><NodeGroup>" + nodes +
                      "</NodeGroup><FileGroup><Icon Cookie=\"7\" Name=\"a.ico\"/><Icon Cookie=\"8\" Name=\"b.ico\"/>"
                      "</FileGroup></Project>");
  folder.Write("a.ico", SmallIconFile());
  folder.Write("b.ico", IconFileBytes({SolidPicture(32, 32, 32, 0x00FF00)}));
  const json data = ReportedData(folder, kProjectName);
  EXPECT_EQ(data["nodes"].size(), 50U);
  const std::string page = ReadBytes(folder / kPageName);
  const auto icon = data["icons"][0]["small"]["picture"].get<std::string>();
  std::size_t found = 0;
  for (std::size_t at = page.find(icon); at != std::string::npos; at = page.find(icon, at + 1)) ++found;
  EXPECT_EQ(found, 1U);
}

TEST(Report, PicturesOfIconsAreTheirPixels) {
  const ProjectFolder folder;
  WriteReported(folder);
  const json icon = ReportedData(folder, kProjectName)["icons"][0];
  EXPECT_EQ(icon["path"], "icons\\top.ico");
  EXPECT_TRUE(SamePicture(PictureAt(icon["large"]["picture"]), RgbaPicture(32, 32, {0xFF, 0, 0, 0xFF})));
  EXPECT_TRUE(SamePicture(PictureAt(icon["small"]["picture"]), RgbaPicture(16, 16, {0, 0, 0xFF, 0xFF})));
}

TEST(Report, StripsAreTransparentWhereTheIconsAre) {
  const ProjectFolder folder;
  folder.Write(kImageName, IconImage({TinyIconBytes(), SolidIconBytes(2, 1, 0x00030201)}));
  const json data = ReportedData(folder, kImageName);
  constexpr RgbaPixel kSolid = {1, 2, 3, 0xFF};
  RgbaPicture large(4, 2, kSolid);
  large.At(0, 0) = {3, 2, 1, 0xFF};
  large.At(1, 0) = {};
  large.At(0, 1) = {};
  large.At(1, 1) = {0x0F, 0x0E, 0x0D, 0xFF};
  EXPECT_TRUE(SamePicture(PictureAt(data["strips"]["large"]["picture"]), large));
  RgbaPicture smallIcons(2, 1, kSolid);
  smallIcons.At(0, 0) = {};
  EXPECT_TRUE(SamePicture(PictureAt(data["strips"]["small"]["picture"]), smallIcons));
}

TEST(Report, AnEmptyDefinitionHasEmptyListsAndNoStrips) {
  const ProjectFolder folder;
  folder.WriteProject("<Project/>");
  const CommandResult result = RunReport(folder, kProjectName);
  ExpectSuccess(result);
  EXPECT_EQ(result.output, "page.html: 0 nodes, 0 dialogs, 0 icons, 0 code files, 0 findings\n");
  const json expected = {{"file", "console.xml"},
                         {"form", "project"},
                         {"limits", {{"fileBytes", 262'144}, {"allBytes", 16'777'216}}},
                         {"nodes", json::array()},
                         {"dialogs", json::array()},
                         {"icons", json::array()},
                         {"codeFiles", json::array()},
                         {"remarks", json::array()},
                         {"strips", nullptr}};
  EXPECT_EQ(DataOf(ReadBytes(folder / kPageName)), expected);
}

TEST(Report, RawTextReadsAProjectThroughTheNarrowCodePage) {
  const ProjectFolder folder;
  folder.WriteProject(
      "<Project><NodeGroup><Node Cookie=\"1\" Name=\"\xC3\xB6\" Icon=\"0\" Type=\"List\"><MenuScript/>"
      "</Node></NodeGroup></Project>");
  EXPECT_EQ(ReportedData(folder, kProjectName)["nodes"][0]["name"], "\xC3\xB6");
  ExpectSuccess(folder.Run({"report", "--raw-text", kProjectName, "-o", kPageName}));
  EXPECT_EQ(DataOf(ReadBytes(folder / kPageName))["nodes"][0]["name"], "\xC3\x83\xC2\xB6");
}

TEST(Report, ExplainsItselfAndRefusesWrongUsage) {
  const ProjectFolder folder;
  const CommandResult help = folder.Run({"report", "--help"});
  ExpectSuccess(help);
  for (const char* const part : {"ondrel report", "FILE", "-o", "PAGE", "256 KiB", "Example", "Exit codes"}) {
    EXPECT_THAT(help.output, HasSubstr(part));
  }
  EXPECT_THAT(folder.Run({"--help"}).output, HasSubstr("report"));
  for (const std::vector<std::string>& arguments : {std::vector<std::string>{"report"},
                                                    {"report", "console.xml"},
                                                    {"report", "-o", "page.html"},
                                                    {"report", "a.xml", "b.xml", "-o", "page.html"},
                                                    {"report", "a.xml", "-o"}}) {
    const CommandResult result = folder.Run(arguments);
    EXPECT_EQ(result.exitCode, 2);
    EXPECT_THAT(result.errors, HasSubstr("\nTry 'ondrel report --help'.\n"));
    EXPECT_EQ(folder.Listing(), "");
  }
}

// What the page is as a file

TEST(ReportPage, TheSameDefinitionGivesTheSameBytesInAnyFolder) {
  std::string first;
  for (int round = 0; round < 2; ++round) {
    const ProjectFolder folder;
    WriteReported(folder);
    ExpectSuccess(RunReport(folder, kProjectName));
    const std::string page = ReadBytes(folder / kPageName);
    EXPECT_THAT(page, Not(HasSubstr(Utf8(folder.Path().filename()))));
    if (round == 0) first = page;
    EXPECT_TRUE(page == first);
  }
}

TEST(ReportPage, NothingInTheDefinitionEndsItsData) {
  constexpr std::string_view kHostile = "</script><!-- <script>]]>\xE2\x80\xA8\xE2\x80\xA9";
  const ProjectFolder folder;
  folder.WriteProject(
      R"(<Project><NodeGroup><Node Cookie="1" Name="&lt;/script>&lt;!-- &lt;script>]]&gt;&#x2028;&#x2029;" Icon="0" )"
      R"(Type="List"><MenuScript/></Node></NodeGroup><FileGroup><File Cookie="1" Name="a.js"/></FileGroup></Project>)");
  folder.Write("a.js", kHostile);
  const json data = ReportedData(folder, kProjectName);
  EXPECT_EQ(data["nodes"][0]["name"], kHostile);
  EXPECT_EQ(data["codeFiles"][0]["contents"]["text"], kHostile);

  const std::string page = ReadBytes(folder / kPageName);
  const std::string text = DataText(page);
  EXPECT_EQ(text.find('<'), std::string::npos);
  const auto isPlain = [](char byte) { return byte == '\n' || byte == '\t' || (byte >= 0x20 && byte < 0x7F); };
  EXPECT_TRUE(std::all_of(page.begin(), page.end(), isPlain));
}

TEST(ReportPage, AsksForNothingAndAllowsNothingButItsOwn) {
  const ProjectFolder folder;
  folder.WriteProject("<Project/>");
  ExpectSuccess(RunReport(folder, kProjectName));
  const std::string page = ReadBytes(folder / kPageName);
  EXPECT_THAT(page, HasSubstr("content=\"default-src 'none'; img-src data:; style-src 'sha256-"));
  EXPECT_THAT(page, HasSubstr("'; script-src 'sha256-"));
  EXPECT_THAT(page, HasSubstr("'; base-uri 'none'; form-action 'none'\">"));
  EXPECT_THAT(page, Not(HasSubstr("http://")));
  EXPECT_THAT(page, Not(HasSubstr("https://")));
  EXPECT_THAT(page, Not(HasSubstr("innerHTML")));
  for (const char* const part : {"@STYLE@", "@SCRIPT@", "@STYLE_DIGEST@", "@SCRIPT_DIGEST@", "@DATA@"}) {
    EXPECT_THAT(page, Not(HasSubstr(part)));
  }
}

TEST(ReportPage, OfADeepTreeIsNoDeeper) {
  const ProjectFolder folder;
  folder.WriteProject(ChainProject(kDeepChain));
  ExpectSuccess(RunReport(folder, kProjectName));
  const std::string data = DataText(ReadBytes(folder / kPageName));
  EXPECT_THAT(data, HasSubstr("\"parent\":" + std::to_string(kDeepChain - 2) + ','));
  int depth = 0;
  int deepest = 0;
  for (const char character : data) {  // no name or path of it has such a character
    if (character == '{' || character == '[') deepest = std::max(deepest, ++depth);
    if (character == '}' || character == ']') --depth;
  }
  EXPECT_EQ(depth, 0);
  EXPECT_EQ(deepest, 4);  // the object, its nodes, a node, its scripts
}

// Icons that only claim to be some

/// An icon whose large image claims a size and has four bytes.
std::string IconWithLargeImageOf(std::int64_t width, std::int64_t height, unsigned depth = 32) {
  return BitmapBytes(width, height, width * depth / 8, depth, FromHex("00 00 00 00")) + BitmapBytes(1, 1, 2, 1, "") +
         StoredBitmaps(SolidPicture(1, 1, 32, 0));
}

TEST(ReportIcons, WithoutTheirPixelsHaveNoPicture) {
  const struct {
    std::string icon;
    const char* strips;
  } cases[] = {
      {IconWithLargeImageOf(0, 0), "console.img: a strip of 1 icon of 0 x 0 pixels cannot be made; "},
      {IconWithLargeImageOf(-2, -1), "console.img: a strip of 1 icon of -2 x -1 pixels cannot be made; "},
      {IconWithLargeImageOf(0x7FFFFFFF, 0x7FFFFFFF), "they are too large for a page; "},
      {IconWithLargeImageOf(20'000, 20'000), "they are too large for a page; "},
      {IconWithLargeImageOf(1, 1, 64), "console.img: the system makes no strips of its icons; "},
  };
  for (const auto& [icon, strips] : cases) {
    SCOPED_TRACE(strips);
    const ProjectFolder folder;
    folder.Write(kImageName, IconImage({icon}));
    const json data = ReportedData(folder, kImageName);
    EXPECT_EQ(data["icons"][0]["large"]["picture"], nullptr);
    EXPECT_TRUE(data["icons"][0]["small"]["picture"].is_string());
    EXPECT_THAT(data["strips"].value("reason", ""), testing::StartsWith(strips));
  }
}

TEST(ReportIcons, OfWhichAPartIsMissingHaveNoPicture) {
  const ProjectFolder folder;
  folder.Write(kImageName, IconImage({IconWithLargeImageOf(2, 2)}));
  EXPECT_EQ(ReportedData(folder, kImageName)["icons"][0]["large"]["picture"], nullptr);
}

}  // namespace
}  // namespace ondrel::test
