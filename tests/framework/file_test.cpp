// CFile: opening, moving bytes, positions, names, and the errors that people meet.
#include <gtest/gtest.h>

#include <limits>
#include <string>

#include "support/print_text.h"
#include "support/raised.h"
#include "support/temporary_folder.h"

#include <ondrel/platform/framework/file.h>

namespace ondrel::test {
namespace {

CFileException OpeningFault(const CString& path, UINT flags) {
  const auto fault = Raised<CFileException>([&] { CFile(path, flags); });
  if (!fault) throw std::runtime_error("the file was opened: " + platform::ToUtf8(path));
  return *fault;
}

TEST(File, ReadsWhatIsThereAndStopsAtTheEnd) {
  const TemporaryFolder folder;
  CFile file(Wide(folder.Write("a.js", "abcdef")), CFile::modeRead | CFile::shareDenyWrite);
  char bytes[10] = {};
  EXPECT_EQ(file.GetLength(), 6U);
  EXPECT_EQ(file.Read(bytes, 4), 4U);
  EXPECT_EQ(file.GetPosition(), 4U);
  EXPECT_EQ(file.Read(bytes + 4, 6), 2U);
  EXPECT_STREQ(bytes, "abcdef");
  EXPECT_EQ(file.Read(bytes, 6), 0U);
  EXPECT_EQ(file.Read(nullptr, 0), 0U);
}

TEST(File, CreatesAndEmpties) {
  const TemporaryFolder folder;
  const CString path = Wide(folder / "new.bin");
  {
    CFile file(path, CFile::modeCreate | CFile::modeWrite);
    file.Write("abc", 3);
    file.Close();
  }
  EXPECT_EQ(ReadBytes(folder / "new.bin"), "abc");
  { CFile file(path, CFile::modeCreate | CFile::modeWrite); }
  EXPECT_EQ(ReadBytes(folder / "new.bin"), "");
}

TEST(File, CreatesWithoutEmptyingWhenAsked) {
  const TemporaryFolder folder;
  const CString path = Wide(folder.Write("a.bin", "abc"));
  {
    CFile file(path, CFile::modeCreate | CFile::modeNoTruncate | CFile::modeReadWrite);
    EXPECT_EQ(file.Seek(0, CFile::end), 3U);
    file.Write("d", 1);
  }
  EXPECT_EQ(ReadBytes(folder / "a.bin"), "abcd");
  { CFile file(Wide(folder / "b.bin"), CFile::modeCreate | CFile::modeNoTruncate | CFile::modeWrite); }
  EXPECT_EQ(ReadBytes(folder / "b.bin"), "");
}

TEST(File, BothSeparatorsLeadIntoFolders) {
  const TemporaryFolder folder;
  folder.Write("sub/deep/a.js", "x");
  const CString root = Wide(folder.Path());
  for (const LPCWSTR name : {_T("\\sub\\deep\\a.js"), _T("/sub/deep/a.js"), _T("\\sub/deep\\a.js")}) {
    CFile file(root + name, CFile::modeRead);
    EXPECT_EQ(file.GetLength(), 1U) << platform::ToUtf8(name);
  }
}

TEST(File, SeeksFromTheStartThePositionAndTheEnd) {
  const TemporaryFolder folder;
  CFile file(Wide(folder.Write("a.bin", "abcdef")), CFile::modeRead);
  EXPECT_EQ(file.Seek(4, CFile::begin), 4U);
  EXPECT_EQ(file.Seek(-1, CFile::current), 3U);
  EXPECT_EQ(file.Seek(-6, CFile::end), 0U);
  EXPECT_EQ(file.Seek(10, CFile::begin), 10U);
  const auto fault = Raised<CFileException>([&] { file.Seek(-1, CFile::begin); });
  ASSERT_TRUE(fault);
  EXPECT_EQ(fault->m_cause, CFileException::badSeek);
  EXPECT_EQ(file.GetPosition(), 10U);
  EXPECT_TRUE(Raised<CFileException>([&] { file.Seek(0, 3); }));
}

TEST(File, ChangesItsLength) {
  const TemporaryFolder folder;
  CFile file(Wide(folder.Write("a.bin", "abcdef")), CFile::modeReadWrite);
  file.SetLength(2);
  EXPECT_EQ(file.GetLength(), 2U);
  file.SetLength(3);
  file.Close();
  EXPECT_EQ(ReadBytes(folder / "a.bin"), std::string("ab\0", 3));
}

TEST(File, RefusesLengthsBeyondEveryDisk) {
  const TemporaryFolder folder;
  CFile file(Wide(folder.Write("a.bin", "abc")), CFile::modeReadWrite);
  const auto fault = Raised<CFileException>([&] { file.SetLength(std::numeric_limits<ULONGLONG>::max()); });
  ASSERT_TRUE(fault);
  EXPECT_EQ(fault->m_cause, CFileException::diskFull);
  EXPECT_EQ(file.GetLength(), 3U);
}

TEST(File, KeepsThePathAsGivenAndTellsItsParts) {
  const TemporaryFolder folder;
  folder.Write("sub/menu.min.js", "");
  const CString path = Wide(folder.Path()) + _T("\\sub/menu.min.js");
  CFile file(path, CFile::modeRead);
  EXPECT_EQ(file.GetFilePath(), path);
  EXPECT_EQ(file.GetFileName(), _T("menu.min.js"));
  EXPECT_EQ(file.GetFileTitle(), _T("menu.min"));
  file.SetFilePath(_T("elsewhere\\.profile"));
  EXPECT_EQ(file.GetFilePath(), _T("elsewhere\\.profile"));
  EXPECT_EQ(file.GetFileName(), _T(".profile"));
  EXPECT_EQ(file.GetFileTitle(), _T(".profile"));
  file.SetFilePath(_T("plain"));
  EXPECT_EQ(file.GetFileName(), _T("plain"));
  EXPECT_EQ(file.GetFileTitle(), _T("plain"));
  EXPECT_TRUE(Raised<CInvalidArgException>([&] { file.SetFilePath(nullptr); }));
  EXPECT_EQ(file.GetFilePath(), _T("plain"));
}

TEST(File, AMissingFileIsNotFound) {
  const TemporaryFolder folder;
  const CString path = Wide(folder / "missing.js");
  const CFileException fault = OpeningFault(path, CFile::modeRead);
  EXPECT_EQ(fault.m_cause, CFileException::fileNotFound);
  EXPECT_EQ(fault.m_lOsError, 2);
  EXPECT_EQ(fault.m_strFileName, path);
  EXPECT_EQ(std::string(fault.what()), "cannot find the file \"" + (folder / "missing.js").string() + "\"");
}

TEST(File, AMissingFolderIsABadPath) {
  const TemporaryFolder folder;
  for (const UINT flags : {UINT{CFile::modeRead}, CFile::modeCreate | CFile::modeWrite}) {
    const CFileException fault = OpeningFault(Wide(folder / "nowhere/a.js"), flags);
    EXPECT_EQ(fault.m_cause, CFileException::badPath);
    EXPECT_EQ(fault.m_lOsError, 3);
  }
}

TEST(File, AFileInsideAFileIsABadPath) {
  const TemporaryFolder folder;
  folder.Write("a.js", "x");
  EXPECT_EQ(OpeningFault(Wide(folder / "a.js/b.js"), CFile::modeRead).m_cause, CFileException::badPath);
}

TEST(File, AFolderIsDenied) {
  const TemporaryFolder folder;
  for (const UINT flags : {UINT{CFile::modeRead}, UINT{CFile::modeWrite}, CFile::modeCreate | CFile::modeWrite}) {
    const CFileException fault = OpeningFault(Wide(folder.Path()), flags);
    EXPECT_EQ(fault.m_cause, CFileException::accessDenied) << "with the flags " << flags;
    EXPECT_EQ(fault.m_lOsError, 5);
  }
}

TEST(File, AnEmptyPathIsABadPath) {
  EXPECT_EQ(OpeningFault(CString(), CFile::modeRead).m_cause, CFileException::badPath);
}

TEST(File, RefusesArgumentsThatAreNone) {
  EXPECT_TRUE(Raised<CInvalidArgException>([] { CFile(nullptr, CFile::modeRead); }));
  EXPECT_TRUE(Raised<CInvalidArgException>([] { CFile(_T("a"), CFile::modeWrite | CFile::modeReadWrite); }));
}

TEST(File, OpenExplainsItsFailureAndLeavesNoFileOpen) {
  const TemporaryFolder folder;
  CFile file(Wide(folder.Write("a.js", "x")), CFile::modeRead);
  std::unique_ptr<CFileException> error;
  EXPECT_FALSE(file.Open(Wide(folder / "missing.js"), CFile::modeRead, &error));
  ASSERT_NE(error, nullptr);
  EXPECT_EQ(error->m_cause, CFileException::fileNotFound);
  EXPECT_EQ(error->m_lOsError, 2);
  EXPECT_EQ(error->m_strFileName, Wide(folder / "missing.js"));
  EXPECT_FALSE(file.Open(Wide(folder / "missing.js"), CFile::modeRead));
  EXPECT_TRUE(Raised<CFileException>([&] { file.GetLength(); }));
}

TEST(File, OpenTakesAnotherFile) {
  const TemporaryFolder folder;
  CFile file(Wide(folder.Write("a.js", "x")), CFile::modeRead);
  EXPECT_TRUE(file.Open(Wide(folder.Write("b.js", "abc")), CFile::modeRead));
  EXPECT_EQ(file.GetLength(), 3U);
  EXPECT_EQ(file.GetFileName(), _T("b.js"));
}

TEST(File, WithoutAFileEveryUseIsInvalid) {
  CFile file;
  char byte = 0;
  const auto expectInvalid = [](const char* use, auto call) {
    const auto fault = Raised<CFileException>(call);
    ASSERT_TRUE(fault) << use;
    EXPECT_EQ(fault->m_cause, CFileException::invalidFile) << use;
  };
  expectInvalid("GetPosition", [&] { file.GetPosition(); });
  expectInvalid("GetLength", [&] { file.GetLength(); });
  expectInvalid("SetLength", [&] { file.SetLength(0); });
  expectInvalid("Seek", [&] { file.Seek(0, CFile::begin); });
  expectInvalid("Read", [&] { file.Read(&byte, 1); });
  expectInvalid("Write", [&] { file.Write(&byte, 1); });
  expectInvalid("Flush", [&] { file.Flush(); });
  expectInvalid("LockRange", [&] { file.LockRange(0, 1); });
  expectInvalid("UnlockRange", [&] { file.UnlockRange(0, 1); });
  expectInvalid("Duplicate", [&] { file.Duplicate(); });
  EXPECT_NO_THROW(file.Close());
  EXPECT_NO_THROW(file.Abort());
}

TEST(File, UseAgainstTheAccessIsDenied) {
  const TemporaryFolder folder;
  const CString path = Wide(folder.Write("a.js", "abc"));
  char byte = 0;
  const auto expectDenied = [&](const char* use, auto call) {
    const auto fault = Raised<CFileException>(call);
    ASSERT_TRUE(fault) << use;
    EXPECT_EQ(fault->m_cause, CFileException::accessDenied) << use;
    EXPECT_EQ(fault->m_strFileName, path) << use;
  };
  CFile reading(path, CFile::modeRead | CFile::shareDenyNone);
  expectDenied("Write", [&] { reading.Write(&byte, 1); });
  CFile writing(path, CFile::modeWrite | CFile::shareDenyNone);
  expectDenied("Read", [&] { writing.Read(&byte, 1); });
  EXPECT_EQ(ReadBytes(folder / "a.js"), "abc");
}

TEST(File, ResizingAFileOpenedToBeReadIsDenied) {
  const TemporaryFolder folder;
  CFile file(Wide(folder.Write("a.js", "abc")), CFile::modeRead | CFile::shareDenyNone);
  const auto fault = Raised<CFileException>([&] { file.SetLength(0); });
  ASSERT_TRUE(fault);
  EXPECT_EQ(fault->m_cause, CFileException::accessDenied);
  EXPECT_EQ(ReadBytes(folder / "a.js"), "abc");
}

TEST(File, MayBeSharedForWritingAlone) {
  const TemporaryFolder folder;
  const CString path = Wide(folder / "a.bin");
  CFile first(path, CFile::modeCreate | CFile::modeWrite | CFile::shareDenyRead);
  CFile second(path, CFile::modeWrite | CFile::shareDenyRead);
  first.Write("ab", 2);
  second.Write("x", 1);
  first.Close();
  second.Close();
  EXPECT_EQ(ReadBytes(folder / "a.bin"), "xb");
}

TEST(File, AWayOfSharingThatThereIsNotIsAnInvalidArgument) {
  constexpr UINT kNoSharing = 0x50;
  const TemporaryFolder folder;
  const CString path = Wide(folder.Write("a.bin", "a"));
  EXPECT_THROW(CFile(path, CFile::modeRead | kNoSharing), CInvalidArgException);
}

TEST(File, ADuplicateSharesThePosition) {
  const TemporaryFolder folder;
  CFile file(Wide(folder.Write("a.js", "abcdef")), CFile::modeRead);
  const std::unique_ptr<CFile> copy = file.Duplicate();
  EXPECT_EQ(copy->GetFilePath(), file.GetFilePath());
  file.Seek(4, CFile::begin);
  EXPECT_EQ(copy->GetPosition(), 4U);
  file.Close();
  char bytes[3] = {};
  EXPECT_EQ(copy->Read(bytes, 2), 2U);
  EXPECT_STREQ(bytes, "ef");
}

TEST(File, ALockedRangeIsRefusedToOtherOpenings) {
  const TemporaryFolder folder;
  const CString path = Wide(folder.Write("a.bin", "abcdef"));
  CFile first(path, CFile::modeReadWrite | CFile::shareDenyNone);
  CFile second(path, CFile::modeReadWrite | CFile::shareDenyNone);
  first.LockRange(1, 2);
  const auto fault = Raised<CFileException>([&] { second.LockRange(2, 4); });
  ASSERT_TRUE(fault);
  EXPECT_EQ(fault->m_cause, CFileException::lockViolation);
  EXPECT_NO_THROW(second.LockRange(3, 1));
  first.UnlockRange(1, 2);
  EXPECT_NO_THROW(second.LockRange(1, 2));
}

TEST(File, OffersNoMemoryOfItsOwn) {
  CFile file;
  void* start = &file;
  for (const UINT command : {CFile::bufferRead, CFile::bufferWrite, CFile::bufferCommit, CFile::bufferCheck}) {
    EXPECT_EQ(file.GetBufferPtr(command, 10, &start, nullptr), 0U);
    EXPECT_EQ(start, &file);
  }
}

TEST(File, FlushAndCloseSucceedOnAnOpenFile) {
  const TemporaryFolder folder;
  CFile file(Wide(folder / "a.bin"), CFile::modeCreate | CFile::modeWrite | CFile::shareDenyWrite);
  file.Write("abc", 3);
  file.Flush();
  EXPECT_EQ(ReadBytes(folder / "a.bin"), "abc");
  file.Close();
  EXPECT_TRUE(Raised<CFileException>([&] { file.Write("d", 1); }));
}

}  // namespace
}  // namespace ondrel::test
