// A record's binary form: the bytes that a store leaves, and the record that a load makes of them.

#include <gtest/gtest.h>

#include <string>
#include <utility>

#include "support/archive_bytes.h"
#include "support/model/hand_bytes.h"
#include "support/model/sets.h"

namespace ondrel::test {
namespace {

std::string StoredRecord(const RecordFields& fields) {
  const CMMCObjectParams record = MakeRecord(fields);
  return Stored([&](CVellum& archive) { record.Serialize(archive); });
}

CMMCObjectParams LoadedRecord(std::string_view bytes, CMMCObjectParams record = {}) {
  LoadingArchive archive(bytes);
  record.Deserialize(*archive);
  EXPECT_EQ(archive.Unused(), 0U) << "a load uses exactly the bytes of the record";
  return record;
}

/// Cookie, name, icon, type, child queries, menu script, scripts.
std::string CommonBytes(int type) {
  return Cookie(12) + ShortText("Status") + Cookie(31) + Long(type) +                   //
         Count(2) + ShortText("Disks") + Cookie(40) + ShortText("Fans") + Cookie(41) +  //
         Cookie(43) +                                                                   //
         Count(3) + Cookie(44) + Cookie(45) + Cookie(46);
}
/// Style sheet, render queries.
std::string ViewBytes() {
  return Cookie(42) + Count(2) + ShortText("Summary") + Cookie(47) + ShortText("Detail") + Cookie(48);
}

RecordFields WithoutView(RecordFields fields) {
  fields.styleSheet = 0;
  fields.renderQueries.clear();
  return fields;
}

TEST(ParamsBinary, ADefaultRecordIsTheseBytes) {
  EXPECT_EQ(Hex(StoredRecord({})), Hex(FromHex("00 00 00 00 00 00 00 00"      // cookie
                                               "FF FE FF 00"                  // name
                                               "00 00 00 00 00 00 00 00"      // icon
                                               "00 00 00 00"                  // type
                                               "00 00 00 00 00 00 00 00"      // no child queries
                                               "00 00 00 00 00 00 00 00"      // menu script
                                               "00 00 00 00 00 00 00 00")));  // no scripts
}

TEST(ParamsBinary, AnHtmlRecordIsTheseBytes) {
  const RecordFields fields{.cookie = 0x0102030405060708,
                            .name = _T("Ab"),
                            .icon = -2,
                            .type = CMMCObjectParams::eHTML,
                            .childQueries = {{_T("q"), 3}},
                            .styleSheet = 4,
                            .menuScript = 5,
                            .scripts = {6, 7},
                            .renderQueries = {{_T(""), 8}}};
  const std::string bytes = FromHex(
      "08 07 06 05 04 03 02 01"
      "FF FE FF 02 41 00 62 00"
      "FE FF FF FF FF FF FF FF"
      "01 00 00 00"
      "01 00 00 00 00 00 00 00  FF FE FF 01 71 00  03 00 00 00 00 00 00 00"
      "05 00 00 00 00 00 00 00"
      "02 00 00 00 00 00 00 00  06 00 00 00 00 00 00 00  07 00 00 00 00 00 00 00"
      "04 00 00 00 00 00 00 00"
      "01 00 00 00 00 00 00 00  FF FE FF 00  08 00 00 00 00 00 00 00");
  EXPECT_EQ(Hex(StoredRecord(fields)), Hex(bytes));
  EXPECT_TRUE(SameRecord(LoadedRecord(bytes), fields));
}

TEST(ParamsBinary, HtmlAndDialogRecordsHaveAView) {
  for (const auto type : {CMMCObjectParams::eHTML, CMMCObjectParams::eDialog}) {
    EXPECT_EQ(Hex(StoredRecord(FullRecord(type))), Hex(CommonBytes(type) + ViewBytes())) << "type " << type;
    EXPECT_TRUE(SameRecord(LoadedRecord(CommonBytes(type) + ViewBytes()), FullRecord(type))) << "type " << type;
  }
}

TEST(ParamsBinary, RecordsOfEveryOtherTypeHaveNone) {
  for (const int number : {0, 3, 4, -1, 0x7FFFFFFF, -0x7FFFFFFF - 1}) {
    const auto type = static_cast<CMMCObjectParams::_eTypeNode>(number);
    EXPECT_EQ(Hex(StoredRecord(FullRecord(type))), Hex(CommonBytes(number))) << "type " << number;
    EXPECT_TRUE(SameRecord(LoadedRecord(CommonBytes(number)), WithoutView(FullRecord(type)))) << "type " << number;
  }
}

TEST(ParamsBinary, AListRecordLosesItsView) {
  const RecordFields fields{.styleSheet = 7, .renderQueries = {{_T("a"), 1}, {_T("b"), 2}}};
  EXPECT_TRUE(SameRecord(LoadedRecord(StoredRecord(fields)), {}));
  RecordFields html = fields;
  html.type = CMMCObjectParams::eHTML;
  EXPECT_TRUE(SameRecord(LoadedRecord(StoredRecord(html)), html));
}

TEST(ParamsBinary, EmptyListsAreThreeZeroCountsAndTwoForAList) {
  const std::string head = Cookie(1) + ShortText("n") + Cookie(2);
  const std::string nothing = Count(0) + Cookie(3) + Count(0);
  EXPECT_EQ(Hex(StoredRecord({.cookie = 1, .name = _T("n"), .icon = 2, .styleSheet = 4, .menuScript = 3})),
            Hex(head + Long(0) + nothing));
  EXPECT_EQ(Hex(StoredRecord({.cookie = 1,
                              .name = _T("n"),
                              .icon = 2,
                              .type = CMMCObjectParams::eDialog,
                              .styleSheet = 4,
                              .menuScript = 3})),
            Hex(head + Long(2) + nothing + Cookie(4) + Count(0)));
}

TEST(ParamsBinary, TheTypeJustReadDecidesAboutTheView) {
  // An HTML record that reads a list's bytes keeps its own view, and asks for no further byte.
  RecordFields expected = WithoutView(FullRecord(CMMCObjectParams::eList));
  expected.styleSheet = 99;
  expected.renderQueries = {{_T("kept"), 98}};
  EXPECT_TRUE(SameRecord(LoadedRecord(CommonBytes(0), MakeRecord({.type = CMMCObjectParams::eHTML,
                                                                  .styleSheet = 99,
                                                                  .renderQueries = {{_T("kept"), 98}}})),
                         expected));
}

TEST(ParamsBinary, ReadingReplacesValuesAndAddsToLists) {
  const CMMCObjectParams record =
      LoadedRecord(CommonBytes(1) + ViewBytes(), MakeRecord({.cookie = 1,
                                                             .name = _T("old"),
                                                             .icon = 2,
                                                             .childQueries = {{_T("old"), 3}},
                                                             .styleSheet = 4,
                                                             .menuScript = 5,
                                                             .scripts = {6, 7},
                                                             .renderQueries = {{_T("was"), 8}}}));
  RecordFields expected = FullRecord(CMMCObjectParams::eHTML);
  expected.childQueries = {{_T("old"), 3}, {_T("Disks"), 40}, {_T("Fans"), 41}};
  expected.scripts = {6, 7, 44, 45, 46};
  expected.renderQueries = {{_T("was"), 8}, {_T("Summary"), 47}, {_T("Detail"), 48}};
  EXPECT_TRUE(SameRecord(record, expected));
}

TEST(ParamsBinary, KeepsOrderAndDuplicatesInLists) {
  const RecordFields fields{.type = CMMCObjectParams::eDialog,
                            .childQueries = {{_T("z"), 2}, {_T("a"), 1}, {_T("z"), 2}},
                            .scripts = {9, 1, 9, 0},
                            .renderQueries = {{_T("y"), 0}, {_T("y"), 0}, {_T("b"), -1}}};
  EXPECT_TRUE(SameRecord(LoadedRecord(StoredRecord(fields)), fields));
}

TEST(ParamsBinary, KeepsEveryUnitOfText) {
  const WCHAR units[] = {0x41, 0, 0xD800, 0xFFFF, 0xDC00, 1};
  const CString text(units, 6);
  const RecordFields fields{.name = text, .childQueries = {{text, 1}}};
  EXPECT_EQ(Hex(StoredRecord({.name = text}).substr(8, 16)), "FF FE FF 06 41 00 00 00 00 D8 FF FF 00 DC 01 00");
  EXPECT_TRUE(SameRecord(LoadedRecord(StoredRecord(fields)), fields));
}

TEST(ParamsBinary, KeepsTextOfEveryFormOfLength) {
  for (const int length : {0, 254, 255, 65533, 65534, 70000}) {
    const CString text(_T('x'), length);
    const RecordFields fields{
        .name = text, .type = CMMCObjectParams::eHTML, .childQueries = {{text, 1}}, .renderQueries = {{text, 2}}};
    const bool same = FieldsOf(LoadedRecord(StoredRecord(fields))) == fields;
    EXPECT_TRUE(same) << length << " units";
  }
}

TEST(ParamsBinary, PassesThroughArchivesOfAnyBufferSize) {
  const std::string bytes = CommonBytes(2) + ViewBytes();
  const CMMCObjectParams record = MakeRecord(FullRecord(CMMCObjectParams::eDialog));
  for (int bufferSize = 1; bufferSize <= 64; ++bufferSize) {
    EXPECT_EQ(Hex(Stored([&](CVellum& archive) { record.Serialize(archive); }, bufferSize)), Hex(bytes))
        << "a buffer of " << bufferSize << " bytes";
    LoadingArchive archive(bytes, bufferSize);
    CMMCObjectParams loaded;
    loaded.Deserialize(*archive);
    EXPECT_TRUE(SameRecord(loaded, FullRecord(CMMCObjectParams::eDialog))) << "a buffer of " << bufferSize << " bytes";
    EXPECT_EQ(archive.Unused(), 0U) << "a buffer of " << bufferSize << " bytes";
  }
}

}  // namespace
}  // namespace ondrel::test
