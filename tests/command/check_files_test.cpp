// What `ondrel check` finds in icon files, code files and the project's own bytes.
#include <cstdint>
#include <filesystem>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "checked_project.h"
#include "strip_images.h"
#include "support/icon_bytes.h"
#include "support/model/hand_bytes.h"

namespace ondrel::test {
namespace {

constexpr std::string_view kGoodIcon = R"(<Icon Cookie="2" Name="a.ico"/>)";
constexpr std::string_view kGoodCode = R"(<File Cookie="3" Name="a.js"/>)";
constexpr std::string_view kOtherCode = R"(<File Cookie="4" Name="b.js"/>)";

/// A project whose dialog refers to the files 2 (an icon), 3 and 4 (code); they stand in the lines 4 to 6.
std::vector<std::string_view> WithFiles(std::string_view icon, std::string_view code, std::string_view otherCode) {
  return {R"(<Project><DialogGroup><Dialog Cookie="1" Name="d" Icon="2" Type="HTML"><MenuScript File="3"/>)",
          R"(<StyleSheet File="4"/></Dialog></DialogGroup>)",
          "<FileGroup>",
          icon,
          code,
          otherCode,
          "</FileGroup></Project>"};
}

const RemarkCase kFileRemarks[] = {
    {"MissingCodeFile", WithFiles(kGoodIcon, R"(<File Cookie="3" Name="gone.js"/>)", kOtherCode),
     "5: error: code file 3, \"gone.js\": there is no such file; check its name [file-missing]"},
    {"MissingFolder", WithFiles(kGoodIcon, R"(<File Cookie="3" Name="gone\a.js"/>)", kOtherCode),
     "5: error: code file 3, \"gone\\a.js\": its folder is not there; check the name or make the folder "
     "[file-missing]"},
    {"CodeFileThatIsAFolder", WithFiles(kGoodIcon, R"(<File Cookie="3" Name="."/>)", kOtherCode),
     "5: error: code file 3, \".\": it is a folder; name a file [file-unreadable]"},
    {"MissingIcon", WithFiles(R"(<Icon Cookie="2" Name="gone.ico"/>)", kGoodCode, kOtherCode),
     "4: error: icon file 2, \"gone.ico\": there is no such file; check its name [file-missing]"},
    {"IconThatIsNone", WithFiles(R"(<Icon Cookie="2" Name="console.xml"/>)", kGoodCode, kOtherCode),
     "4: error: icon file 2, \"console.xml\": it holds no icon; name an icon file, or a program or library that has "
     "one "
     "[icon-missing]"},
    {"SharedCookie",
     WithFiles(kGoodIcon, kGoodCode, R"(<File Cookie="4" Name="b.js"/><File Cookie="2" Name=".\a.js"/>)"),
     "6: error: code file 2, \".\\a.js\": its cookie is also that of the icon file in line 4, and no image is made of "
     "that; give it another [cookie-shared]"},
};

class FileRemark : public testing::TestWithParam<RemarkCase> {};
TEST_P(FileRemark, IsTold) { ExpectRemarkAlone(GetParam()); }
INSTANTIATE_TEST_SUITE_P(Check, FileRemark, testing::ValuesIn(kFileRemarks),
                         [](const auto& info) { return info.param.name; });

TEST(CheckFiles, ADamagedIconIsTold) {
  const CheckedProject folder(
      {R"(<Project><DialogGroup>)",
       R"(<Dialog Cookie="1" Name="d" Icon="2" Type="HTML"><MenuScript/><StyleSheet/></Dialog>)",
       R"(</DialogGroup><FileGroup><Icon Cookie="2" Name="cut.ico"/></FileGroup></Project>)"});
  folder.Write("cut.ico", SmallIconFile().substr(0, 200));
  folder.ExpectRemarks({"3: error: icon file 2, \"cut.ico\": its icon is damaged; make the file anew [icon-damaged]"},
                       "1 error, 0 warnings", 1);
}

TEST(CheckFiles, ACodeFileThatNoImageHoldsIsTold) {
  const CheckedProject folder(
      {R"(<Project><DialogGroup>)",
       R"(<Dialog Cookie="1" Name="d" Icon="0" Type="HTML"><MenuScript File="3"/><StyleSheet/></Dialog>)",
       R"(</DialogGroup><FileGroup><File Cookie="3" Name="a.js"/></FileGroup></Project>)"});
  std::filesystem::resize_file(folder / "a.js", std::uintmax_t{4} << 30);  // bytes, of which the disk has none
  folder.ExpectRemarks(
      {"3: error: code file 3, \"a.js\": it has 4 GiB or more; an image holds smaller files only [file-too-large]"},
      "1 error, 0 warnings", 1);
}

TEST(CheckFiles, APathThatLeavesTheProjectsFolderIsTold) {
  const ProjectFolder folder;
  for (const char* const name : {"inner/x/inside", "beside.js", "inner/a.js"}) folder.Write(name, "");
  folder.Write(
      "inner/console.xml",
      Lines({R"(<Project><DialogGroup>)",
             R"(<Dialog Cookie="1" Name="d" Icon="0" Type="HTML"><MenuScript File="3"/><StyleSheet File="4"/>)",
             R"(</Dialog></DialogGroup><FileGroup><File Cookie="3" Name="x/..\a.js"/>)",
             R"(<File Cookie="4" Name="x/.././../beside.js"/></FileGroup></Project>)"}));
  const CommandResult result = folder.Run({"check", "inner/console.xml"});
  ExpectSuccess(result);
  EXPECT_EQ(result.output, Lines({"inner/console.xml:4: warning: code file 4, \"x/.././../beside.js\": its path leaves "
                                  "the project's folder; put it below that folder [path-outside]",
                                  "0 errors, 1 warning"}));
}

TEST(CheckFiles, APathOfOneMachineIsTold) {
  const ProjectFolder folder;
  const std::string path = Utf8(folder.Write("a.js", ""));
  folder.WriteProject(Lines({R"(<Project><DialogGroup>)",
                             R"(<Dialog Cookie="1" Name="d" Icon="0" Type="HTML"><MenuScript File="3"/><StyleSheet/>)",
                             R"(</Dialog></DialogGroup><FileGroup>)",
                             "<File Cookie=\"3\" Path=\"" + path + "\"/></FileGroup></Project>"}));
  const CommandResult result = folder.Run({"check", kProjectName});
  ExpectSuccess(result);
  EXPECT_THAT(result.output, testing::StartsWith("console.xml:4: warning: code file 3, \""));
  EXPECT_THAT(result.output, testing::EndsWith("\": its path is that of one machine; put it below the project's folder "
                                               "and name it by a Name from there [path-absolute]\n"
                                               "0 errors, 1 warning\n"));
}

TEST(CheckFiles, APathThatStartsAtTheWorkingFolderIsTold) {
  const auto lines = WithFiles(kGoodIcon, R"(<File Cookie="3" Path="a.js"/>)", kOtherCode);
  ExpectRemarkAlone(
      {"", lines,
       "5: warning: code file 3, \"a.js\": its Path starts at whatever folder a program runs in; write it "
       "as Name [path-relative]"});
}

TEST(CheckFiles, IconsThatDoNotFitTheStripsAreTold) {
  const ProjectFolder folder;
  const std::string good = StoredBitmaps(SolidPicture(4, 2, 32, 0)) + StoredBitmaps(SolidPicture(2, 1, 32, 0));
  const std::string wide = StoredBitmaps(SolidPicture(5, 2, 32, 0)) + StoredBitmaps(SolidPicture(2, 1, 32, 0));
  const std::string high = StoredBitmaps(SolidPicture(4, 2, 32, 0)) + StoredBitmaps(SolidPicture(2, 3, 32, 0));
  const std::string flat = BitmapBytes(4, 2, 12, 24, std::string(24, '\0')) + BitmapBytes(4, 2, 2, 1, "\1\2\3\4") +
                           StoredBitmaps(SolidPicture(2, 1, 32, 0));
  folder.Write(kImageName, IconImage({good, wide, good, high, flat}));
  const auto cookies = folder.Json(kImageName).at("icons");
  const auto place = [&](std::size_t index) {
    return "console.img: warning: icon file " + cookies.at(index).at("cookie").get<std::string>();
  };
  const std::string first = ", the sizes of icon file " + cookies.at(0).at("cookie").get<std::string>() +
                            "; give all icons the same sizes [icon-size]\n";
  const std::string unused = ": no node and no dialog refers to it; remove it, or refer to it [file-unused]\n";
  const std::string expected =
      place(0) + unused + place(1) + unused + place(1) +
      ": its images of 5 x 2 and 2 x 1 pixels do not fit strips of 4 x 2 and 2 x 1" + first + place(2) + unused +
      place(3) + unused + place(3) + ": its images of 4 x 2 and 2 x 3 pixels do not fit strips of 4 x 2 and 2 x 1" +
      first + place(4) + unused + place(4) +
      ": its images have not 32 bits a pixel and are black in the strips; make the icon anew [icon-depth]\n" +
      "0 errors, 8 warnings\n";
  EXPECT_EQ(folder.Run({"check", kImageName}).output, expected);
}

TEST(CheckFiles, TextBeyondAsciiIsTold) {
  const RemarkCase inValues = {
      "",
      {R"(<Project><DialogGroup><!-- )"
       "\xC3\xA4 -->",
       R"(<Dialog Cookie="1" Name="&#xF6;" Icon="0" Type="HTML"><MenuScript/><StyleSheet/></Dialog>)",
       "<Dialog Cookie=\"2\" Name=\"\xC3\xB6\xF0\x9F\x98\x80\" Icon=\"0\" "
       "Type=\"HTML\"><MenuScript/><StyleSheet/></Dialog>",
       "</DialogGroup></Project>"},
      "3: warning: 2 characters beyond ASCII in values, the first in this line: a host reads the file through code "
      "page "
      "1252 and gets others; write character references, as &#252; for U+00FC [text-beyond-ascii]"};
  ExpectRemarkAlone(inValues);
  ExpectRemarkAlone(inValues, {"--raw-text"});
}

TEST(CheckFiles, BytesThatAreNoUtf8AreTold) {
  ExpectRemarkAlone(
      {"",
       {"<Project>", "<DialogGroup>",
        "<Dialog Cookie=\"2\" Name=\"\xF6 \xE4\" Icon=\"0\" Type=\"HTML\"><MenuScript/><StyleSheet/></Dialog>",
        "</DialogGroup></Project>"},
       "3: warning: 2 bytes are no UTF-8, the first of them in this line, and taken for code page 1252; "
       "save the file as UTF-8 [not-utf8]"});
}

}  // namespace
}  // namespace ondrel::test
