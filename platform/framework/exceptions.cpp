// The framework's exceptions: what they say, and the functions that raise them.
#include <ondrel/platform/framework/exceptions.h>

#include <algorithm>

#include <ondrel/platform/com.h>
#include <ondrel/platform/drive_letter.h>

using ondrel::platform::HasDriveLetter;
using ondrel::platform::ToUtf8;

namespace {

// A file name for a message of one line: ` "name"`, or nothing when there is no name.
std::string QuotedName(LPCTSTR fileName) {
  if (fileName == nullptr || *fileName == 0) return {};
  std::string name = ToUtf8(fileName);
  const auto isControl = [](char byte) { return (byte >= 0 && byte < 0x20) || byte == 0x7F; };
  std::replace_if(name.begin(), name.end(), isControl, '?');
  return " \"" + name + '"';
}

// What a status means, for those that people meet.
const char* StatusMeaning(HRESULT status) {
  switch (status) {
    case E_NOTIMPL:
      return "not implemented";
    case E_NOINTERFACE:
      return "no such interface";
    case E_POINTER:
      return "a null pointer";
    case E_OUTOFMEMORY:
      return "out of memory";
    case E_INVALIDARG:
      return "an argument is not valid";
    case DISP_E_TYPEMISMATCH:
      return "the value is of another type";
    case DISP_E_OVERFLOW:
      return "the value is out of range";
    case STG_E_MEDIUMFULL:
      return "the disk is full";
    case REGDB_E_CLASSNOTREG:
      return "the class is not registered";
    case HRESULT_FROM_WIN32(ERROR_FILE_NOT_FOUND):
      return "file not found";
    case HRESULT_FROM_WIN32(ERROR_PATH_NOT_FOUND):
      return "path not found";
    case HRESULT_FROM_WIN32(ERROR_ACCESS_DENIED):
      return "access denied";
    case HRESULT_FROM_WIN32(ERROR_INVALID_DATA):
      return "the data is missing or malformed";
    case HRESULT_FROM_WIN32(ERROR_ALREADY_EXISTS):
      return "already exists";
    case HRESULT_FROM_WIN32(ERROR_NOT_FOUND):
      return "not found";
    case HRESULT_FROM_WIN32(ERROR_NOT_EMPTY):
      return "not empty";
    default:
      return nullptr;
  }
}

std::string StatusMessage(HRESULT status) {
  constexpr char kDigits[] = "0123456789ABCDEF";
  std::string message = "a call failed with status 0x";
  for (int shift = 28; shift >= 0; shift -= 4) message += kDigits[(static_cast<DWORD>(status) >> shift) & 0xF];
  if (const char* const meaning = StatusMeaning(status); meaning != nullptr) message.append(": ").append(meaning);
  return message;
}

std::string ArchiveMessage(int cause, LPCTSTR fileName) {
  const std::string archive = "the archive" + QuotedName(fileName);
  switch (cause) {
    case CArchiveException::none:
      return "no fault of " + archive;
    case CArchiveException::readOnly:
      return "cannot store into " + archive + ": it is loading";
    case CArchiveException::endOfFile:
      return "the data of " + archive + " ends early";
    case CArchiveException::writeOnly:
      return "cannot load from " + archive + ": it is storing";
    case CArchiveException::badIndex:
      return archive + " holds a bad index";
    case CArchiveException::badClass:
      return archive + " holds an object of another class";
    case CArchiveException::badSchema:
      return archive + " holds data of an unknown version or shape";
    default:
      return "cannot use " + archive;
  }
}

std::string FileMessage(int cause, LPCTSTR fileName) {
  const std::string file = "the file" + QuotedName(fileName);
  switch (cause) {
    case CFileException::none:
      return "no fault of " + file;
    case CFileException::fileNotFound:
      return "cannot find " + file;
    case CFileException::badPath:
      return (fileName != nullptr && HasDriveLetter(fileName) ? "cannot reach the drive or folder of "
                                                              : "cannot reach the folder of ") +
             file;
    case CFileException::tooManyOpenFiles:
      return "cannot open " + file + ": too many files are open";
    case CFileException::accessDenied:
      return "access to " + file + " is denied, or it is no regular file";
    case CFileException::invalidFile:
      return file + " is not open";
    case CFileException::removeCurrentDir:
      return "cannot remove the working folder" + QuotedName(fileName);
    case CFileException::directoryFull:
      return "the folder of " + file + " is full";
    case CFileException::badSeek:
      return "cannot go to that position of " + file;
    case CFileException::hardIO:
      return "the device failed on " + file;
    case CFileException::sharingViolation:
      return file + " is in use";
    case CFileException::lockViolation:
      return file + " is locked there";
    case CFileException::diskFull:
      return "cannot write " + file + ": the disk is full";
    case CFileException::endOfFile:
      return file + " ends early";
    default:
      return "cannot use " + file;
  }
}

}  // namespace

BOOL CException::GetErrorMessage(LPTSTR buffer, UINT size) const {
  if (buffer == nullptr || size == 0) return FALSE;
  const int bytes = static_cast<int>(m_message.size());
  std::basic_string<WCHAR> text(m_message.size(), 0);  // in UTF-16 no text has more units than bytes in UTF-8
  const int length = MultiByteToWideChar(CP_UTF8, 0, m_message.data(), bytes, text.data(), bytes);
  const std::size_t copied = std::min<std::size_t>(static_cast<std::size_t>(std::max(length, 0)), size - 1);
  text.copy(buffer, copied);
  buffer[copied] = 0;
  return TRUE;
}

// Short enough to stand in the string itself: memory is what there is none of.
CMemoryException::CMemoryException() : CException("out of memory") {}

CNotSupportedException::CNotSupportedException() : CException("the operation is not supported") {}

CInvalidArgException::CInvalidArgException() : CException("an argument is not valid") {}

COleException::COleException(HRESULT status) : CException(StatusMessage(status)), m_sc(status) {}

CArchiveException::CArchiveException(int cause, LPCTSTR fileName)
    : CException(ArchiveMessage(cause, fileName)), m_cause(cause), m_strFileName(fileName) {}

CFileException::CFileException(int cause, LONG osError, LPCTSTR fileName)
    : CException(FileMessage(cause, fileName)), m_cause(cause), m_lOsError(osError), m_strFileName(fileName) {}

int CFileException::OsErrorToException(LONG osError) {
  switch (static_cast<DWORD>(osError)) {
    case ERROR_SUCCESS:
      return none;
    case ERROR_FILE_NOT_FOUND:
      return fileNotFound;
    case ERROR_PATH_NOT_FOUND:
    case ERROR_INVALID_NAME:
    case ERROR_FILENAME_EXCED_RANGE:
      return badPath;
    case ERROR_TOO_MANY_OPEN_FILES:
      return tooManyOpenFiles;
    case ERROR_ACCESS_DENIED:
    case ERROR_FILE_EXISTS:
    case ERROR_ALREADY_EXISTS:
      return accessDenied;
    case ERROR_INVALID_HANDLE:
      return invalidFile;
    case ERROR_NEGATIVE_SEEK:
      return badSeek;
    case ERROR_WRITE_FAULT:
    case ERROR_READ_FAULT:
    case ERROR_GEN_FAILURE:
      return hardIO;
    case ERROR_SHARING_VIOLATION:
      return sharingViolation;
    case ERROR_LOCK_VIOLATION:
      return lockViolation;
    case ERROR_HANDLE_EOF:
      return endOfFile;
    case ERROR_DISK_FULL:
      return diskFull;
    default:
      return genericException;
  }
}

void AfxThrowMemoryException() { throw CMemoryException(); }

void AfxThrowNotSupportedException() { throw CNotSupportedException(); }

void AfxThrowInvalidArgException() { throw CInvalidArgException(); }

void AfxThrowOleException(HRESULT status) { throw COleException(status); }

void AfxThrowArchiveException(int cause, LPCTSTR fileName) { throw CArchiveException(cause, fileName); }

void AfxThrowFileException(int cause, LONG osError, LPCTSTR fileName) {
  throw CFileException(cause, osError, fileName);
}

void AtlThrow(HRESULT status) {
  if (status == E_OUTOFMEMORY) AfxThrowMemoryException();
  AfxThrowOleException(status);
}
