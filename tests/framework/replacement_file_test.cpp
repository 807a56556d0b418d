// A file that takes its place only when it is complete.
#include <gtest/gtest.h>

#include "support/print_text.h"
#include "support/raised.h"
#include "support/temporary_folder.h"

#include <ondrel/platform/framework/archive.h>
#include <ondrel/platform/program.h>

namespace ondrel::test {
namespace {

using platform::ReplacementFile;

TEST(ReplacementFile, AppearsWithCommit) {
  const TemporaryFolder folder;
  const CString path = Wide(folder / "image.bin");
  ReplacementFile file(path);
  EXPECT_EQ(file.GetFilePath(), path);
  file.Write("new", 3);
  EXPECT_FALSE(std::filesystem::exists(folder / "image.bin"));
  file.Commit();
  EXPECT_EQ(ReadBytes(folder / "image.bin"), "new");
  EXPECT_EQ(folder.Listing(), "image.bin\n");
}

TEST(ReplacementFile, ReplacesWhatWasThere) {
  const TemporaryFolder folder;
  folder.Write("image.bin", "something longer before");
  {
    ReplacementFile file(Wide(folder / "image.bin"));
    file.Write("new", 3);
    EXPECT_EQ(ReadBytes(folder / "image.bin"), "something longer before");
    file.Commit();
  }
  EXPECT_EQ(ReadBytes(folder / "image.bin"), "new");
  EXPECT_EQ(folder.Listing(), "image.bin\n");
}

TEST(ReplacementFile, HoldsWhatIsWrittenInManyParts) {
  const TemporaryFolder folder;
  std::string expected;
  ReplacementFile file(Wide(folder / "image.bin"));
  for (int part = 0; part < 50; ++part) {
    const std::string bytes(static_cast<std::size_t>(part) * 4001, static_cast<char>('A' + part));
    file.Write(bytes.data(), static_cast<UINT>(bytes.size()));
    expected += bytes;
  }
  file.Commit();
  EXPECT_GT(expected.size(), std::size_t{4} << 20);  // beyond every size at which the disk begins to take a part
  EXPECT_TRUE(ReadBytes(folder / "image.bin") == expected);
}

TEST(ReplacementFile, KnowsAnotherThatIsToTakeItsPlace) {
  const TemporaryFolder folder;
  std::filesystem::create_directory(folder / "sub");
  folder.Write("old.bin", "old");
  for (const std::string name : {"new.bin", "old.bin"}) {
    const ReplacementFile file(Wide(folder / name));
    for (const std::string& sameName : {name, "./" + name, "sub/../" + name}) {
      const ReplacementFile same(Wide(folder / sameName));
      EXPECT_TRUE(file.SharesPlaceWith(same)) << sameName;
      EXPECT_TRUE(same.SharesPlaceWith(file)) << sameName;
    }
    for (const std::string& otherName : {"sub/" + name, "x" + name, std::string("other.bin")}) {
      const ReplacementFile other(Wide(folder / otherName));
      EXPECT_FALSE(file.SharesPlaceWith(other)) << otherName;
    }
  }
}

TEST(ReplacementFile, VanishesWithoutCommit) {
  const TemporaryFolder folder;
  folder.Write("old.bin", "old");
  for (const char* const name : {"new.bin", "old.bin"}) {
    ReplacementFile file(Wide(folder / name));
    file.Write("new", 3);
  }
  EXPECT_EQ(folder.Listing(), "old.bin\n");
  EXPECT_EQ(ReadBytes(folder / "old.bin"), "old");
}

TEST(ReplacementFile, CarriesAnArchive) {
  const TemporaryFolder folder;
  ReplacementFile file(Wide(folder / "image.bin"));
  CArchive archive(&file, CArchive::store);
  EXPECT_EQ(archive.m_strFileName, Wide(folder / "image.bin"));
  archive << DWORD{0x64636261};
  archive.Close();
  file.Commit();
  EXPECT_EQ(ReadBytes(folder / "image.bin"), "abcd");
}

TEST(ReplacementFile, InAMissingFolderIsABadPath) {
  const TemporaryFolder folder;
  const CString path = Wide(folder / "nowhere/image.bin");
  const auto fault = Raised<CFileException>([&] { ReplacementFile file(path); });
  ASSERT_TRUE(fault);
  EXPECT_EQ(fault->m_cause, CFileException::badPath);
  EXPECT_EQ(fault->m_lOsError, 3);
  EXPECT_EQ(fault->m_strFileName, path);
}

TEST(ReplacementFile, OfAFolderIsDenied) {
  const TemporaryFolder folder;
  std::filesystem::create_directory(folder / "sub");
  for (const char* const name : {"sub", "sub/"}) {
    const auto fault = Raised<CFileException>([&] { ReplacementFile file(Wide(folder / name)); });
    ASSERT_TRUE(fault) << name;
    EXPECT_EQ(fault->m_cause, CFileException::accessDenied) << name;
  }
  EXPECT_EQ(folder.Listing(), "sub\n");
}

TEST(ReplacementFile, OfANameThatEndsInASeparatorIsABadPath) {
  const TemporaryFolder folder;
  folder.Write("file", "x");
  for (const char* const name : {"missing/", "file/"}) {
    const auto fault = Raised<CFileException>([&] { ReplacementFile file(Wide(folder / name)); });
    ASSERT_TRUE(fault) << name;
    EXPECT_EQ(fault->m_cause, CFileException::badPath) << name;
  }
  EXPECT_EQ(folder.Listing(), "file\n");
}

TEST(ReplacementFile, CommitOfAClosedFileFailsAndLeavesNothing) {
  const TemporaryFolder folder;
  folder.Write("image.bin", "old");
  ReplacementFile file(Wide(folder / "image.bin"));
  file.Write("new", 3);
  file.Close();
  const auto fault = Raised<CFileException>([&] { file.Commit(); });
  ASSERT_TRUE(fault);
  EXPECT_EQ(fault->m_cause, CFileException::invalidFile);
  EXPECT_EQ(folder.Listing(), "image.bin\n");
  EXPECT_EQ(ReadBytes(folder / "image.bin"), "old");
}

TEST(ReplacementFile, CommitOntoAFolderMadeMeanwhileFailsAndLeavesIt) {
  const TemporaryFolder folder;
  ReplacementFile file(Wide(folder / "image.bin"));
  file.Write("new", 3);
  folder.Write("image.bin/inside", "x");
  const auto fault = Raised<CFileException>([&] { file.Commit(); });
  ASSERT_TRUE(fault);
  EXPECT_EQ(fault->m_cause, CFileException::accessDenied);
  EXPECT_EQ(fault->m_strFileName, Wide(folder / "image.bin"));
  EXPECT_EQ(folder.Listing(), "image.bin\nimage.bin/inside\n");
}

TEST(ReplacementFile, CommitOntoAnEmptyFolderMadeMeanwhileFailsAndLeavesIt) {
  const TemporaryFolder folder;
  ReplacementFile file(Wide(folder / "image.bin"));
  file.Write("new", 3);
  std::filesystem::create_directory(folder / "image.bin");
  const auto fault = Raised<CFileException>([&] { file.Commit(); });
  ASSERT_TRUE(fault);
  EXPECT_EQ(fault->m_cause, CFileException::accessDenied);
  EXPECT_EQ(folder.Listing(), "image.bin\n");
  EXPECT_TRUE(std::filesystem::is_directory(folder / "image.bin"));
}

}  // namespace
}  // namespace ondrel::test
