// Files of Windows: what sharing refuses, names that are no files, paths of any length, and the system's calls below.
#include <gtest/gtest.h>

#include <windows.h>

#include <sddl.h>

#include "support/print_text.h"
#include "support/raised.h"
#include "support/temporary_folder.h"

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

TEST(WindowsFile, SharesAsItsFlagsSay) {
  const TemporaryFolder folder;
  const CString path = Wide(folder.Write("a.bin", "abc"));
  struct Case {
    UINT sharing;
    bool mayRead;
    bool mayWrite;
  };
  for (const Case& c : {Case{CFile::shareCompat, false, false}, Case{CFile::shareExclusive, false, false},
                        Case{CFile::shareDenyWrite, true, false}, Case{CFile::shareDenyRead, false, true},
                        Case{CFile::shareDenyNone, true, true}}) {
    const CFile first(path, CFile::modeReadWrite | c.sharing);
    for (const bool isWrite : {false, true}) {
      const UINT mode = isWrite ? CFile::modeWrite : CFile::modeRead;
      const auto fault = Raised<CFileException>([&] { CFile(path, mode | CFile::shareDenyNone); });
      EXPECT_EQ(!fault, isWrite ? c.mayWrite : c.mayRead) << c.sharing;
      if (fault) {
        EXPECT_EQ(fault->m_cause, CFileException::sharingViolation) << c.sharing;
        EXPECT_EQ(fault->m_lOsError, 32) << c.sharing;
      }
    }
  }
}

TEST(WindowsFile, ADeviceIsDenied) {
  for (const LPCWSTR path : {_T("NUL"), _T("\\\\.\\NUL")}) {
    EXPECT_EQ(OpeningError(path), ERROR_ACCESS_DENIED) << ToUtf8(path);
    EXPECT_EQ(OpeningError(path, OsAccess::write, OsCreation::createOrEmpty), ERROR_ACCESS_DENIED) << ToUtf8(path);
  }
}

TEST(WindowsFile, ADriveThatIsNotThereIsABadPath) {
  const auto fault = Raised<CFileException>([] { CFile(_T("Q:\\a.js"), CFile::modeRead); });
  ASSERT_TRUE(fault);
  EXPECT_EQ(fault->m_cause, CFileException::badPath);
  EXPECT_EQ(fault->m_lOsError, 3);
}

TEST(WindowsFile, APathMayBeLongerThanMostCallsTake) {
  const TemporaryFolder folder;
  const CString name('n', 200);
  const CString outer = _T("\\\\?\\") + Wide(folder.Path()) + _T("\\") + name;
  const CString inner = outer + _T("\\") + name;
  ASSERT_TRUE(CreateDirectoryW(outer, nullptr));
  ASSERT_TRUE(CreateDirectoryW(inner, nullptr));
  const CString path = inner.Mid(4) + _T("/a.bin");
  CFile file(path, CFile::modeCreate | CFile::modeReadWrite);
  file.Write("abc", 3);
  file.Close();
  EXPECT_EQ(file.GetFilePath(), path);
  CFile again(path, CFile::modeRead);
  EXPECT_EQ(again.GetLength(), 3U);
  again.Close();
  EXPECT_EQ(RemoveOsFile(path), ERROR_SUCCESS);
  EXPECT_EQ(OpeningError(path), ERROR_FILE_NOT_FOUND);
  EXPECT_TRUE(RemoveDirectoryW(inner));
  EXPECT_TRUE(RemoveDirectoryW(outer));
}

TEST(WindowsFile, IsNotHandedOnToOtherPrograms) {
  const TemporaryFolder folder;
  OsFile file = kNoOsFile;
  OsFile copy = kNoOsFile;
  ASSERT_EQ(OpenOsFile(Wide(folder.Write("a", "")), OsAccess::read, OsSharing::everything, OsCreation::mustExist, file),
            ERROR_SUCCESS);
  ASSERT_EQ(DuplicateOsFile(file, copy), ERROR_SUCCESS);
  for (const OsFile handle : {file, copy}) {
    DWORD flags = HANDLE_FLAG_INHERIT;
    EXPECT_TRUE(GetHandleInformation(reinterpret_cast<HANDLE>(handle), &flags));
    EXPECT_EQ(flags & HANDLE_FLAG_INHERIT, 0U);
    EXPECT_EQ(CloseOsFile(handle), ERROR_SUCCESS);
  }
  EXPECT_EQ(CloseOsFile(copy), ERROR_INVALID_HANDLE);
}

TEST(WindowsFile, CreateNewRefusesAFileThatIsThere) {
  const TemporaryFolder folder;
  const CString path = Wide(folder / "a");
  EXPECT_EQ(OpeningError(path, OsAccess::write, OsCreation::createNew), ERROR_SUCCESS);
  EXPECT_EQ(OpeningError(path, OsAccess::write, OsCreation::createNew), ERROR_FILE_EXISTS);
}

TEST(WindowsFile, RemovesAndReplaces) {
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

std::optional<CFileException> ReplacingFault(const CString& path) {
  return Raised<CFileException>([&] {
    ReplacementFile file(path);
    file.Write("new", 3);
    file.Commit();
  });
}

TEST(WindowsReplacementFile, OfADeviceIsDenied) {
  const auto fault = ReplacingFault(_T("NUL"));
  ASSERT_TRUE(fault);
  EXPECT_EQ(fault->m_cause, CFileException::accessDenied);
  EXPECT_EQ(fault->m_strFileName, _T("NUL"));
}

TEST(WindowsReplacementFile, OfAReadOnlyFileIsDenied) {
  const TemporaryFolder folder;
  const CString path = Wide(folder.Write("image.bin", "old"));
  ASSERT_TRUE(SetFileAttributesW(path, FILE_ATTRIBUTE_READONLY));
  const auto fault = ReplacingFault(path);
  ASSERT_TRUE(SetFileAttributesW(path, FILE_ATTRIBUTE_NORMAL));
  ASSERT_TRUE(fault);
  EXPECT_EQ(fault->m_cause, CFileException::accessDenied);
  EXPECT_EQ(fault->m_strFileName, path);
  EXPECT_EQ(folder.Listing(), "image.bin\n");
  EXPECT_EQ(ReadBytes(folder / "image.bin"), "old");
}

TEST(WindowsReplacementFile, OfAFileInUseLeavesIt) {
  const TemporaryFolder folder;
  const CString path = Wide(folder.Write("image.bin", "old"));
  std::optional<CFileException> fault;
  {
    const CFile user(path, CFile::modeRead | CFile::shareDenyWrite);
    fault = ReplacingFault(path);
  }
  ASSERT_TRUE(fault);
  EXPECT_EQ(fault->m_strFileName, path);
  EXPECT_EQ(folder.Listing(), "image.bin\n");
  EXPECT_EQ(ReadBytes(folder / "image.bin"), "old");
}

TEST(WindowsReplacementFile, KeepsTheHiddenAttributeOfTheOldFile) {
  const TemporaryFolder folder;
  const CString path = Wide(folder.Write("image.bin", "old"));
  ASSERT_TRUE(SetFileAttributesW(path, FILE_ATTRIBUTE_HIDDEN));
  ASSERT_FALSE(ReplacingFault(path));
  EXPECT_EQ(ReadBytes(folder / "image.bin"), "new");
  EXPECT_NE(GetFileAttributesW(path) & FILE_ATTRIBUTE_HIDDEN, 0U);
}

// The rules of a file in the system's text form.
std::string AccessRules(const CString& path) {
  DWORD size = 0;
  GetFileSecurityW(path, DACL_SECURITY_INFORMATION, nullptr, 0, &size);
  std::vector<BYTE> rules(size);
  if (!GetFileSecurityW(path, DACL_SECURITY_INFORMATION, rules.data(), size, &size)) return "none";
  LPWSTR text = nullptr;
  if (!ConvertSecurityDescriptorToStringSecurityDescriptorW(rules.data(), SDDL_REVISION_1, DACL_SECURITY_INFORMATION,
                                                            &text, nullptr)) {
    return "unknown";
  }
  const std::string utf8 = ToUtf8(text);
  LocalFree(text);
  return utf8;
}

TEST(WindowsReplacementFile, KeepsTheAccessRulesOfTheOldFile) {
  const TemporaryFolder folder;
  const CString path = Wide(folder.Write("image.bin", "old"));
  const std::string usual = AccessRules(path);
  PSECURITY_DESCRIPTOR closed = nullptr;
  ASSERT_TRUE(
      ConvertStringSecurityDescriptorToSecurityDescriptorW(_T("D:P(A;;FA;;;BA)"), SDDL_REVISION_1, &closed, nullptr));
  const BOOL isSet = SetFileSecurityW(path, DACL_SECURITY_INFORMATION, closed);
  LocalFree(closed);
  ASSERT_TRUE(isSet);
  const std::string before = AccessRules(path);
  ASSERT_NE(before, usual);
  ASSERT_FALSE(ReplacingFault(path));
  EXPECT_EQ(AccessRules(path), before);
  EXPECT_EQ(ReadBytes(folder / "image.bin"), "new");
}

TEST(WindowsReplacementFile, TakesTheLongestNameOfTheSystem) {
  const TemporaryFolder folder;
  const CString path = Wide(folder.Path()) + _T("\\") + CString('n', 255);
  ASSERT_FALSE(ReplacingFault(path));
  CFile file(path, CFile::modeRead);
  EXPECT_EQ(file.GetLength(), 3U);
  file.Close();
  EXPECT_EQ(RemoveOsFile(path), ERROR_SUCCESS);
  EXPECT_EQ(folder.Listing(), "");
}

TEST(WindowsReplacementFile, OnAMissingDriveIsABadPath) {
  const auto fault = Raised<CFileException>([] { ReplacementFile file(_T("Q:\\image.bin")); });
  ASSERT_TRUE(fault);
  EXPECT_EQ(fault->m_cause, CFileException::badPath);
  EXPECT_STREQ(fault->what(), "cannot reach the drive or folder of the file \"Q:\\image.bin\"");
}

}  // namespace
}  // namespace ondrel::test
