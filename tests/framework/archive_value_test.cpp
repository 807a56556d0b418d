// Fixed-width values: their bytes, and the direction that each of them is checked against.
#include <gtest/gtest.h>

#include <functional>
#include <limits>
#include <vector>

#include "support/archive_bytes.h"
#include "support/print_text.h"
#include "support/raised.h"

namespace ondrel::test {
namespace {

TEST(ArchiveValues, AreStoredLittleEndianWithoutPaddingOrTags) {
  const std::string bytes = Stored([](CVellum& archive) {
    archive << BYTE{0xA1} << WORD{0x0102} << DWORD{0x03040506} << LONG{-2} << LONGLONG{0x1122334455667788}
            << ULONGLONG{1};
  });
  EXPECT_EQ(Hex(bytes),
            "A1 "
            "02 01 "
            "06 05 04 03 "
            "FE FF FF FF "
            "88 77 66 55 44 33 22 11 "
            "01 00 00 00 00 00 00 00");
}

template <class Type>
void ExpectRoundTrip(Type value) {
  LoadingArchive archive(Stored([value](CVellum& storing) { storing << value; }));
  Type loaded = 0;
  *archive >> loaded;
  EXPECT_EQ(loaded, value);
  EXPECT_EQ(archive.Unused(), 0U) << "for the value " << +value;
}

template <class Type>
void ExpectLimitsToRoundTrip() {
  ExpectRoundTrip(std::numeric_limits<Type>::min());
  ExpectRoundTrip(std::numeric_limits<Type>::max());
}

TEST(ArchiveValues, ComeBackAtTheLimitsOfTheirTypes) {
  ExpectLimitsToRoundTrip<BYTE>();
  ExpectLimitsToRoundTrip<WORD>();
  ExpectLimitsToRoundTrip<int>();
  ExpectLimitsToRoundTrip<UINT>();
  ExpectLimitsToRoundTrip<LONG>();
  ExpectLimitsToRoundTrip<DWORD>();
  ExpectLimitsToRoundTrip<LONGLONG>();
  ExpectLimitsToRoundTrip<ULONGLONG>();
}

TEST(ArchiveValues, LoadBeyondTheEndRaisesEndOfFileWithoutAName) {
  CMemFile file("\x01\x02\x03", 3);
  file.SetFilePath(_T("short.bin"));
  CVellum archive(&file, CArchive::load);
  DWORD value = 7;
  const auto fault = Raised<CArchiveException>([&] { archive >> value; });
  ASSERT_TRUE(fault);
  EXPECT_EQ(fault->m_cause, CArchiveException::endOfFile);
  EXPECT_EQ(fault->m_strFileName, CString());
  EXPECT_EQ(value, 7U);
}

TEST(ArchiveValues, AreStillThereAfterALoadThatWantedMore) {
  LoadingArchive archive(std::string_view("\x01\x02\x03", 3));
  DWORD tooWide = 0;
  ASSERT_TRUE(Raised<CArchiveException>([&] { *archive >> tooWide; }));
  WORD value = 0;
  *archive >> value;
  EXPECT_EQ(value, 0x0201);
}

struct NamedUse {
  const char* name;
  std::function<void(CVellum&)> use;
};

const std::vector<NamedUse>& Stores() {
  static const std::vector<NamedUse> stores = {
      {"BYTE", [](CVellum& archive) { archive << BYTE{1}; }},
      {"WORD", [](CVellum& archive) { archive << WORD{1}; }},
      {"int", [](CVellum& archive) { archive << 1; }},
      {"UINT", [](CVellum& archive) { archive << 1U; }},
      {"LONG", [](CVellum& archive) { archive << LONG{1}; }},
      {"DWORD", [](CVellum& archive) { archive << DWORD{1}; }},
      {"LONGLONG", [](CVellum& archive) { archive << LONGLONG{1}; }},
      {"ULONGLONG", [](CVellum& archive) { archive << ULONGLONG{1}; }},
      {"raw bytes", [](CVellum& archive) { archive.Write("x", 1); }},
      {"no raw bytes", [](CVellum& archive) { archive.Write("x", 0); }},
      {"length", [](CVellum& archive) { AfxWriteStringLength(archive, 1, TRUE); }},
      {"text", [](CVellum& archive) { archive << CString(_T("x")); }},
      {"empty text", [](CVellum& archive) { archive << CString(); }},
      {"char vector", [](CVellum& archive) { archive.Write(std::vector<char>(3)); }},
      {"unsigned char vector", [](CVellum& archive) { archive.Write(std::vector<unsigned char>(3)); }},
  };
  return stores;
}

template <class Type>
void LoadOne(CVellum& archive) {
  Type value = 0;
  archive >> value;
}

const std::vector<NamedUse>& Loads() {
  static const std::vector<NamedUse> loads = {
      {"BYTE", LoadOne<BYTE>},
      {"WORD", LoadOne<WORD>},
      {"int", LoadOne<int>},
      {"UINT", LoadOne<UINT>},
      {"LONG", LoadOne<LONG>},
      {"DWORD", LoadOne<DWORD>},
      {"LONGLONG", LoadOne<LONGLONG>},
      {"ULONGLONG", LoadOne<ULONGLONG>},
      {"raw bytes",
       [](CVellum& archive) {
         char byte = 0;
         archive.Read(&byte, 1);
       }},
      {"no raw bytes",
       [](CVellum& archive) {
         char byte = 0;
         archive.Read(&byte, 0);
       }},
      {"buffer", [](CVellum& archive) { archive.FillBuffer(1); }},
      {"length",
       [](CVellum& archive) {
         int charSize = 0;
         AfxReadStringLength(archive, charSize);
       }},
      {"text",
       [](CVellum& archive) {
         CString text;
         archive >> text;
       }},
      {"char vector",
       [](CVellum& archive) {
         std::vector<char> bytes;
         archive.Read(bytes);
       }},
      {"unsigned char vector",
       [](CVellum& archive) {
         std::vector<unsigned char> bytes;
         archive.Read(bytes);
       }},
  };
  return loads;
}

TEST(ArchiveDirection, StoringOnALoadingArchiveRaisesReadOnlyWithTheName) {
  for (const NamedUse& store : Stores()) {
    SCOPED_TRACE(store.name);
    CMemFile file("12345678", 8);
    file.SetFilePath(_T("set\\a.bin"));
    {
      CVellum archive(&file, CArchive::load);
      const auto fault = Raised<CArchiveException>([&] { store.use(archive); });
      ASSERT_TRUE(fault);
      EXPECT_EQ(fault->m_cause, 2);
      EXPECT_EQ(fault->m_strFileName, _T("set\\a.bin"));
    }
    EXPECT_EQ(BytesOf(file), "12345678");
    EXPECT_EQ(file.GetPosition(), 0U);
  }
}

TEST(ArchiveDirection, LoadingOnAStoringArchiveRaisesWriteOnlyWithTheName) {
  for (const NamedUse& load : Loads()) {
    SCOPED_TRACE(load.name);
    CMemFile file;
    file.SetFilePath(_T("set\\a.bin"));
    CVellum archive(&file, CArchive::store);
    const auto fault = Raised<CArchiveException>([&] { load.use(archive); });
    ASSERT_TRUE(fault);
    EXPECT_EQ(fault->m_cause, 4);
    EXPECT_EQ(fault->m_strFileName, _T("set\\a.bin"));
    archive.Close();
    EXPECT_EQ(file.GetLength(), 0U);
  }
}

TEST(ArchiveDirection, FaultsCarryTheNameThatTheCallerSet) {
  CMemFile file;
  CVellum archive(&file, CArchive::store);
  archive.m_strFileName = _T("C:\\folder\\project.xml");
  const auto fault = Raised<CArchiveException>([&] { LoadOne<WORD>(archive); });
  ASSERT_TRUE(fault);
  EXPECT_EQ(fault->m_strFileName, _T("C:\\folder\\project.xml"));
  EXPECT_STREQ(fault->what(), "cannot load from the archive \"C:\\folder\\project.xml\": it is storing");
}

}  // namespace
}  // namespace ondrel::test
