// How an archive begins and ends: its name, Flush, Close, Abort, its destruction, and what follows them.
#include <gtest/gtest.h>

#include <memory>
#include <stdexcept>

#include "support/archive_bytes.h"
#include "support/faulty_file.h"
#include "support/print_text.h"
#include "support/raised.h"

namespace ondrel::test {
namespace {

TEST(Archive, TakesItsNameFromTheFile) {
  CMemFile file;
  file.SetFilePath(_T("folder\\image.bin"));
  const CVellum archive(&file, CArchive::store);
  EXPECT_EQ(archive.m_strFileName, _T("folder\\image.bin"));
  EXPECT_EQ(archive.GetFile(), &file);
}

TEST(Archive, TellsItsDirection) {
  CMemFile file;
  const CVellum storing(&file, CArchive::store);
  EXPECT_TRUE(storing.IsStoring());
  EXPECT_FALSE(storing.IsLoading());
  const CVellum loading(&file, CArchive::load);
  EXPECT_FALSE(loading.IsStoring());
  EXPECT_TRUE(loading.IsLoading());
}

TEST(Archive, NeedsAFile) {
  EXPECT_TRUE(Raised<CInvalidArgException>([] { CVellum(nullptr, CArchive::store); }));
}

TEST(Archive, FlushOfAStoringArchiveHandsTheBytesOver) {
  CMemFile file;
  CVellum archive(&file, CArchive::store);
  archive << BYTE{'x'};
  EXPECT_EQ(file.GetLength(), 0U);
  archive.Flush();
  EXPECT_EQ(BytesOf(file), "x");
}

TEST(Archive, FlushOfALoadingArchiveGivesUnreadBytesBack) {
  CMemFile file("abcdef", 6);
  CVellum archive(&file, CArchive::load);
  WORD value = 0;
  archive >> value;
  EXPECT_EQ(file.GetPosition(), 6U);
  archive.Flush();
  EXPECT_EQ(file.GetPosition(), 2U);
  archive >> value;
  EXPECT_EQ(value, 0x6463);
}

TEST(Archive, CloseLetsGoOfTheFile) {
  CMemFile file;
  CVellum archive(&file, CArchive::store);
  archive << BYTE{'x'};
  archive.Close();
  EXPECT_EQ(BytesOf(file), "x");
  EXPECT_EQ(archive.GetFile(), nullptr);
  archive.Close();
  EXPECT_EQ(BytesOf(file), "x");
}

TEST(Archive, CloseOfALoadingArchiveLeavesTheFileBehindWhatWasLoaded) {
  CMemFile file("abcdef", 6);
  CVellum archive(&file, CArchive::load);
  BYTE value = 0;
  archive >> value;
  archive.Close();
  EXPECT_EQ(file.GetPosition(), 1U);
}

TEST(Archive, AbortDropsWhatIsBuffered) {
  CMemFile file;
  CVellum archive(&file, CArchive::store);
  archive << BYTE{'x'};
  archive.Abort();
  EXPECT_EQ(archive.GetFile(), nullptr);
  archive.Close();
  EXPECT_EQ(file.GetLength(), 0U);
}

TEST(Archive, UseAfterCloseRaisesGenericWithTheName) {
  CMemFile file("abcdefgh", 8);
  file.SetFilePath(_T("gone.bin"));
  for (const UINT mode : {CArchive::store, CArchive::load}) {
    CVellum archive(&file, mode);
    archive.Close();
    const auto fault = Raised<CArchiveException>([&] {
      BYTE value = 0;
      if (mode == CArchive::store) {
        archive << value;
      } else {
        archive >> value;
      }
    });
    ASSERT_TRUE(fault) << "in mode " << mode;
    EXPECT_EQ(fault->m_cause, CArchiveException::genericException);
    EXPECT_EQ(fault->m_strFileName, _T("gone.bin"));
    EXPECT_TRUE(Raised<CArchiveException>([&] { archive.Flush(); })) << "in mode " << mode;
    char bytes[100] = {};
    EXPECT_TRUE(Raised<CArchiveException>([&] {
      if (mode == CArchive::store) {
        archive.Write(bytes, sizeof bytes);
      } else {
        archive.Read(bytes, sizeof bytes);
      }
    })) << "in mode "
        << mode;
  }
}

TEST(Archive, DestructionClosesAStoringArchive) {
  CMemFile file;
  { CVellum(&file, CArchive::store) << BYTE{'x'}; }
  EXPECT_EQ(BytesOf(file), "x");
}

TEST(Archive, DestructionWithNoFlushOnDeleteDropsWhatIsBuffered) {
  CMemFile file;
  { CVellum(&file, CArchive::store | CArchive::bNoFlushOnDelete) << BYTE{'x'}; }
  EXPECT_EQ(file.GetLength(), 0U);
}

TEST(Archive, DestructionLeavesTheFileOfALoadingArchiveWhereItIs) {
  CMemFile file("abcdef", 6);
  {
    CVellum archive(&file, CArchive::load);
    BYTE value = 0;
    archive >> value;
  }
  EXPECT_EQ(file.GetPosition(), 6U);
}

TEST(Archive, DestructionDuringAnExceptionDoesNotRaiseAnother) {
  FaultyFile file;
  file.FailWrite(1);
  const auto fault = Raised<std::logic_error>([&] {
    CVellum archive(&file, CArchive::store);
    archive << BYTE{'x'};
    throw std::logic_error("the first");
  });
  ASSERT_TRUE(fault);
  EXPECT_STREQ(fault->what(), "the first");
  EXPECT_EQ(file.Writes(), 1);
}

TEST(Archive, DestructionSwallowsAFailingWrite) {
  FaultyFile file;
  file.FailWrite(1);
  EXPECT_NO_THROW({ CVellum(&file, CArchive::store) << BYTE{'x'}; });
  EXPECT_EQ(file.Writes(), 1);
}

TEST(Archive, CloseReportsAFailingWriteAndDoesNotRepeatIt) {
  FaultyFile file;
  file.FailWrite(1);
  auto archive = std::make_unique<CVellum>(&file, CArchive::store);
  *archive << BYTE{'x'};
  const auto fault = Raised<CFileException>([&] { archive->Close(); });
  ASSERT_TRUE(fault);
  EXPECT_EQ(fault->m_cause, CFileException::diskFull);
  EXPECT_EQ(fault->m_strFileName, _T("faulty.bin"));
  EXPECT_EQ(archive->GetFile(), nullptr);
  archive.reset();
  EXPECT_EQ(file.Writes(), 1);
  EXPECT_EQ(file.GetLength(), 0U);
}

}  // namespace
}  // namespace ondrel::test
