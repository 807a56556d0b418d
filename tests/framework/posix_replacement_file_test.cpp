// Replacement files where the system is not Windows: links, permissions, devices, long names, a full disk.
#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "support/posix/process.h"
#include "support/posix/unnamed_files.h"
#include "support/print_text.h"
#include "support/raised.h"
#include "support/temporary_folder.h"

#include <ondrel/platform/program.h>

namespace ondrel::test {
namespace {

using platform::ReplacementFile;
namespace fs = std::filesystem;

void Replace(const fs::path& path, const std::string& bytes) {
  ReplacementFile file(Wide(path));
  file.Write(bytes.data(), static_cast<UINT>(bytes.size()));
  file.Commit();
}

std::optional<CFileException> ReplacingFault(const fs::path& path) {
  return Raised<CFileException>([&] { Replace(path, "new"); });
}

mode_t PermissionsOf(const fs::path& path) {
  struct stat status = {};
  if (stat(path.c_str(), &status) != 0) throw std::runtime_error("no such file: " + path.string());
  return status.st_mode & 07777;
}

TEST(PosixReplacementFile, ReplacesWhatALinkLeadsToAndKeepsTheLink) {
  const TemporaryFolder folder;
  folder.Write("real/image.bin", "old");
  fs::create_symlink("real/image.bin", folder / "link");
  fs::create_symlink(folder / "link", folder / "second");
  Replace(folder / "second", "new");
  EXPECT_EQ(fs::read_symlink(folder / "second"), folder / "link");
  EXPECT_EQ(fs::read_symlink(folder / "link"), "real/image.bin");
  EXPECT_EQ(ReadBytes(folder / "real/image.bin"), "new");
  EXPECT_EQ(folder.Listing(), "link\nreal\nreal/image.bin\nsecond\n");
}

TEST(PosixReplacementFile, KnowsItsPlaceThroughLinks) {
  const TemporaryFolder folder;
  fs::create_directory(folder / "real");
  fs::create_directory_symlink("real", folder / "folder");
  fs::create_symlink("real/new.bin", folder / "link");
  const ReplacementFile file(Wide(folder / "real/new.bin"));
  EXPECT_TRUE(file.SharesPlaceWith(ReplacementFile(Wide(folder / "folder/new.bin"))));
  EXPECT_TRUE(file.SharesPlaceWith(ReplacementFile(Wide(folder / "link"))));
  EXPECT_FALSE(file.SharesPlaceWith(ReplacementFile(Wide(folder / "real/New.bin"))));
}

TEST(PosixReplacementFile, ASecondNameOfAFileIsAnotherPlace) {
  const TemporaryFolder folder;
  folder.Write("old.bin", "old");
  fs::create_hard_link(folder / "old.bin", folder / "second.bin");
  const ReplacementFile file(Wide(folder / "old.bin"));
  EXPECT_FALSE(file.SharesPlaceWith(ReplacementFile(Wide(folder / "second.bin"))));
}

TEST(PosixReplacementFile, MakesWhatALinkLeadsToWhenItIsNotThere) {
  const TemporaryFolder folder;
  fs::create_symlink("image.bin", folder / "link");
  Replace(folder / "link", "new");
  EXPECT_TRUE(fs::is_symlink(folder / "link"));
  EXPECT_EQ(ReadBytes(folder / "image.bin"), "new");
}

TEST(PosixReplacementFile, RefusesLinksThatLeadRoundOrToAFolder) {
  const TemporaryFolder folder;
  fs::create_symlink("round", folder / "round");
  fs::create_directory(folder / "sub");
  fs::create_symlink("sub", folder / "link");
  const auto round = ReplacingFault(folder / "round");
  ASSERT_TRUE(round);
  EXPECT_EQ(round->m_cause, CFileException::badPath);
  const auto toFolder = ReplacingFault(folder / "link");
  ASSERT_TRUE(toFolder);
  EXPECT_EQ(toFolder->m_cause, CFileException::accessDenied);
  EXPECT_EQ(folder.Listing(), "link\nround\nsub\n");
}

TEST(PosixReplacementFile, RefusesALinkWhoseTargetCannotBeNamed) {
  const TemporaryFolder folder;
  fs::create_symlink("back\\slash", folder / "link");
  const auto fault = ReplacingFault(folder / "link");
  ASSERT_TRUE(fault);
  EXPECT_EQ(fault->m_cause, CFileException::badPath);
  EXPECT_EQ(folder.Listing(), "link\n");
}

TEST(PosixReplacementFile, KeepsThePermissionsOfTheOldFile) {
  const TemporaryFolder folder;
  for (const mode_t mode : {0600U, 0640U, 0644U, 0666U, 0444U, 0755U}) {
    const fs::path path = folder.Write("image.bin", "old");
    ASSERT_EQ(chmod(path.c_str(), mode), 0);
    Replace(path, "new");
    EXPECT_EQ(PermissionsOf(path), mode) << std::oct << mode;
    EXPECT_EQ(ReadBytes(path), "new");
    fs::remove(path);
  }
}

TEST(PosixReplacementFile, AGroupThatCannotBeKeptLeavesTheNewGroupWhatEveryoneHas) {
  if (!CanDropPrivileges()) GTEST_SKIP() << "only the superuser can give a file to a group of others";
  constexpr uid_t kNobody = 65534;
  constexpr gid_t kGroupOfOthers = 12345;
  const TemporaryFolder folder;
  ASSERT_EQ(chmod(folder.Path().c_str(), 0777), 0);
  for (const auto& [old, expected] : {std::pair{0664U, 0644U}, {0660U, 0600U}, {0677U, 0677U}, {0750U, 0700U}}) {
    const fs::path path = folder.Write("image.bin", "old");
    ASSERT_EQ(chown(path.c_str(), kNobody, kGroupOfOthers), 0);
    ASSERT_EQ(chmod(path.c_str(), old), 0);
    {
      const Unprivileged user;
      Replace(path, "new");
    }
    EXPECT_EQ(PermissionsOf(path), expected) << std::oct << old;
    EXPECT_EQ(ReadBytes(path), "new");
    fs::remove(path);
  }
}

TEST(PosixReplacementFile, ANewFileHasThePermissionsOfTheMask) {
  const TemporaryFolder folder;
  const mode_t before = umask(027);
  Replace(folder / "image.bin", "new");
  umask(before);
  EXPECT_EQ(PermissionsOf(folder / "image.bin"), 0640U);
}

TEST(PosixReplacementFile, OfAPipeOrADeviceIsDenied) {
  const TemporaryFolder folder;
  ASSERT_EQ(mkfifo((folder / "pipe").c_str(), 0600), 0);
  for (const fs::path& path : {folder / "pipe", fs::path("/dev/null"), fs::path("/dev/full")}) {
    const auto fault = ReplacingFault(path);
    ASSERT_TRUE(fault) << path;
    EXPECT_EQ(fault->m_cause, CFileException::accessDenied) << path;
    EXPECT_EQ(fault->m_strFileName, Wide(path));
  }
  EXPECT_EQ(folder.Listing(), "pipe\n");
}

TEST(PosixReplacementFile, InAFolderWithoutPermissionIsDenied) {
  const TemporaryFolder folder;
  const fs::path path = folder.Write("image.bin", "old");
  ASSERT_EQ(chmod(folder.Path().c_str(), 0555), 0);
  std::optional<CFileException> fault;
  {
    const Unprivileged user;
    fault = ReplacingFault(path);
  }
  ASSERT_EQ(chmod(folder.Path().c_str(), 0755), 0);
  ASSERT_TRUE(fault);
  EXPECT_EQ(fault->m_cause, CFileException::accessDenied);
  EXPECT_EQ(folder.Listing(), "image.bin\n");
  EXPECT_EQ(ReadBytes(path), "old");
}

TEST(PosixReplacementFile, HasNoNameWhileItIsWritten) {
  const TemporaryFolder folder;
  if (!HoldsUnnamedFiles(folder.Path())) GTEST_SKIP() << "the disk of the tests holds no files without a name";
  folder.Write("image.bin", "old");
  ReplacementFile file(Wide(folder / "image.bin"));
  file.Write("new", 3);
  file.Flush();
  EXPECT_EQ(folder.Listing(), "image.bin\n");
}

TEST(PosixReplacementFile, InAFolderRemovedMeanwhileIsABadPath) {
  const TemporaryFolder folder;
  fs::create_directory(folder / "sub");
  ReplacementFile file(Wide(folder / "sub/image.bin"));
  file.Write("new", 3);
  fs::remove_all(folder / "sub");
  const auto fault = Raised<CFileException>([&] { file.Commit(); });
  ASSERT_TRUE(fault);
  EXPECT_EQ(fault->m_cause, CFileException::badPath);
  EXPECT_EQ(fault->m_strFileName, Wide(folder / "sub/image.bin"));
  EXPECT_EQ(folder.Listing(), "");
}

TEST(PosixReplacementFile, InAFolderThatMayNoLongerBeWrittenToIsDenied) {
  const TemporaryFolder folder;
  folder.Write("image.bin", "old");
  ASSERT_EQ(chmod(folder.Path().c_str(), 0777), 0);
  std::optional<ReplacementFile> file;
  {
    const Unprivileged user;
    file.emplace(Wide(folder / "new.bin"));
    file->Write("new", 3);
  }
  ASSERT_EQ(chmod(folder.Path().c_str(), 0555), 0);
  std::optional<CFileException> fault;
  {
    const Unprivileged user;
    fault = Raised<CFileException>([&] { file->Commit(); });
  }
  ASSERT_EQ(chmod(folder.Path().c_str(), 0755), 0);
  ASSERT_TRUE(fault);
  EXPECT_EQ(fault->m_cause, CFileException::accessDenied);
  EXPECT_EQ(folder.Listing(), "image.bin\n");
}

// Where a file needs a name from its making on, the same holds as everywhere else.

TEST(PosixReplacementFile, WhereEveryFileHasANameIsWrittenBesideItsPlace) {
  const TemporaryFolder folder;
  fs::create_directory(folder / "sub");
  RunWithoutUnnamedFiles([&] {
    ASSERT_FALSE(HoldsUnnamedFiles(folder.Path()));
    ReplacementFile file(Wide(folder / "sub/image.bin"));
    file.Write("new", 3);
    const std::string listing = folder.Listing();
    EXPECT_TRUE(std::string_view(listing).starts_with("sub\nsub/.image.bin.")) << listing;
    EXPECT_TRUE(std::string_view(listing).ends_with(".tmp\n")) << listing;
    file.Commit();
  });
  EXPECT_EQ(folder.Listing(), "sub\nsub/image.bin\n");
  EXPECT_EQ(ReadBytes(folder / "sub/image.bin"), "new");
}

TEST(PosixReplacementFile, WhereEveryFileHasANameVanishesWithoutCommit) {
  const TemporaryFolder folder;
  folder.Write("old.bin", "old");
  RunWithoutUnnamedFiles([&] {
    for (const char* const name : {"new.bin", "old.bin"}) {
      ReplacementFile file(Wide(folder / name));
      file.Write("new", 3);
    }
  });
  EXPECT_EQ(folder.Listing(), "old.bin\n");
  EXPECT_EQ(ReadBytes(folder / "old.bin"), "old");
}

TEST(PosixReplacementFile, WhereEveryFileHasANameKeepsThePermissionsOfTheOldFile) {
  const TemporaryFolder folder;
  const fs::path path = folder.Write("image.bin", "old");
  ASSERT_EQ(chmod(path.c_str(), 0640), 0);
  RunWithoutUnnamedFiles([&] { Replace(path, "new"); });
  EXPECT_EQ(PermissionsOf(path), 0640U);
  EXPECT_EQ(ReadBytes(path), "new");
}

TEST(PosixReplacementFile, WhereEveryFileHasANameIsAsPrivateAsTheOldFileWhileItIsWritten) {
  const TemporaryFolder folder;
  const fs::path path = folder.Write("image.bin", "old");
  ASSERT_EQ(chmod(path.c_str(), 0600), 0);
  RunWithoutUnnamedFiles([&] {
    const ReplacementFile file(Wide(path));
    const auto entries = fs::directory_iterator(folder.Path());
    EXPECT_EQ(std::distance(begin(entries), end(entries)), 2);
    for (const auto& entry : fs::directory_iterator(folder.Path())) {
      EXPECT_EQ(PermissionsOf(entry.path()), 0600U) << entry.path();
    }
  });
}

TEST(PosixReplacementFile, WhereEveryFileHasANameAFolderWithoutPermissionIsDenied) {
  const TemporaryFolder folder;
  ASSERT_EQ(chmod(folder.Path().c_str(), 0555), 0);
  std::optional<CFileException> fault;
  {
    const Unprivileged user;
    RunWithoutUnnamedFiles([&] { fault = ReplacingFault(folder / "image.bin"); });
  }
  ASSERT_TRUE(fault);
  EXPECT_EQ(fault->m_cause, CFileException::accessDenied);
}

TEST(PosixReplacementFile, InAFolderThatMayNotBeReadIsMade) {
  const TemporaryFolder folder;
  ASSERT_EQ(chmod(folder.Path().c_str(), 0333), 0);
  {
    const Unprivileged user;
    EXPECT_NO_THROW(Replace(folder / "image.bin", "new"));
  }
  ASSERT_EQ(chmod(folder.Path().c_str(), 0755), 0);
  EXPECT_EQ(folder.Listing(), "image.bin\n");
}

TEST(PosixReplacementFile, TakesTheLongestNameOfTheSystem) {
  const TemporaryFolder folder;
  const std::string name(255, 'n');
  Replace(folder / name, "new");
  EXPECT_EQ(folder.Listing(), name + '\n');
}

TEST(PosixReplacementFile, TakesANameOfAnyBytes) {
  const TemporaryFolder folder;
  Replace(folder / "\xFF\xC3.bin", "new");
  EXPECT_EQ(folder.Listing(), "\xFF\xC3.bin\n");
}

TEST(PosixReplacementFile, OnAMissingDriveIsABadPath) {
  const auto fault = Raised<CFileException>([] { ReplacementFile file(_T("Q:\\image.bin")); });
  ASSERT_TRUE(fault);
  EXPECT_EQ(fault->m_cause, CFileException::badPath);
  EXPECT_STREQ(fault->what(), "cannot reach the drive or folder of the file \"Q:\\image.bin\"");
}

TEST(PosixReplacementFile, OnAFullDiskLeavesTheOldFileAndNothingElse) {
  platform::PrepareProgram();
  const TemporaryFolder folder;
  const fs::path path = folder.Write("image.bin", "old");
  std::optional<CFileException> fault;
  {
    const ResourceLimit limit(RLIMIT_FSIZE, 100);
    fault = Raised<CFileException>([&] { Replace(path, std::string(200, 'x')); });
  }
  ASSERT_TRUE(fault);
  EXPECT_EQ(fault->m_cause, CFileException::diskFull);
  EXPECT_EQ(fault->m_strFileName, Wide(path));
  EXPECT_EQ(folder.Listing(), "image.bin\n");
  EXPECT_EQ(ReadBytes(path), "old");
}

TEST(PosixFullPath, LeadsAboveWhatALinkPointsTo) {
  const TemporaryFolder folder;
  fs::create_directories(folder / "real/deep");
  fs::create_directory_symlink("real/deep", folder / "link");
  const fs::path real = fs::canonical(folder / "real");
  EXPECT_EQ(platform::PathToUtf8(platform::FullPath(Wide(folder / "link/../a.js"))),
            platform::PathToUtf8(platform::FullPath(Wide(real / "a.js"))));
}

TEST(PosixFullPath, WithoutAWorkingFolderIsABadPath) {
  const fs::path before = fs::current_path();
  std::optional<CFileException> fault;
  {
    const TemporaryFolder folder;
    fs::current_path(folder.Path());
    fs::remove(folder.Path());
    fault = Raised<CFileException>([] { platform::FullPath(_T("a.js")); });
    fs::current_path(before);
  }
  ASSERT_TRUE(fault);
  EXPECT_EQ(fault->m_cause, CFileException::badPath);
  EXPECT_EQ(fault->m_strFileName, _T("a.js"));
}

}  // namespace
}  // namespace ondrel::test
