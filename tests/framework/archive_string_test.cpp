// Text in an archive: its prefix and units, narrow text, text that ends early, and lengths that lie.
#include <gtest/gtest.h>

#include <algorithm>

#include "support/archive_bytes.h"
#include "support/faulty_file.h"
#include "support/print_text.h"
#include "support/raised.h"

#include <ondrel/platform/framework/archive_block.h>

namespace ondrel::test {
namespace {

using namespace std::string_literals;

std::string StoredText(const CString& text) {
  return Stored([&text](CVellum& archive) { archive << text; });
}

CString Loaded(const std::string& bytes) {
  LoadingArchive archive(bytes);
  CString text;
  *archive >> text;
  EXPECT_EQ(archive.Unused(), 0U);
  return text;
}

// The cause that loading text from these bytes raises; the text must stay as it was.
int LoadingCause(const std::string& bytes) {
  LoadingArchive archive(bytes);
  CString text(_T("before"));
  const auto fault = Raised<CArchiveException>([&] { *archive >> text; });
  if (!fault) return CArchiveException::none;
  EXPECT_EQ(fault->m_strFileName, CString());
  EXPECT_EQ(text, _T("before"));
  return fault->m_cause;
}

TEST(ArchiveText, EmptyTextIsTheTagAndAZeroLength) {
  EXPECT_EQ(Hex(StoredText(CString())), "FF FE FF 00");
  EXPECT_EQ(Loaded("\xFF\xFE\xFF\x00"s), CString());
}

TEST(ArchiveText, UnitsFollowTheLengthWithoutATerminator) {
  EXPECT_EQ(Hex(StoredText(_T("Ab"))), "FF FE FF 02 41 00 62 00");
  EXPECT_EQ(Loaded("\xFF\xFE\xFF\x02\x41\x00\x62\x00"s), _T("Ab"));
}

TEST(ArchiveText, AnyUnitsComeBack) {
  const WCHAR units[] = {0x0000, 0xD800, 0x0041, 0xDC00, 0xFFFF, 0xFFFE, 0x0000};
  const CString text(units, 7);
  EXPECT_EQ(Hex(StoredText(text)), "FF FE FF 07 00 00 00 D8 41 00 00 DC FF FF FE FF 00 00");
  EXPECT_EQ(Loaded(StoredText(text)), text);
}

struct LengthCase {
  int length;
  const char* prefix;
};

class ArchiveTextOfLength : public testing::TestWithParam<LengthCase> {};

TEST_P(ArchiveTextOfLength, TakesTheShortestPrefixAndComesBack) {
  const auto [length, prefix] = GetParam();
  const CString text('x', length);
  const std::string bytes = StoredText(text);
  const std::size_t prefixSize = bytes.size() - 2 * static_cast<std::size_t>(length);
  EXPECT_EQ(Hex(bytes.substr(0, prefixSize)), prefix);
  std::string units;
  for (int index = 0; index < length; ++index) units += "x\0"s;
  EXPECT_TRUE(bytes.substr(prefixSize) == units) << "the units differ";
  EXPECT_TRUE(Loaded(bytes) == text) << "the text did not come back";
}

INSTANTIATE_TEST_SUITE_P(Boundaries, ArchiveTextOfLength,
                         testing::Values(LengthCase{0, "FF FE FF 00"}, LengthCase{1, "FF FE FF 01"},
                                         LengthCase{64, "FF FE FF 40"}, LengthCase{65, "FF FE FF 41"},
                                         LengthCase{254, "FF FE FF FE"}, LengthCase{255, "FF FE FF FF FF 00"},
                                         LengthCase{256, "FF FE FF FF 00 01"}, LengthCase{65533, "FF FE FF FF FD FF"},
                                         LengthCase{65534, "FF FE FF FF FF FF FE FF 00 00"},
                                         LengthCase{65535, "FF FE FF FF FF FF FF FF 00 00"},
                                         LengthCase{70000, "FF FE FF FF FF FF 70 11 01 00"}),
                         [](const auto& info) { return std::to_string(info.param.length); });

std::string StoredLength(UINT_PTR length, BOOL unicode) {
  return Stored([=](CVellum& archive) { AfxWriteStringLength(archive, length, unicode); });
}

TEST(ArchiveTextLength, TakesTheWidestFormsWhereItMust) {
  EXPECT_EQ(Hex(StoredLength(0xFFFFFFFE, TRUE)), "FF FE FF FF FF FF FE FF FF FF");
  EXPECT_EQ(Hex(StoredLength(0xFFFFFFFF, TRUE)), "FF FE FF FF FF FF FF FF FF FF FF FF FF FF 00 00 00 00");
  EXPECT_EQ(Hex(StoredLength(0x123456789A, TRUE)), "FF FE FF FF FF FF FF FF FF FF 9A 78 56 34 12 00 00 00");
}

TEST(ArchiveTextLength, OfNarrowTextHasNoTag) {
  EXPECT_EQ(Hex(StoredLength(0, FALSE)), "00");
  EXPECT_EQ(Hex(StoredLength(254, FALSE)), "FE");
  EXPECT_EQ(Hex(StoredLength(255, FALSE)), "FF FF 00");
  EXPECT_EQ(Hex(StoredLength(65534, FALSE)), "FF FF FF FE FF 00 00");
}

TEST(ArchiveTextLength, ComesBackInEveryForm) {
  for (const UINT_PTR length : {UINT_PTR{0}, UINT_PTR{254}, UINT_PTR{255}, UINT_PTR{65533}, UINT_PTR{65534},
                                UINT_PTR{65535}, UINT_PTR{0xFFFFFFFE}, UINT_PTR{0xFFFFFFFF}, UINT_PTR{0x123456789A}}) {
    for (const BOOL unicode : {TRUE, FALSE}) {
      LoadingArchive archive(StoredLength(length, unicode));
      int charSize = 0;
      EXPECT_EQ(AfxReadStringLength(*archive, charSize), length);
      EXPECT_EQ(charSize, unicode ? 2 : 1) << "for the length " << length;
    }
  }
}

TEST(ArchiveText, WithoutTheTagIsNarrow) {
  EXPECT_EQ(Loaded("\x00"s), CString());
  EXPECT_EQ(Loaded("\x02"
                   "Ab"),
            _T("Ab"));
  EXPECT_EQ(Loaded("\x04"
                   "\x80\xE9\xFF\x81"),
            _T("\u20AC\u00E9\u00FF\x81"));
}

TEST(ArchiveText, NarrowTextOfAnyLengthBecomesWide) {
  for (const int length : {127, 128, 129, 254, 255, 65533, 65534, 70000}) {
    const auto size = static_cast<UINT>(length);
    const std::string bytes = Stored([=](CVellum& archive) {
      AfxWriteStringLength(archive, size, FALSE);
      archive.Write(std::string(size, '\xE9').data(), size);
    });
    EXPECT_TRUE(Loaded(bytes) == CString(0xE9, length)) << "for " << length << " bytes";
  }
}

TEST(ArchiveText, CutShortRaisesEndOfFile) {
  const std::string whole = StoredText(CString('x', 300));
  for (const std::size_t kept : {std::size_t{0}, std::size_t{1}, std::size_t{2}, std::size_t{3}, std::size_t{4},
                                 std::size_t{5}, std::size_t{6}, std::size_t{7}, whole.size() - 1}) {
    EXPECT_EQ(LoadingCause(whole.substr(0, kept)), CArchiveException::endOfFile) << "with " << kept << " bytes";
  }
  EXPECT_EQ(LoadingCause("\xFF\xFE\xFF\x02\x41\x00\x62"s), CArchiveException::endOfFile);
  EXPECT_EQ(LoadingCause("\x03"
                         "Ab"),
            CArchiveException::endOfFile);
}

// Prefixes of lengths that no data of a test holds.
const std::string kClaims[] = {
    "\xFF\xFE\xFF\xFF\xFF\xFF\xFE\xFF\xFF\xFF"s,
    "\xFF\xFE\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF"s,
    "\xFF\xFE\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\x00\x00\x00\x00\x00\x00\x00\x80"s,
    "\xFF\xFF\xFF\xFE\xFF\xFF\xFF"s,
    "\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF"s,
};

TEST(ArchiveText, ALengthThatTheDataDoesNotHoldEndsAtTheData) {
  for (const std::string& claim : kClaims) {
    EXPECT_EQ(LoadingCause(claim), CArchiveException::endOfFile) << Hex(claim);
    EXPECT_EQ(LoadingCause(claim + "ab"), CArchiveException::endOfFile) << Hex(claim);
  }
}

TEST(ArchiveText, NoReadGoesFarAheadOfTheDataOnTheWordOfALength) {
  for (const std::string& claim : kClaims) {
    for (const std::size_t present : {std::size_t{2}, std::size_t{1000000}}) {
      const std::string bytes = claim + std::string(present, 'x');
      FaultyFile file(bytes.data(), static_cast<UINT>(bytes.size()));
      CVellum archive(&file, CArchive::load);
      CString text;
      EXPECT_TRUE(Raised<CArchiveException>([&] { archive >> text; }));
      EXPECT_LE(file.LargestRead(), std::max(platform::kBlockStep, present)) << Hex(claim);
    }
  }
}

TEST(ArchiveText, AReadThatFailsLeavesTheTextAsItWas) {
  const std::string bytes = StoredText(CString('x', 70000));
  for (int number = 1; number <= 3; ++number) {
    FaultyFile file(bytes.data(), static_cast<UINT>(bytes.size()));
    file.FailRead(number);
    CVellum archive(&file, CArchive::load);
    CString text(_T("before"));
    const auto fault = Raised<CFileException>([&] { archive >> text; });
    ASSERT_TRUE(fault) << "at read " << number << " of " << file.Reads();
    EXPECT_EQ(fault->m_cause, CFileException::hardIO);
    EXPECT_EQ(text, _T("before"));
  }
}

TEST(ArchiveText, AWriteThatFailsIsReported) {
  for (int number = 1; number <= 2; ++number) {
    FaultyFile file;
    file.FailWrite(number);
    CVellum archive(&file, CArchive::store);
    const auto fault = Raised<CFileException>([&] { archive << CString('x', 70000); });
    ASSERT_TRUE(fault) << "at write " << number << " of " << file.Writes();
    EXPECT_EQ(fault->m_cause, CFileException::diskFull);
  }
}

}  // namespace
}  // namespace ondrel::test
