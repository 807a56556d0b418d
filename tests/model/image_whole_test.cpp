// A whole object image with every kind of record, byte by byte, stored and loaded.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include <ondrel/MMCObjectSet.h>

#include "support/archive_bytes.h"
#include "support/model/icon_fixtures.h"
#include "support/model/set_forms.h"
#include "support/model/sets.h"
#include "support/object_set_probe.h"
#include "support/temporary_folder.h"

namespace ondrel::test {
namespace {

constexpr auto kOtherType = static_cast<CMMCObjectParams::_eTypeNode>(-5);

const RecordFields kTop = {.cookie = 4,
                           .name = _T("Top"),
                           .icon = 0x70,
                           .type = CMMCObjectParams::eHTML,
                           .childQueries = {{_T("q"), 0x71}},
                           .styleSheet = 0x72,
                           .menuScript = 0x73,
                           .scripts = {0x74, -1},
                           .renderQueries = {{_T("r"), 0x75}, {_T(""), 0}}};
const RecordFields kBelow = {.cookie = 5, .name = _T("A"), .type = CMMCObjectParams::eList, .scripts = {0x76}};
const RecordFields kDeep = {.cookie = 7, .name = _T(""), .type = CMMCObjectParams::eDialog};
const RecordFields kOther = {.cookie = 6, .name = _T("\u20AC"), .type = kOtherType};
const RecordFields kDialog = {
    .cookie = 9, .name = _T("D"), .icon = 1, .type = CMMCObjectParams::eDialog, .styleSheet = 2, .menuScript = 3};
const RecordFields kSecondDialog = {.cookie = 10, .name = _T("E"), .type = CMMCObjectParams::eList};

// The names of the code files decide their order: "a.js" before "b.js", whatever their cookies.
std::string Image() {
  return FromHex(
             "01 00 00 00"              // version of the set
             "01 00 00 00"              // version of the records
             "01 00 00 00 00 00 00 00"  // top-level nodes
             // node 4, HTML
             "04 00 00 00 00 00 00 00"                     // cookie
             "FF FE FF 03 54 00 6F 00 70 00"               // "Top"
             "70 00 00 00 00 00 00 00"                     // icon
             "01 00 00 00"                                 // type
             "01 00 00 00 00 00 00 00"                     // child queries
             "FF FE FF 01 71 00  71 00 00 00 00 00 00 00"  // "q", its file
             "73 00 00 00 00 00 00 00"                     // menu script
             "02 00 00 00 00 00 00 00"                     // scripts
             "74 00 00 00 00 00 00 00  FF FF FF FF FF FF FF FF"
             "72 00 00 00 00 00 00 00"                     // style sheet
             "02 00 00 00 00 00 00 00"                     // render queries
             "FF FE FF 01 72 00  75 00 00 00 00 00 00 00"  // "r", its file
             "FF FE FF 00  00 00 00 00 00 00 00 00"        // "", no file
             "02 00 00 00 00 00 00 00"                     // children of node 4
             // node 5, List
             "05 00 00 00 00 00 00 00"  // cookie
             "FF FE FF 01 41 00"        // "A"
             "00 00 00 00 00 00 00 00"  // no icon
             "00 00 00 00"              // type
             "00 00 00 00 00 00 00 00"  // child queries
             "00 00 00 00 00 00 00 00"  // no menu script
             "01 00 00 00 00 00 00 00"  // scripts
             "76 00 00 00 00 00 00 00"
             "01 00 00 00 00 00 00 00"  // children of node 5
             // node 7, Dialog
             "07 00 00 00 00 00 00 00"  // cookie
             "FF FE FF 00"              // ""
             "00 00 00 00 00 00 00 00"  // no icon
             "02 00 00 00"              // type
             "00 00 00 00 00 00 00 00"  // child queries
             "00 00 00 00 00 00 00 00"  // no menu script
             "00 00 00 00 00 00 00 00"  // scripts
             "00 00 00 00 00 00 00 00"  // no style sheet
             "00 00 00 00 00 00 00 00"  // render queries
             "00 00 00 00 00 00 00 00"  // children of node 7
             // node 6, of a type that has no name
             "06 00 00 00 00 00 00 00"  // cookie
             "FF FE FF 01 AC 20"        // the euro sign
             "00 00 00 00 00 00 00 00"  // no icon
             "FB FF FF FF"              // type
             "00 00 00 00 00 00 00 00"  // child queries
             "00 00 00 00 00 00 00 00"  // no menu script
             "00 00 00 00 00 00 00 00"  // scripts
             "00 00 00 00 00 00 00 00"  // children of node 6
             "02 00 00 00 00 00 00 00"  // dialogs
             // dialog 9, Dialog
             "09 00 00 00 00 00 00 00"  // cookie
             "FF FE FF 01 44 00"        // "D"
             "01 00 00 00 00 00 00 00"  // icon
             "02 00 00 00"              // type
             "00 00 00 00 00 00 00 00"  // child queries
             "03 00 00 00 00 00 00 00"  // menu script
             "00 00 00 00 00 00 00 00"  // scripts
             "02 00 00 00 00 00 00 00"  // style sheet
             "00 00 00 00 00 00 00 00"  // render queries
             // dialog 10, List
             "0A 00 00 00 00 00 00 00"  // cookie
             "FF FE FF 01 45 00"        // "E"
             "00 00 00 00 00 00 00 00"  // no icon
             "00 00 00 00"              // type
             "00 00 00 00 00 00 00 00"  // child queries
             "00 00 00 00 00 00 00 00"  // no menu script
             "00 00 00 00 00 00 00 00"  // scripts
             "02 00 00 00 00 00 00 00"  // icon files
             // icon file 0x11: four bitmaps
             "11 00 00 00 00 00 00 00"
             "00 00 00 00  02 00 00 00  01 00 00 00  08 00 00 00  01 00  20 00"
             "08 00 00 00  01 02 03 04  05 06 07 08"
             "00 00 00 00  02 00 00 00  01 00 00 00  02 00 00 00  01 00  01 00"
             "02 00 00 00  40 00"
             "00 00 00 00  01 00 00 00  01 00 00 00  04 00 00 00  01 00  20 00"
             "04 00 00 00  09 0A 0B 0C"
             "00 00 00 00  01 00 00 00  01 00 00 00  02 00 00 00  01 00  01 00"
             "02 00 00 00  80 00"
             // icon file 0x12: four bitmaps without pixels
             "12 00 00 00 00 00 00 00") +
         std::string(4 * 24, '\0') +
         FromHex(
             "02 00 00 00 00 00 00 00"  // code files that were on disk
             "22 00 00 00 00 00 00 00"  // the cookie of a.js
             "03 00 00 00  61 62 63"    // its bytes
             "21 00 00 00 00 00 00 00"  // the cookie of b.js
             "00 00 00 00"              // no bytes
             "02 00 00 00 00 00 00 00"  // code files that were in memory
             "FE FF FF FF FF FF FF FF"  // cookie -2
             "02 00 00 00  00 FF"
             "23 00 00 00 00 00 00 00"  // cookie 0x23
             "01 00 00 00  78");
}

void AddObjects(CMMCObjectSet& set) {
  ASSERT_EQ(set.AddNode(-1, 4, MakeRecord(kTop)), S_OK);
  ASSERT_EQ(set.AddNode(4, 6, MakeRecord(kOther)), S_OK);
  ASSERT_EQ(set.AddNode(4, 5, MakeRecord(kBelow)), S_OK);
  ASSERT_EQ(set.AddNode(5, 7, MakeRecord(kDeep)), S_OK);
  ASSERT_EQ(set.AddDialog(10, MakeRecord(kSecondDialog)), S_OK);
  ASSERT_EQ(set.AddDialog(9, MakeRecord(kDialog)), S_OK);
  const std::string icon = BitmapBytes(2, 1, 8, 32, FromHex("01 02 03 04  05 06 07 08")) +
                           BitmapBytes(2, 1, 2, 1, FromHex("40 00")) +
                           BitmapBytes(1, 1, 4, 32, FromHex("09 0A 0B 0C")) + BitmapBytes(1, 1, 2, 1, FromHex("80 00"));
  LoadingArchive archive(Cookie(0x12) + std::string(4 * 24, '\0') + Cookie(0x11) + icon);
  set.DeserializeIconFile(*archive);
  set.DeserializeIconFile(*archive);
}

TEST(ImageWhole, IsStoredByteByByte) {
  const TemporaryFolder folder;
  CMMCObjectSet set(LeaveToSet);
  AddObjects(set);
  ASSERT_EQ(CMMCObjectSetProbe::InsertCodeFile(
                set, Wide(folder.Write("b.js", "gone")), 0x21,
                [](std::vector<char>, CMMCObjectSet::Variables) { return std::vector<char>(); }),
            S_OK);
  ASSERT_EQ(CMMCObjectSetProbe::InsertCodeFile(set, Wide(folder.Write("a.js", "abc")), 0x22, Unchanged), S_OK);
  ASSERT_EQ(CMMCObjectSetProbe::InsertCodeFile(set, 0x23, {'x'}), S_OK);
  ASSERT_EQ(CMMCObjectSetProbe::InsertCodeFile(set, -2, {'\0', '\xFF'}), S_OK);
  const std::string before = Observed(set);
  EXPECT_EQ(Hex(SavedImage(set)), Hex(Image()));
  EXPECT_EQ(Observed(set), before) << "storing changes nothing";
}

TEST(ImageWhole, IsLoadedByteByByte) {
  CMMCObjectSet expected(LeaveToSet);
  AddObjects(expected);
  ASSERT_EQ(CMMCObjectSetProbe::InsertCodeFile(expected, 0x21, {}), S_OK);
  ASSERT_EQ(CMMCObjectSetProbe::InsertCodeFile(expected, 0x22, {'a', 'b', 'c'}), S_OK);
  ASSERT_EQ(CMMCObjectSetProbe::InsertCodeFile(expected, 0x23, {'x'}), S_OK);
  ASSERT_EQ(CMMCObjectSetProbe::InsertCodeFile(expected, -2, {'\0', '\xFF'}), S_OK);

  CMMCObjectSet set(LeaveToSet);
  LoadingArchive archive(Image() + "rest");
  set.SerializeObjects(*archive, 0, 0);
  EXPECT_EQ(archive.Unused(), 4U) << "an image ends where it ends";
  EXPECT_EQ(Observed(set), Observed(expected));
}

TEST(ImageWhole, TheImageOfALoadedSetHasItsCodeFilesInTheSecondSection) {
  CMMCObjectSet set(LeaveToSet);
  LoadImage(set, Image());
  const std::string second = FromHex(
      "00 00 00 00 00 00 00 00"
      "04 00 00 00 00 00 00 00"
      "FE FF FF FF FF FF FF FF  02 00 00 00  00 FF"
      "21 00 00 00 00 00 00 00  00 00 00 00"
      "22 00 00 00 00 00 00 00  03 00 00 00  61 62 63"
      "23 00 00 00 00 00 00 00  01 00 00 00  78");
  const std::string image = SavedImage(set);
  ASSERT_GE(image.size(), second.size());
  EXPECT_EQ(Hex(image.substr(image.size() - second.size())), Hex(second));
  CMMCObjectSet again(LeaveToSet);
  LoadImage(again, image);
  EXPECT_EQ(Hex(SavedImage(again)), Hex(image));
}

TEST(ImageWhole, GoesThroughAnyBufferSizeIntact) {
  for (int bufferSize = 1; bufferSize <= 64; ++bufferSize) {
    LoadingArchive archive(Image(), bufferSize);
    CMMCObjectSet set(LeaveToSet);
    set.SerializeObjects(*archive, 0, 0);
    CMMCObjectSet reference(LeaveToSet);
    LoadImage(reference, Image());
    EXPECT_EQ(Observed(set), Observed(reference)) << bufferSize << " bytes";
    const std::string stored = Stored([&](CVellum& storing) { set.SerializeObjects(storing, 0, 0); }, bufferSize);
    EXPECT_EQ(Hex(stored), Hex(SavedImage(reference))) << bufferSize << " bytes";
  }
}

TEST(ImageWhole, EndingEarlyAnywhereRaisesEndOfFile) {
  const std::string image = Image();
  for (std::size_t length = 0; length < image.size(); ++length) {
    CMMCObjectSet set(LeaveToSet);
    int cause = CArchiveException::none;
    try {
      LoadImage(set, std::string_view(image).substr(0, length));
    } catch (const CArchiveException& raised) {
      cause = raised.m_cause;
    }
    ASSERT_EQ(cause, CArchiveException::endOfFile) << length << " of " << image.size() << " bytes";
  }
}

}  // namespace
}  // namespace ondrel::test
