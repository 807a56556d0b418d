// `ondrel extract` of images that no compile of a project makes: the files are there, and a line says what differs.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "project_folder.h"
#include "support/model/hand_bytes.h"
#include "support/png_pictures.h"

namespace ondrel::test {
namespace {

using testing::HasSubstr;

const std::string kVersions = Long(1) + Long(1);
const std::string kNone = Count(0);
constexpr std::int64_t kListType = 0;
constexpr std::int64_t kDialogType = 2;

/// A record without files; `text` is the archive's form of its name.
std::string RecordOf(std::int64_t cookie, const std::string& text, std::int64_t type = kListType) {
  const std::string view = type == kDialogType ? Cookie(0) + kNone : std::string();
  return Cookie(cookie) + text + Cookie(0) + Long(type) + kNone + Cookie(0) + kNone + view;
}

std::string NodesAlone(const std::string& node) { return kVersions + Count(1) + node + kNone + kNone + kNone + kNone; }

std::string Repeated(std::string_view bytes, int count) {
  std::string text;
  for (int times = 0; times < count; ++times) text += bytes;
  return text;
}

/// An icon of one colour in the form that every system keeps.
std::string UsualIcon(std::int64_t cookie) {
  return Cookie(cookie) + BitmapBytes(32, 32, 128, 32, Repeated("bgra", 32 * 32)) +
         BitmapBytes(32, 32, 4, 1, std::string(128, '\0')) + BitmapBytes(16, 16, 64, 32, Repeated("bgra", 16 * 16)) +
         BitmapBytes(16, 16, 2, 1, std::string(32, '\0'));
}

std::string WideText(std::u16string_view units) {
  std::string bytes = "\xFF\xFE\xFF" + std::string(1, static_cast<char>(units.size()));
  for (const char16_t unit : units) bytes += Word(unit);
  return bytes;
}

void ExpectTheSameBytes(const std::string& image) {
  const ProjectFolder folder;
  folder.Write(kImageName, image);
  ExpectSuccess(folder.Run({"extract", kImageName, "-d", "out"}));
  ExpectSuccess(folder.Run({"compile", "out/project.xml", "-o", "again.img"}));
  EXPECT_TRUE(ReadBytes(folder / "again.img") == image);
}

/// Extracts an image whose project compiles to another one, for that reason.
void ExpectOtherImage(const ProjectFolder& folder, const std::string& image, const std::string& reason) {
  folder.Write(kImageName, image);
  ExpectFailure(
      folder.Run({"extract", kImageName, "-d", "out"}),
      "out: all files are written, but project.xml compiles to another image: " + reason + "; look through it ",
      "0x80004001");
  ExpectSuccess(folder.Show("out/project.xml"));
}

TEST(ExtractImage, ByHandComesBackByteByByte) {
  ExpectTheSameBytes(kVersions + Count(1) + RecordOf(4, ShortText("top")) + Count(2) + RecordOf(2, ShortText("a")) +
                     kNone + RecordOf(3, ShortText("b")) + Count(1) + RecordOf(9, ShortText("c")) + kNone +  //
                     Count(1) + RecordOf(-6, ShortText("d"), kDialogType) +                                  //
                     Count(2) + UsualIcon(-7) + UsualIcon(8) +                                               //
                     Count(3) + Cookie(5) + ByteVector("code") + Cookie(-1) + ByteVector("") + Cookie(1) +
                     ByteVector("code") + kNone);
}

TEST(ExtractImage, WithTheLargestAndSmallestCookies) {
  constexpr std::int64_t kLargest = 0x7FFFFFFFFFFFFFFF;
  constexpr std::int64_t kSmallest = -kLargest - 1;
  ExpectTheSameBytes(kVersions + Count(1) + RecordOf(kLargest, ShortText("top")) + kNone +  //
                     Count(1) + RecordOf(kSmallest, ShortText("d"), kDialogType) +          //
                     Count(2) + UsualIcon(kSmallest) + UsualIcon(kLargest) +                //
                     Count(1) + Cookie(kSmallest + 1) + ByteVector("x") + kNone);
}

TEST(ExtractImage, CodeFilesFromMemoryMoveToTheOthers) {
  const ProjectFolder folder;
  ExpectOtherImage(folder,
                   kVersions + kNone + kNone + kNone + Count(1) + Cookie(5) + ByteVector("five") + Count(2) +
                       Cookie(3) + ByteVector("three") + Cookie(4) + ByteVector("four"),
                   "the image holds code files from memory, which a compile writes elsewhere");
  EXPECT_EQ(ReadBytes(folder / "out/code/0001-file-5.txt"), "five");
  EXPECT_EQ(ReadBytes(folder / "out/code/0002-file-3.txt"), "three");
  EXPECT_EQ(ReadBytes(folder / "out/code/0003-file-4.txt"), "four");
}

TEST(ExtractImage, NodesWithNegativeCookiesAreNamed) {
  const ProjectFolder folder;
  ExpectOtherImage(folder,
                   NodesAlone(RecordOf(1, ShortText("top")) + Count(2) + RecordOf(-3, ShortText("a")) + Count(1) +
                              RecordOf(5, ShortText("b")) + kNone + RecordOf(2, ShortText("c")) + kNone),
                   "node -3 has a negative cookie and is not in the project, and 1 more reason");
  EXPECT_EQ(folder.Json("out/project.xml")["nodes"][0]["children"].size(), 1U);
}

TEST(ExtractImage, TheChildrenOfANodeWhoseCookieIsThatOfTheRootAreNoSecondTree) {
  const ProjectFolder folder;
  ExpectOtherImage(folder,
                   NodesAlone(RecordOf(1, ShortText("top")) + Count(1) + RecordOf(-1, ShortText("a")) + Count(1) +
                              RecordOf(5, ShortText("b")) + kNone),
                   "node -1 has a negative cookie and is not in the project, and 1 more reason");
}

TEST(ExtractImage, NodesOutOfOrderAreToldByTheByte) {
  const ProjectFolder folder;
  // 20 bytes of head, 46 + 2 * 3 of the first record, 8 of its count: then the cookies differ.
  ExpectOtherImage(folder,
                   NodesAlone(RecordOf(1, ShortText("top")) + Count(2) + RecordOf(3, ShortText("b")) + kNone +
                              RecordOf(2, ShortText("a")) + kNone),
                   "from byte 78 on the image is not as a compile writes it");
}

TEST(ExtractImage, BytesBehindTheEndAreToldByTheByte) {
  const ProjectFolder folder;
  ExpectOtherImage(folder, kVersions + Count(0) + kNone + kNone + kNone + kNone + "more",
                   "from byte 48 on the image is not as a compile writes it");
}

TEST(ExtractImage, UnknownTypesAreNamed) {
  const ProjectFolder folder;
  ExpectOtherImage(folder, NodesAlone(RecordOf(1, ShortText("top"), 7) + kNone),
                   "node 1 has the type 7, which a project does not hold");
  ExpectTheSameBytes(NodesAlone(RecordOf(1, ShortText("top"), 3) + kNone));
}

TEST(ExtractImage, ChildQueriesOfADialogAreNamed) {
  const ProjectFolder folder;
  ExpectOtherImage(folder,
                   kVersions + kNone + Count(1) + Cookie(1) + ShortText("d") + Cookie(0) + Long(kDialogType) +
                       Count(1) + ShortText("tag") + Cookie(0) + Cookie(0) + kNone + Cookie(0) + kNone +  //
                       kNone + kNone + kNone,
                   "dialog 1 is a Dialog with child queries, which a project does not hold");
}

TEST(ExtractImage, CharactersThatXmlDoesNotHoldAreEscaped) {
  const ProjectFolder folder;
  const std::u16string name{u'a', 0x01, 0x1B, 0xD800, u'b', 0xDC00, 0xFFFE, 0xD83D, 0xDCBE};
  ExpectOtherImage(folder, NodesAlone(RecordOf(1, WideText(name)) + kNone),
                   "node 1 has characters in its name that XML does not hold");
  EXPECT_EQ(folder.Json("out/project.xml")["nodes"][0]["name"], "a\\x01\\x1B\\uD800b\\uDC00\\uFFFE\xF0\x9F\x92\xBE");
}

TEST(ExtractImage, TagsWithSuchCharactersAreNamed) {
  const ProjectFolder folder;
  ExpectOtherImage(folder,
                   NodesAlone(Cookie(1) + ShortText("top") + Cookie(0) + Long(kListType) + Count(1) +
                              ShortText("\x02") + Cookie(0) + Cookie(0) + kNone + kNone),
                   "node 1 has characters in a tag that XML does not hold");
}

TEST(ExtractImage, DialogsThatOnlySuchCharactersTellApartStayApart) {
  const ProjectFolder folder;
  ExpectOtherImage(folder,
                   kVersions + kNone + Count(2) + RecordOf(1, ShortText("\x02"), kDialogType) +
                       RecordOf(2, ShortText("\x03"), kDialogType) + kNone + kNone + kNone,
                   "dialog 1 has characters in its name that XML does not hold, and 1 more reason");
  EXPECT_EQ(folder.Json("out/project.xml")["dialogs"].size(), 2U);
}

TEST(ExtractImage, ADialogWhoseEscapedNameIsTakenIsLeftOut) {
  const ProjectFolder folder;
  ExpectOtherImage(folder,
                   kVersions + kNone + Count(2) + RecordOf(1, ShortText("\\x02"), kDialogType) +
                       RecordOf(2, ShortText("\x02"), kDialogType) + kNone + kNone + kNone,
                   "dialog 2 has a name with characters that XML does not hold and is not in the project");
  EXPECT_EQ(folder.Json("out/project.xml")["dialogs"].size(), 1U);
}

TEST(ExtractImage, ACodeFileWithAnIconFilesCookieIsNamed) {
  const ProjectFolder folder;
  ExpectOtherImage(
      folder, kVersions + kNone + kNone + Count(1) + UsualIcon(7) + Count(1) + Cookie(7) + ByteVector("code") + kNone,
      "code file 7 has the cookie of an icon file, which a compile refuses");
  EXPECT_EQ(ReadBytes(folder / "out/code/0001-file-7.txt"), "code");
}

TEST(ExtractImage, NarrowTextIsToldByTheByte) {
  const ProjectFolder folder;
  // Behind the head and the cookie stands a text in the archive's older form, which loads and is never written.
  ExpectOtherImage(folder, NodesAlone(RecordOf(1, "\x03top") + kNone),
                   "from byte 24 on the image is not as a compile writes it");
}

// Icons

std::string IconAlone(const std::string& bitmaps) {
  return kVersions + kNone + kNone + Count(1) + Cookie(5) + bitmaps + kNone + kNone;
}

TEST(ExtractImage, IconsOfOtherSizesAreWrittenAndNamed) {
  const ProjectFolder folder;
  ExpectOtherImage(folder,
                   IconAlone(BitmapBytes(48, 48, 192, 32, Repeated("BGR\xFF", 48 * 48)) +
                             BitmapBytes(48, 48, 6, 1, std::string(288, '\0')) +
                             BitmapBytes(16, 16, 64, 32, Repeated("BGR\xFF", 16 * 16)) +
                             BitmapBytes(16, 16, 2, 1, std::string(32, '\0'))),
                   "icon 5 has images of 48 x 48 and 16 x 16, an icon file gives 32 x 32 and 16 x 16");
  EXPECT_THAT(folder.Run({"icon", "out/icons/icon-5.ico"}).output, HasSubstr("\n     1  48 x 48  32 bit\n"));
  EXPECT_TRUE(
      SamePicture(DecodePng(ReadBytes(folder / "out/icons/icon-5.png")), RgbaPicture(48, 48, {'R', 'G', 'B', 0xFF})));
}

TEST(ExtractImage, IconsOfOtherDepthsAreReplacedByTransparentOnes) {
  const ProjectFolder folder;
  ExpectOtherImage(
      folder,
      IconAlone(BitmapBytes(32, 32, 32, 8, std::string(1024, 'x')) + BitmapBytes(32, 32, 4, 1, std::string(128, '\0')) +
                BitmapBytes(16, 16, 16, 8, std::string(256, 'x')) + BitmapBytes(16, 16, 2, 1, std::string(32, '\0'))),
      "icon 5 has images of a form that no icon file gives");
  EXPECT_EQ(folder.Listing(), "console.img\nout\nout/icons\nout/icons/icon-5.ico\nout/project.xml\n");
}

TEST(ExtractImage, IconsThatClaimMoreThanTheyHoldAreNotBelieved) {
  const ProjectFolder folder;
  const std::string huge = BitmapBytes(0x7FFFFFFF, 0x7FFFFFFF, 0x7FFFFFFF, 32, "bgra");
  const std::string negative = BitmapBytes(-1, -1, -4, 32, "bgra");
  ExpectOtherImage(folder, IconAlone(huge + huge + negative + negative),
                   "icon 5 has images of 2147483647 x 2147483647 and -1 x -1, an icon file gives 32 x 32 and 16 x 16");
  EXPECT_LT(ReadBytes(folder / "out/icons/icon-5.ico").size(), 10'000U);
}

}  // namespace
}  // namespace ondrel::test
