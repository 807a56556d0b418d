// The framework's exceptions: what they carry, what they say, and who raises them.
#include <gtest/gtest.h>

#include <string>

#include "support/print_text.h"
#include "support/raised.h"

#include <ondrel/platform/framework/exceptions.h>

namespace ondrel::test {
namespace {

TEST(Exceptions, AreRaisedByTheirFunctions) {
  EXPECT_TRUE(Raised<CMemoryException>([] { AfxThrowMemoryException(); }));
  EXPECT_TRUE(Raised<CNotSupportedException>([] { AfxThrowNotSupportedException(); }));
  EXPECT_TRUE(Raised<CInvalidArgException>([] { AfxThrowInvalidArgException(); }));
  const auto ole = Raised<COleException>([] { AfxThrowOleException(E_NOTIMPL); });
  ASSERT_TRUE(ole);
  EXPECT_EQ(ole->m_sc, E_NOTIMPL);
  const auto archive = Raised<CArchiveException>([] { AfxThrowArchiveException(7, _T("a")); });
  ASSERT_TRUE(archive);
  EXPECT_EQ(archive->m_cause, CArchiveException::badSchema);
  EXPECT_EQ(archive->m_strFileName, _T("a"));
  const auto unnamed = Raised<CArchiveException>([] { AfxThrowArchiveException(1); });
  ASSERT_TRUE(unnamed);
  EXPECT_EQ(unnamed->m_strFileName, CString());
  const auto file = Raised<CFileException>([] { AfxThrowFileException(5, 6, _T("a")); });
  ASSERT_TRUE(file);
  EXPECT_EQ(file->m_cause, CFileException::accessDenied);
  EXPECT_EQ(file->m_lOsError, 6);
  EXPECT_EQ(file->m_strFileName, _T("a"));
  const auto bare = Raised<CFileException>([] { AfxThrowFileException(5); });
  ASSERT_TRUE(bare);
  EXPECT_EQ(bare->m_lOsError, -1);
}

TEST(Exceptions, AreAllOfOneFamily) {
  EXPECT_THROW(AfxThrowMemoryException(), CException);
  EXPECT_THROW(AfxThrowArchiveException(1), CException);
  EXPECT_THROW(AfxThrowFileException(1), CException);
  EXPECT_THROW(AfxThrowOleException(E_FAIL), std::exception);
}

TEST(Exceptions, AFailingStatusBecomesItsException) {
  EXPECT_TRUE(Raised<CMemoryException>([] { AtlThrow(E_OUTOFMEMORY); }));
  const HRESULT taken = HRESULT_FROM_WIN32(ERROR_ALREADY_EXISTS);
  const auto ole = Raised<COleException>([=] { AtlThrowIfFailed(taken); });
  ASSERT_TRUE(ole);
  EXPECT_EQ(static_cast<DWORD>(ole->m_sc), 0x800700B7);
  EXPECT_NO_THROW(AtlThrowIfFailed(S_OK));
  EXPECT_NO_THROW(AtlThrowIfFailed(S_FALSE));
}

TEST(Exceptions, SayWhatFailedInOneLine) {
  EXPECT_STREQ(CMemoryException().what(), "out of memory");
  EXPECT_STREQ(CNotSupportedException().what(), "the operation is not supported");
  EXPECT_STREQ(CInvalidArgException().what(), "an argument is not valid");
  EXPECT_STREQ(COleException(static_cast<HRESULT>(0x800700B7)).what(),
               "a call failed with status 0x800700B7: already exists");
  EXPECT_STREQ(COleException(static_cast<HRESULT>(0x800710D3)).what(),
               "a call failed with status 0x800710D3: not empty");
  EXPECT_STREQ(COleException(E_POINTER).what(), "a call failed with status 0x80004003: a null pointer");
  EXPECT_STREQ(COleException(static_cast<HRESULT>(0x8765ABCD)).what(), "a call failed with status 0x8765ABCD");
  EXPECT_STREQ(CArchiveException(3, nullptr).what(), "the data of the archive ends early");
  EXPECT_STREQ(CArchiveException(2, _T("a\\b.bin")).what(),
               "cannot store into the archive \"a\\b.bin\": it is loading");
  EXPECT_STREQ(CFileException(CFileException::fileNotFound, 2, _T("x\\y.js")).what(),
               "cannot find the file \"x\\y.js\"");
  EXPECT_STREQ(CFileException(CFileException::badPath, 3, _T("C:\\y.js")).what(),
               "cannot reach the drive or folder of the file \"C:\\y.js\"");
  EXPECT_STREQ(CFileException(CFileException::badPath, 3, _T("x\\y.js")).what(),
               "cannot reach the folder of the file \"x\\y.js\"");
}

TEST(Exceptions, EveryCauseHasASentenceOfItsOwnThatNamesTheFile) {
  std::string seen;
  for (int cause = CFileException::none; cause <= CFileException::endOfFile; ++cause) {
    const std::string message = CFileException(cause, 1, _T("\u00E4.js")).what();
    EXPECT_NE(message.find("\"\xC3\xA4.js\""), std::string::npos) << "cause " << cause << ": " << message;
    EXPECT_EQ(seen.find(message + '\n'), std::string::npos) << "cause " << cause << ": " << message;
    seen += message + '\n';
  }
  for (int cause = CArchiveException::none; cause <= CArchiveException::badSchema; ++cause) {
    const std::string message = CArchiveException(cause, _T("\u00E4.bin")).what();
    EXPECT_NE(message.find("\"\xC3\xA4.bin\""), std::string::npos) << "cause " << cause << ": " << message;
    EXPECT_EQ(seen.find(message + '\n'), std::string::npos) << "cause " << cause << ": " << message;
    seen += message + '\n';
  }
}

TEST(Exceptions, StayOnOneLineWhateverTheName) {
  EXPECT_STREQ(CFileException(CFileException::fileNotFound, 2, _T("a\nb\x7F")).what(), "cannot find the file \"a?b?\"");
}

TEST(Exceptions, GiveTheirMessageAsWideText) {
  const CFileException fault(CFileException::fileNotFound, 2, _T("\u20AC.js"));
  WCHAR buffer[100] = {};
  EXPECT_TRUE(fault.GetErrorMessage(buffer, 100));
  EXPECT_EQ(CString(buffer), _T("cannot find the file \"\u20AC.js\""));
  EXPECT_TRUE(fault.GetErrorMessage(buffer, 7));
  EXPECT_EQ(CString(buffer), _T("cannot"));
  buffer[0] = 'x';
  EXPECT_FALSE(fault.GetErrorMessage(buffer, 0));
  EXPECT_EQ(buffer[0], 'x');
  EXPECT_FALSE(fault.GetErrorMessage(nullptr, 10));
}

TEST(Exceptions, SystemErrorsHaveTheirCauses) {
  const struct {
    DWORD code;
    int cause;
  } rows[] = {
      {ERROR_SUCCESS, CFileException::none},
      {ERROR_FILE_NOT_FOUND, CFileException::fileNotFound},
      {ERROR_PATH_NOT_FOUND, CFileException::badPath},
      {ERROR_INVALID_NAME, CFileException::badPath},
      {ERROR_FILENAME_EXCED_RANGE, CFileException::badPath},
      {ERROR_TOO_MANY_OPEN_FILES, CFileException::tooManyOpenFiles},
      {ERROR_ACCESS_DENIED, CFileException::accessDenied},
      {ERROR_FILE_EXISTS, CFileException::accessDenied},
      {ERROR_ALREADY_EXISTS, CFileException::accessDenied},
      {ERROR_INVALID_HANDLE, CFileException::invalidFile},
      {ERROR_NEGATIVE_SEEK, CFileException::badSeek},
      {ERROR_READ_FAULT, CFileException::hardIO},
      {ERROR_WRITE_FAULT, CFileException::hardIO},
      {ERROR_GEN_FAILURE, CFileException::hardIO},
      {ERROR_SHARING_VIOLATION, CFileException::sharingViolation},
      {ERROR_LOCK_VIOLATION, CFileException::lockViolation},
      {ERROR_HANDLE_EOF, CFileException::endOfFile},
      {ERROR_DISK_FULL, CFileException::diskFull},
      {ERROR_INVALID_PARAMETER, CFileException::genericException},
      {0xFFFFFFFF, CFileException::genericException},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(CFileException::OsErrorToException(static_cast<LONG>(row.code)), row.cause)
        << "for the code " << row.code;
  }
}

}  // namespace
}  // namespace ondrel::test
