// Folders that take their places when they are complete, and leave nothing where they are not.
#include <filesystem>

#include <gtest/gtest.h>

#include <ondrel/platform/program.h>

#include "support/raised.h"
#include "support/temporary_folder.h"

namespace ondrel::test {
namespace {

using platform::NewFolder;
namespace fs = std::filesystem;

void Fill(NewFolder& made) {
  made.MakeFolder(_T("sub"));
  made.WriteFile(_T("sub\\a"), "first");
  made.WriteFile(_T("b"), "");
}

/// The system's code of the fault that making a folder there raises; 0 without one.
LONG CodeOfMaking(const fs::path& place) {
  const auto fault = Raised<CFileException>([&] { NewFolder made(Wide(place)); });
  return fault ? fault->m_lOsError : 0;
}

TEST(NewFolder, AppearsWholeWhenItIsCommitted) {
  const TemporaryFolder folder;
  {
    NewFolder made(Wide(folder / "out"));
    Fill(made);
    made.WriteFile(_T("b"), "again");
    EXPECT_FALSE(fs::exists(folder / "out"));
    made.Commit();
  }
  EXPECT_EQ(folder.Listing(), "out\nout/b\nout/sub\nout/sub/a\n");
  EXPECT_EQ(ReadBytes(folder / "out/sub/a"), "first");
  EXPECT_EQ(ReadBytes(folder / "out/b"), "again");
}

TEST(NewFolder, WithoutCommitLeavesNothing) {
  const TemporaryFolder folder;
  {
    NewFolder made(Wide(folder / "out"));
    Fill(made);
  }
  EXPECT_EQ(folder.Listing(), "");
}

TEST(NewFolder, TakesThePlaceOfAnEmptyFolder) {
  const TemporaryFolder folder;
  fs::create_directory(folder / "out");
  {
    NewFolder made(Wide(folder / "out/"));
    Fill(made);
  }
  EXPECT_EQ(folder.Listing(), "out\n");
  NewFolder made(Wide(folder / "out"));
  Fill(made);
  made.Commit();
  EXPECT_EQ(folder.Listing(), "out\nout/b\nout/sub\nout/sub/a\n");
}

TEST(NewFolder, IsRefusedWhereAnythingIs) {
  const TemporaryFolder folder;
  folder.Write("full/x", "");
  EXPECT_EQ(CodeOfMaking(folder / "full"), static_cast<LONG>(ERROR_NOT_EMPTY));
  EXPECT_EQ(CodeOfMaking(folder / "full/x"), static_cast<LONG>(ERROR_FILE_EXISTS));
  EXPECT_EQ(CodeOfMaking(folder / "gone/out"), static_cast<LONG>(ERROR_PATH_NOT_FOUND));
  EXPECT_EQ(CodeOfMaking(fs::path()), static_cast<LONG>(ERROR_PATH_NOT_FOUND));
  EXPECT_EQ(folder.Listing(), "full\nfull/x\n");
}

TEST(NewFolder, DoesNotReplaceWhatCameMeanwhile) {
  const TemporaryFolder folder;
  {
    NewFolder made(Wide(folder / "out"));
    Fill(made);
    folder.Write("out/mine", "kept");
    const auto fault = Raised<CFileException>([&] { made.Commit(); });
    ASSERT_TRUE(fault);
    EXPECT_EQ(fault->m_lOsError, static_cast<LONG>(ERROR_NOT_EMPTY));
  }
  EXPECT_EQ(folder.Listing(), "out\nout/mine\n");
  EXPECT_EQ(ReadBytes(folder / "out/mine"), "kept");
}

TEST(NewFolder, AFailedWriteRaisesAndLeavesNothing) {
  const TemporaryFolder folder;
  {
    NewFolder made(Wide(folder / "out"));
    EXPECT_TRUE(Raised<CFileException>([&] { made.WriteFile(_T("missing\\a"), "x"); }));
    EXPECT_TRUE(Raised<CFileException>([&] { made.MakeFolder(_T("missing\\b")); }));
  }
  EXPECT_EQ(folder.Listing(), "");
}

}  // namespace
}  // namespace ondrel::test
