// What the page of `ondrel report` shows of code files.
#include <algorithm>

#include <gtest/gtest.h>

#include "report_page.h"

namespace ondrel::test {
namespace {

using nlohmann::json;

/// What the page shows of the one code file of a project, a.js, that holds these bytes.
json ShownContents(std::string_view bytes) {
  const ProjectFolder folder;
  folder.WriteProject(R"(<Project><FileGroup><File Cookie="1" Name="a.js"/></FileGroup></Project>)");
  folder.Write("a.js", bytes);
  return ReportedData(folder, kProjectName)["codeFiles"][0]["contents"];
}

json TextContents(std::string_view text, std::string_view encoding, std::size_t bytes) {
  return {{"state", "text"}, {"encoding", encoding}, {"shownBytes", bytes}, {"text", text}};
}

TEST(ReportContents, AreReadAsTheTextThatTheyAre) {
  EXPECT_EQ(ShownContents(""), TextContents("", "UTF-8", 0));
  EXPECT_EQ(ShownContents("a\tb\r\nc\f"), TextContents("a\tb\r\nc\f", "UTF-8", 7));
  EXPECT_EQ(ShownContents("caf\xC3\xA9 \xF0\x9F\x92\xBE"), TextContents("caf\xC3\xA9 \xF0\x9F\x92\xBE", "UTF-8", 10));
  EXPECT_EQ(ShownContents("\xEF\xBB\xBFmarked"), TextContents("marked", "UTF-8", 9));
  EXPECT_EQ(ShownContents("caf\xE9 \x80"), TextContents("caf\xC3\xA9 \xE2\x82\xAC", "code page 1252", 6));
  EXPECT_EQ(ShownContents("\xC3"), TextContents("\xC3\x83", "code page 1252", 1));
  EXPECT_EQ(ShownContents(std::string_view("\xFF\xFE"
                                           "a\0\xAC\x20",
                                           6)),
            TextContents("a\xE2\x82\xAC", "UTF-16", 6));
  EXPECT_EQ(ShownContents(std::string_view("\xFE\xFF\0a\x20\xAC", 6)), TextContents("a\xE2\x82\xAC", "UTF-16", 6));
}

TEST(ReportContents, BytesThatAreNoTextAreNotShown) {
  const json binary = {{"state", "binary"}};
  EXPECT_EQ(ShownContents(std::string_view("a\0b", 3)), binary);
  EXPECT_EQ(ShownContents("\x1B[31m"), binary);
  EXPECT_EQ(ShownContents("a\x7F"), binary);
  EXPECT_EQ(ShownContents(SmallIconFile()), binary);
}

TEST(ReportContents, OfALongFileAreCutBehindAWholeCharacter) {
  const std::string rest(1'000, 'x');
  const std::string fitting(262'144, 'a');
  EXPECT_EQ(ShownContents(fitting), TextContents(fitting, "UTF-8", 262'144));
  EXPECT_EQ(ShownContents(fitting + rest), TextContents(fitting, "UTF-8", 262'144));
  const std::string odd(262'143, 'a');
  EXPECT_EQ(ShownContents(odd + "\xC3\xA9" + rest), TextContents(odd, "UTF-8", 262'143));
  EXPECT_EQ(ShownContents("\xE9" + odd + rest), TextContents("\xC3\xA9" + odd, "code page 1252", 262'144));
}

TEST(ReportContents, OfAllFilesHaveALimitToo) {
  const ProjectFolder folder;
  std::string text = "<Project><FileGroup>";
  for (int cookie = 100; cookie < 167; ++cookie) {
    const std::string name = "f" + std::to_string(cookie) + ".js";
    text += "<File Cookie=\"" + std::to_string(cookie) + "\" Name=\"" + name + "\"/>";
    folder.Write(name, std::string(cookie < 163 ? 262'144 : 200'000, 'a'));
  }
  folder.Write("f166.js", "");
  folder.WriteProject(text + "</FileGroup></Project>");
  ExpectSuccess(RunReport(folder, kProjectName));
  std::string data = DataText(ReadBytes(folder / kPageName));
  const auto isRun = [](char left, char right) { return left == 'a' && right == 'a'; };
  data.erase(std::unique(data.begin(), data.end(), isRun), data.end());  // 16 MiB would take seconds to parse
  const json files = json::parse(data)["codeFiles"];
  // 63 files of 256 KiB leave 256 KiB: the next one fits, of the one behind it a part, and nothing of the third.
  EXPECT_EQ(files[62]["contents"], TextContents("a", "UTF-8", 262'144));
  EXPECT_EQ(files[63]["contents"], TextContents("a", "UTF-8", 200'000));
  EXPECT_EQ(files[64]["contents"], TextContents("a", "UTF-8", 62'144));
  EXPECT_EQ(files[65]["contents"], json({{"state", "leftOut"}}));
  EXPECT_EQ(files[66]["contents"], TextContents("", "UTF-8", 0)) << "an empty file takes no room";
}

}  // namespace
}  // namespace ondrel::test
