// Object images that do not load: cut at every byte, of another version, with keys that stand twice.
#include <gtest/gtest.h>

#include <ondrel/MMCObjectSet.h>

#include "project_folder.h"
#include "support/archive_bytes.h"
#include "support/model/hand_bytes.h"

namespace ondrel::test {
namespace {

std::string Head(std::uint64_t topNodes) { return Long(1) + Long(1) + Count(topNodes); }

std::string ListRecord(std::int64_t cookie, std::string_view name) {
  return Cookie(cookie) + ShortText(name) + Cookie(0) + Long(0) + Count(0) + Cookie(0) + Count(0);
}

std::string IconRecord(std::int64_t cookie) {
  std::string bytes = Cookie(cookie);
  for (int image = 0; image < 4; ++image) bytes += BitmapBytes(1, 1, 4, 32, "bgra");
  return bytes;
}

std::string CodeRecord(std::int64_t cookie) { return Cookie(cookie) + ByteVector("code"); }

/// One of everything.
std::string WholeImage() {
  return Head(1) + ListRecord(1, "a") + Count(1) + ListRecord(2, "b") + Count(0) +  //
         Count(1) + ListRecord(3, "d") + Count(1) + IconRecord(4) + Count(1) + CodeRecord(5) + Count(1) + CodeRecord(6);
}

/// What the library raises for an image, as the command writes it.
std::string RaisedStatus(const std::string& image) {
  const auto writer = [](const WCHAR*, CVellum&, CMMCObjectSet::Transform, CMMCObjectSet::Variables) { return false; };
  CMMCObjectSet set(writer);
  LoadingArchive archive(image);
  try {
    set.SerializeObjects(*archive, 0, 0);
  } catch (const CArchiveException& raised) {
    return "archive cause " + std::to_string(raised.m_cause);
  } catch (const COleException& raised) {
    char text[16];
    std::snprintf(text, sizeof text, "0x%08X", static_cast<unsigned>(raised.m_sc));
    return text;
  }
  return "none";
}

TEST(BadImage, AWholeImageIsShown) {
  const ProjectFolder folder;
  folder.Write(kImageName, WholeImage());
  const nlohmann::json json = folder.Json(kImageName);
  EXPECT_EQ(json["nodes"][0]["children"][0]["name"], "b");
  EXPECT_EQ(json["codeFiles"].size(), 2U);
}

TEST(BadImage, AnImageThatIsCutAnywhereIsRefused) {
  const std::string image = WholeImage();
  const ProjectFolder folder;
  for (std::size_t length = 1; length < image.size(); length += 5) {
    SCOPED_TRACE("the first " + std::to_string(length) + " bytes");
    folder.Write(kImageName, image.substr(0, length));
    ExpectFailure(
        folder.Show(kImageName),
        "console.img: it ends early, after " + std::to_string(length) + (length == 1 ? " byte, in " : " bytes, in "),
        "archive cause 3");
    EXPECT_EQ(RaisedStatus(image.substr(0, length)), "archive cause 3");
    if (length % 25 != 1) continue;  // the same reading, which takes its time to start
    ExpectFailure(folder.Run({"extract", kImageName, "-d", "out"}), "console.img: it ends early, ", "archive cause 3");
  }
  EXPECT_EQ(folder.Listing(), "console.img\n");
}

struct BadImage {
  const char* name;
  std::string bytes;
  const char* complaint;  ///< Behind "console.img: ".
  const char* status;
};

std::ostream& operator<<(std::ostream& out, const BadImage& bad) { return out << bad.name; }

constexpr std::uint64_t kHugeCount = 0xFFFFFFFFFFFFFFFF;

const BadImage kBadImages[] = {
    {"OtherSetVersion", Long(2) + Long(1) + Count(0),
     "it is neither a project file nor an object image of version 1: ", "archive cause 7"},
    {"OtherRecordVersion", Long(1) + Long(2) + Count(0), "its records have version 2, only 1 is known; ",
     "archive cause 7"},
    {"TwoTopLevelNodes", Head(2), "it claims 2 top-level nodes, ", "archive cause 7"},
    {"CutHead", Long(1), "it ends early, after 4 bytes, in its head; ", "archive cause 3"},
    {"CutName", Head(1) + Cookie(12) + "\xFF\xFE\xFF\x05" + "ab",
     "it ends early, after 30 bytes, in the record of its node no. 1, cookie 12; ", "archive cause 3"},
    {"CutAfterANode", Head(1) + ListRecord(1, "a"),
     "it ends early, after 66 bytes, in the number of a node's children; ", "archive cause 3"},
    {"HugeChildCount", Head(1) + ListRecord(1, "a") + Count(kHugeCount),
     "it ends early, after 74 bytes, in the record of its node no. 2; ", "archive cause 3"},
    {"HugeQueryCount", Head(1) + Cookie(1) + ShortText("a") + Cookie(0) + Long(0) + Count(kHugeCount),
     "it ends early, after 50 bytes, in the record of its node no. 1, cookie 1; ", "archive cause 3"},
    {"HugeName", Head(1) + Cookie(1) + "\xFF\xFE\xFF" + "\xFF\xFF\xFF\xFE\xFF\xFF\xFF",
     "it ends early, after 34 bytes, in the record of its node no. 1, cookie 1; ", "archive cause 3"},
    {"HugeDialogCount", Head(0) + Count(kHugeCount),
     "it ends early, after 24 bytes, in the record of its dialog no. 1; ", "archive cause 3"},
    {"HugePixelCount",
     Head(0) + Count(0) + Count(1) + Cookie(1) + Long(0) + Long(1) + Long(1) + Long(4) + Word(1) + Word(32) +
         Long(0x7FFFFFFF),
     "it ends early, after 64 bytes, in icon file 1 of 1; ", "archive cause 3"},
    {"HugeCodeFile", Head(0) + Count(0) + Count(0) + Count(1) + Cookie(1) + Long(-1),
     "it ends early, after 52 bytes, in code file 1 of 1; ", "archive cause 3"},
    {"NodeCookieTwice", Head(1) + ListRecord(1, "a") + Count(1) + ListRecord(1, "b") + Count(0),
     "node 1 has the cookie of another node; ", "0x800700B7"},
    {"DialogWithANodesCookie", Head(1) + ListRecord(1, "a") + Count(0) + Count(1) + ListRecord(1, "d"),
     "dialog 1 has the cookie of another node; ", "0x800700B7"},
    {"DialogCookieTwice", Head(0) + Count(2) + ListRecord(1, "d") + ListRecord(1, "e"),
     "dialog 1 has the cookie of another dialog; ", "0x800700B7"},
    {"DialogNameTwice", Head(0) + Count(2) + ListRecord(1, "d") + ListRecord(2, "d"),
     "dialog 2 has the name \"d\" of another dialog; ", "0x800700B7"},
    {"IconCookieTwice", Head(0) + Count(0) + Count(2) + IconRecord(4) + IconRecord(4),
     "icon file 4 has the cookie of another icon file; ", "0x800700B7"},
    {"CodeCookieTwice", Head(0) + Count(0) + Count(0) + Count(2) + CodeRecord(5) + CodeRecord(5) + Count(0),
     "code file 5 has the cookie of another code file; ", "0x800700B7"},
    {"CodeCookieInBothSections", Head(0) + Count(0) + Count(0) + Count(1) + CodeRecord(5) + Count(1) + CodeRecord(5),
     "code file 5 has the cookie of another code file; ", "0x800700B7"},
};

class BadImages : public testing::TestWithParam<BadImage> {};

TEST_P(BadImages, AreExplained) {
  const BadImage& bad = GetParam();
  const ProjectFolder folder;
  folder.Write(kImageName, bad.bytes);
  ExpectFailure(folder.Show(kImageName), std::string("console.img: ") + bad.complaint, bad.status);
  EXPECT_EQ(RaisedStatus(bad.bytes), bad.status) << "raised by the library";
  ExpectFailure(folder.Run({"compile", kImageName, "-o", "new.img"}),
                "console.img: it is no project file, which is XML text; ", "0x8007000D");
  ExpectFailure(folder.Run({"extract", kImageName, "-d", "out"}), std::string("console.img: ") + bad.complaint,
                bad.status);
  EXPECT_EQ(folder.Listing(), "console.img\n");
}

INSTANTIATE_TEST_SUITE_P(Command, BadImages, testing::ValuesIn(kBadImages),
                         [](const auto& info) { return std::string(info.param.name); });

}  // namespace
}  // namespace ondrel::test
