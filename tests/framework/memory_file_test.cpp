// CMemFile: a file in memory.
#include <gtest/gtest.h>

#include <cstring>
#include <limits>

#include "support/archive_bytes.h"
#include "support/failing_allocation.h"
#include "support/print_text.h"
#include "support/raised.h"

namespace ondrel::test {
namespace {

TEST(MemoryFile, GrowsAsItIsWritten) {
  CMemFile file;
  EXPECT_EQ(file.GetLength(), 0U);
  file.Write("abc", 3);
  file.Write("de", 2);
  EXPECT_EQ(BytesOf(file), "abcde");
  EXPECT_EQ(file.GetPosition(), 5U);
}

TEST(MemoryFile, StartsWithACopy) {
  char bytes[] = "abc";
  CMemFile file(bytes, 3);
  bytes[0] = 'x';
  EXPECT_EQ(file.GetPosition(), 0U);
  char read[4] = {};
  EXPECT_EQ(file.Read(read, 4), 3U);
  EXPECT_STREQ(read, "abc");
  EXPECT_EQ(file.Read(read, 4), 0U);
}

TEST(MemoryFile, OverwritesInPlaceAndBeyondTheEnd) {
  CMemFile file("abcd", 4);
  EXPECT_EQ(file.Seek(2, CFile::begin), 2U);
  file.Write("XYZ", 3);
  EXPECT_EQ(BytesOf(file), "abXYZ");
}

TEST(MemoryFile, AWriteBehindTheEndFillsTheGapWithZeros) {
  CMemFile file("a", 1);
  EXPECT_EQ(file.Seek(2, CFile::end), 3U);
  EXPECT_EQ(file.GetLength(), 1U);
  char byte = 0;
  EXPECT_EQ(file.Read(&byte, 1), 0U);
  file.Write("b", 1);
  EXPECT_EQ(Hex(BytesOf(file)), "61 00 00 62");
}

TEST(MemoryFile, SeeksFromTheStartThePositionAndTheEnd) {
  CMemFile file("abcdef", 6);
  EXPECT_EQ(file.Seek(4, CFile::begin), 4U);
  EXPECT_EQ(file.Seek(-1, CFile::current), 3U);
  EXPECT_EQ(file.Seek(-6, CFile::end), 0U);
}

TEST(MemoryFile, RefusesPositionsThatAreNone) {
  CMemFile file("abc", 3);
  file.Seek(2, CFile::begin);
  for (const LONGLONG offset :
       {LONGLONG{-3}, std::numeric_limits<LONGLONG>::min(), std::numeric_limits<LONGLONG>::max()}) {
    const auto fault = Raised<CFileException>([&] { file.Seek(offset, CFile::current); });
    ASSERT_TRUE(fault) << "for the offset " << offset;
    EXPECT_EQ(fault->m_cause, CFileException::badSeek);
  }
  EXPECT_TRUE(Raised<CInvalidArgException>([&] { file.Seek(0, 3); }));
  EXPECT_EQ(file.GetPosition(), 2U);
}

TEST(MemoryFile, ChangesItsLength) {
  CMemFile file("abcd", 4);
  file.SetLength(2);
  EXPECT_EQ(BytesOf(file), "ab");
  file.SetLength(4);
  EXPECT_EQ(Hex(BytesOf(file)), "61 62 00 00");
}

TEST(MemoryFile, HasZerosWhereItBecameShorterAndLongerAgain) {
  CMemFile file("abcdef", 6);
  file.SetLength(1);
  file.SetLength(3);
  EXPECT_EQ(Hex(BytesOf(file)), "61 00 00");
  file.SetLength(0);
  file.SetLength(2);
  EXPECT_EQ(Hex(BytesOf(file)), "00 00");
  CMemFile written("abcdef", 6);
  written.SetLength(2);
  EXPECT_EQ(written.Seek(4, CFile::begin), 4U);
  written.Write("x", 1);
  EXPECT_EQ(Hex(BytesOf(written)), "61 62 00 00 78") << "no byte of before";
  EXPECT_EQ(written.GetPosition(), 5U);
}

TEST(MemoryFile, KeepsItsPositionWhenItsLengthChanges) {
  CMemFile file("abcdef", 6);
  file.Seek(5, CFile::begin);
  file.SetLength(2);
  EXPECT_EQ(file.GetPosition(), 5U);
  char byte = 0;
  EXPECT_EQ(file.Read(&byte, 1), 0U);
  file.SetLength(6);
  EXPECT_EQ(file.Read(&byte, 1), 1U);
  EXPECT_EQ(byte, 0);
}

TEST(MemoryFile, GrowsByManyWritesOverManyMegabytes) {
  constexpr std::size_t kBlock = 100'003;
  constexpr std::size_t kBlocks = 100;
  CMemFile file;
  std::string expected;
  for (std::size_t number = 0; number < kBlocks; ++number) {
    const std::string block(kBlock, static_cast<char>('!' + number % 90));
    file.Write(block.data(), static_cast<UINT>(block.size()));
    expected += block;
    ASSERT_EQ(file.GetLength(), expected.size());
  }
  EXPECT_TRUE(BytesOf(file) == expected);
}

TEST(MemoryFile, FillsALargeGapWithZeros) {
  constexpr ULONGLONG kGap = ULONGLONG{9} << 20;
  CMemFile file("ab", 2);
  file.SetLength(1);
  EXPECT_EQ(file.Seek(static_cast<LONGLONG>(kGap), CFile::begin), kGap);
  file.Write("z", 1);
  EXPECT_TRUE(BytesOf(file) == "a" + std::string(static_cast<std::size_t>(kGap) - 1, '\0') + "z");
  file.SetLength(kGap / 2);
  file.SetLength(kGap + 1);
  EXPECT_TRUE(BytesOf(file) == "a" + std::string(static_cast<std::size_t>(kGap), '\0'));
}

TEST(MemoryFile, RaisesOutOfMemoryForWhatNoMemoryHolds) {
  CMemFile file("a", 1);
  EXPECT_TRUE(Raised<CMemoryException>([&] { file.SetLength(std::numeric_limits<ULONGLONG>::max()); }));
  file.Seek(std::numeric_limits<LONGLONG>::max(), CFile::begin);
  EXPECT_TRUE(Raised<CMemoryException>([&] { file.Write("b", 1); }));
  EXPECT_EQ(BytesOf(file), "a");
}

TEST(MemoryFile, KeepsItsBytesThroughFlushCloseAndAbort) {
  CMemFile file("abc", 3);
  file.Flush();
  file.Close();
  file.Abort();
  EXPECT_EQ(BytesOf(file), "abc");
}

TEST(MemoryFile, ShortMemoryRaisesAndKeepsTheBytes) {
  CMemFile file("abc", 3);
  const std::string more(1000, 'x');
  bool raised = false;
  bool failed = false;
  {
    const FailingAllocation failing(0);
    try {
      file.Write(more.data(), static_cast<UINT>(more.size()));
    } catch (const CMemoryException&) {
      raised = true;
    }
    failed = failing.HasFailed();
  }
  EXPECT_TRUE(failed);
  EXPECT_TRUE(raised);
  EXPECT_EQ(BytesOf(file), "abc");
}

TEST(MemoryFile, HasNoNameOfItsOwn) {
  CMemFile file;
  EXPECT_EQ(file.GetFilePath(), CString());
  file.SetFilePath(_T("given"));
  EXPECT_EQ(file.GetFilePath(), _T("given"));
}

TEST(MemoryFile, DoesNotSupportWhatNeedsADisk) {
  CMemFile file;
  EXPECT_TRUE(Raised<CNotSupportedException>([&] { file.Open(_T("a"), CFile::modeRead); }));
  EXPECT_TRUE(Raised<CNotSupportedException>([&] { file.Duplicate(); }));
  EXPECT_TRUE(Raised<CNotSupportedException>([&] { file.LockRange(0, 1); }));
  EXPECT_TRUE(Raised<CNotSupportedException>([&] { file.UnlockRange(0, 1); }));
  EXPECT_EQ(file.GetBufferPtr(CFile::bufferCheck), 0U);
}

}  // namespace
}  // namespace ondrel::test
