// Opening a file as a part of a transaction: there are none, so only null is taken.
#include <gtest/gtest.h>

#include <memory>

#include "support/print_text.h"
#include "support/temporary_folder.h"

#include <ondrel/platform/framework/file.h>

namespace ondrel::test {
namespace {

/// Something of the caller's that is no null pointer; nothing looks into it.
CAtlTransactionManager* SomeTransaction() {
  static int transaction = 0;
  return reinterpret_cast<CAtlTransactionManager*>(&transaction);
}

constexpr CAtlTransactionManager* kNoTransaction = nullptr;

TEST(FileTransaction, NoneOpensAsThePlainForm) {
  const TemporaryFolder folder;
  CFile file;
  ASSERT_TRUE(file.Open(Wide(folder.Write("a.bin", "abc")), CFile::modeRead, kNoTransaction));
  EXPECT_EQ(file.GetLength(), 3U);
  std::unique_ptr<CFileException> error;
  EXPECT_FALSE(file.Open(Wide(folder / "none.bin"), CFile::modeRead, kNoTransaction, &error));
  ASSERT_NE(error, nullptr);
  EXPECT_EQ(error->m_cause, CFileException::fileNotFound);
  EXPECT_EQ(error->m_strFileName, Wide(folder / "none.bin"));
  EXPECT_FALSE(file.Open(Wide(folder / "none.bin"), CFile::modeRead, kNoTransaction));
}

TEST(FileTransaction, AnyOtherIsNotSupportedAndChangesNothing) {
  const TemporaryFolder folder;
  CFile file(Wide(folder.Write("a.bin", "abc")), CFile::modeRead);
  std::unique_ptr<CFileException> error;
  EXPECT_THROW(file.Open(Wide(folder / "new.bin"), CFile::modeCreate | CFile::modeWrite, SomeTransaction(), &error),
               CNotSupportedException);
  EXPECT_EQ(error, nullptr);
  EXPECT_EQ(folder.Listing(), "a.bin\n");
  EXPECT_EQ(file.GetLength(), 3U) << "the file that was open is open";
}

TEST(FileTransaction, FilesInMemoryAreNotOpenedInEitherForm) {
  CMemFile file;
  EXPECT_THROW(file.Open(_T("a.bin"), CFile::modeRead), CNotSupportedException);
  EXPECT_THROW(file.Open(_T("a.bin"), CFile::modeRead, kNoTransaction), CNotSupportedException);
  EXPECT_THROW(file.Open(_T("a.bin"), CFile::modeRead, SomeTransaction()), CNotSupportedException);
}

}  // namespace
}  // namespace ondrel::test
