// Files where the system is not Windows: what a path becomes, what is no regular file, permissions, a full disk.
#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>
#include <csignal>
#include <thread>

#include "support/posix/process.h"
#include "support/print_text.h"
#include "support/raised.h"
#include "support/temporary_folder.h"

#include <ondrel/platform/framework/archive.h>
#include <ondrel/platform/os/file.h>
#include <ondrel/platform/program.h>

namespace ondrel::test {
namespace {

using namespace platform;

DWORD OpeningError(const CString& path, OsAccess access = OsAccess::read, OsCreation creation = OsCreation::mustExist) {
  OsFile file = kNoOsFile;
  const DWORD error = OpenOsFile(path, access, OsSharing::everything, creation, file);
  if (error == ERROR_SUCCESS) CloseOsFile(file);
  return error;
}

CString WithUnit(const TemporaryFolder& folder, unsigned unit) {
  CString path = Wide(folder / "a");
  path += static_cast<WCHAR>(unit);
  return path;
}

TEST(PosixPath, LoneSurrogatesThatCarryBytesNameFilesOfThoseBytes) {
  const TemporaryFolder folder;
  folder.Write("a\xFF", "x");
  folder.Write("a\x80", "x");
  EXPECT_EQ(OpeningError(WithUnit(folder, 0xDCFF)), ERROR_SUCCESS);
  EXPECT_EQ(OpeningError(WithUnit(folder, 0xDC80)), ERROR_SUCCESS);
}

TEST(PosixPath, OtherLoneSurrogatesAreInvalidNames) {
  const TemporaryFolder folder;
  for (const unsigned unit : {0xD800U, 0xDBFFU, 0xDC00U, 0xDC7FU, 0xDD00U, 0xDFFFU}) {
    EXPECT_EQ(OpeningError(WithUnit(folder, unit)), ERROR_INVALID_NAME) << std::hex << unit;
    EXPECT_EQ(OpeningError(WithUnit(folder, unit), OsAccess::write, OsCreation::createOrEmpty), ERROR_INVALID_NAME);
  }
  EXPECT_EQ(folder.Listing(), "");
}

TEST(PosixPath, WideNamesAreUtf8) {
  const TemporaryFolder folder;
  folder.Write("\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80", "x");
  EXPECT_EQ(OpeningError(Wide(folder.Path()) + _T("\\\u00E9\u20AC\U0001F600")), ERROR_SUCCESS);
}

TEST(PosixPath, ADriveLetterIsAPathThatIsNotFound) {
  for (const LPCWSTR path : {_T("C:\\a.js"), _T("c:/a.js"), _T("Z:a.js"), _T("q:")}) {
    EXPECT_EQ(OpeningError(path), ERROR_PATH_NOT_FOUND) << ToUtf8(path);
    EXPECT_EQ(OpeningError(path, OsAccess::write, OsCreation::createOrEmpty), ERROR_PATH_NOT_FOUND);
  }
}

TEST(PosixPath, OnlyOneLetterInFrontIsADrive) {
  const TemporaryFolder folder;
  folder.Write("ab:c", "x");
  folder.Write("C:x", "x");
  EXPECT_EQ(OpeningError(Wide(folder / "ab:c")), ERROR_SUCCESS);
  EXPECT_EQ(OpeningError(Wide(folder / "C:x")), ERROR_SUCCESS);
}

TEST(PosixFile, WhatIsNoRegularFileIsDeniedWithoutWaiting) {
  const TemporaryFolder folder;
  const std::string pipe = folder / "pipe";
  ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
  for (const OsAccess access : {OsAccess::read, OsAccess::write, OsAccess::readWrite}) {
    EXPECT_EQ(OpeningError(Wide(pipe), access), ERROR_ACCESS_DENIED);
    EXPECT_EQ(OpeningError(Wide(folder.Path()), access), ERROR_ACCESS_DENIED);
    EXPECT_EQ(OpeningError(_T("/dev/null"), access), ERROR_ACCESS_DENIED);
  }
  EXPECT_EQ(OpeningError(Wide(pipe), OsAccess::write, OsCreation::createOrEmpty), ERROR_ACCESS_DENIED);
  EXPECT_EQ(OpeningError(_T("/dev/full"), OsAccess::write, OsCreation::createOrEmpty), ERROR_ACCESS_DENIED);
}

TEST(PosixFile, RefusalsLeaveNoDescriptorOpen) {
  const TemporaryFolder folder;
  const int before = dup(0);
  close(before);
  for (int round = 0; round < 10; ++round) OpeningError(Wide(folder.Path()));
  const int after = dup(0);
  close(after);
  EXPECT_EQ(after, before);
}

TEST(PosixFile, DescriptorsAreNotHandedToOtherPrograms) {
  const TemporaryFolder folder;
  OsFile file = kNoOsFile;
  OsFile copy = kNoOsFile;
  ASSERT_EQ(OpenOsFile(Wide(folder.Write("a", "")), OsAccess::read, OsSharing::everything, OsCreation::mustExist, file),
            ERROR_SUCCESS);
  ASSERT_EQ(DuplicateOsFile(file, copy), ERROR_SUCCESS);
  EXPECT_NE(fcntl(static_cast<int>(file), F_GETFD) & FD_CLOEXEC, 0);
  EXPECT_NE(fcntl(static_cast<int>(copy), F_GETFD) & FD_CLOEXEC, 0);
  EXPECT_EQ(CloseOsFile(file), ERROR_SUCCESS);
  EXPECT_EQ(CloseOsFile(copy), ERROR_SUCCESS);
  EXPECT_EQ(CloseOsFile(copy), ERROR_INVALID_HANDLE);
}

TEST(PosixFile, WithoutPermissionIsDenied) {
  const TemporaryFolder folder;
  const std::string path = folder.Write("secret.js", "x");
  ASSERT_EQ(chmod(path.c_str(), 0), 0);
  ASSERT_EQ(chmod(folder.Path().c_str(), 0555), 0);
  {
    const Unprivileged user;
    EXPECT_EQ(OpeningError(Wide(path)), ERROR_ACCESS_DENIED);
    EXPECT_EQ(OpeningError(Wide(folder / "new.js"), OsAccess::write, OsCreation::createOrEmpty), ERROR_ACCESS_DENIED);
    EXPECT_EQ(RemoveOsFile(Wide(path)), ERROR_ACCESS_DENIED);
  }
  ASSERT_EQ(chmod(folder.Path().c_str(), 0755), 0);
}

TEST(PosixFile, CreateNewRefusesAFileThatIsThere) {
  const TemporaryFolder folder;
  const CString path = Wide(folder / "a");
  EXPECT_EQ(OpeningError(path, OsAccess::write, OsCreation::createNew), ERROR_SUCCESS);
  EXPECT_EQ(OpeningError(path, OsAccess::write, OsCreation::createNew), ERROR_FILE_EXISTS);
}

TEST(PosixFile, TooManyOpenFilesAreToldApart) {
  const TemporaryFolder folder;
  const CString path = Wide(folder.Write("a", ""));
  const int next = dup(0);
  close(next);
  const ResourceLimit limit(RLIMIT_NOFILE, static_cast<rlim_t>(next));
  EXPECT_EQ(OpeningError(path), ERROR_TOO_MANY_OPEN_FILES);
}

TEST(PosixFile, ANameThatIsTooLongIsToldApart) {
  const TemporaryFolder folder;
  EXPECT_EQ(OpeningError(Wide(folder / std::string(300, 'x'))), ERROR_FILENAME_EXCED_RANGE);
}

TEST(PosixFile, RemovesAndReplaces) {
  const TemporaryFolder folder;
  const CString from = Wide(folder.Write("from", "new"));
  const CString to = Wide(folder.Write("to", "old"));
  EXPECT_EQ(ReplaceOsFile(from, to), ERROR_SUCCESS);
  EXPECT_EQ(ReadBytes(folder / "to"), "new");
  EXPECT_EQ(ReplaceOsFile(from, to), ERROR_FILE_NOT_FOUND);
  EXPECT_EQ(ReplaceOsFile(to, Wide(folder / "nowhere/to")), ERROR_PATH_NOT_FOUND);
  EXPECT_EQ(RemoveOsFile(from), ERROR_FILE_NOT_FOUND);
  EXPECT_EQ(RemoveOsFile(Wide(folder / "nowhere/to")), ERROR_PATH_NOT_FOUND);
  EXPECT_EQ(RemoveOsFile(to), ERROR_SUCCESS);
  EXPECT_EQ(folder.Listing(), "");
}

TEST(PosixFile, FoldersInThePlaceOfAFileSayWhatIsWrong) {
  const TemporaryFolder folder;
  folder.Write("full/a", "");
  std::filesystem::create_directory(folder / "empty");
  EXPECT_EQ(ReplaceOsFile(Wide(folder / "empty"), Wide(folder / "full")), ERROR_NOT_EMPTY);
  EXPECT_EQ(ReplaceOsFile(Wide(folder / "full"), Wide(folder / "full/sub")), ERROR_INVALID_PARAMETER);
  EXPECT_EQ(folder.Listing(), "empty\nfull\nfull/a\n");
}

TEST(PosixFile, AFullDiskIsAnErrorOfTheWrite) {
  PrepareProgram();
  const TemporaryFolder folder;
  CFile file(Wide(folder / "a.bin"), CFile::modeCreate | CFile::modeWrite);
  const std::string bytes(1000, 'x');
  std::optional<CFileException> fault;
  {
    const ResourceLimit limit(RLIMIT_FSIZE, 1500);
    file.Write(bytes.data(), 1000);
    fault = Raised<CFileException>([&] { file.Write(bytes.data(), 1000); });
  }
  ASSERT_TRUE(fault);
  EXPECT_EQ(fault->m_cause, CFileException::diskFull);
  EXPECT_EQ(fault->m_lOsError, 112);
  EXPECT_EQ(file.GetLength(), 1500U);
}

TEST(PosixFile, AFullDiskEndsAnArchiveWithTheFilesName) {
  PrepareProgram();
  const TemporaryFolder folder;
  CFile file(Wide(folder / "a.bin"), CFile::modeCreate | CFile::modeWrite);
  std::optional<CFileException> fault;
  {
    const ResourceLimit limit(RLIMIT_FSIZE, 100);
    CArchive archive(&file, CArchive::store, 64);
    fault = Raised<CFileException>([&] {
      for (int count = 0; count < 100; ++count) archive << LONGLONG{count};
      archive.Close();
    });
  }
  ASSERT_TRUE(fault);
  EXPECT_EQ(fault->m_cause, CFileException::diskFull);
  EXPECT_EQ(fault->m_strFileName, Wide(folder / "a.bin"));
}

TEST(PosixLastError, BelongsToItsThread) {
  SetLastError(5);
  DWORD other = 1;
  std::thread([&other] {
    other = GetLastError();
    SetLastError(7);
  }).join();
  EXPECT_EQ(other, ERROR_SUCCESS);
  EXPECT_EQ(GetLastError(), 5U);
}

}  // namespace
}  // namespace ondrel::test
