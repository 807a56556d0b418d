// The framework's exceptions and the functions that raise them.
//
// They are thrown by value and caught by reference, and they are raised only through the AfxThrow... functions and
// AtlThrow below. Each has a message for people: what() in UTF-8, GetErrorMessage in wide text.
#pragma once

#include <exception>
#include <string>

#include <ondrel/platform/framework/string.h>

class FRAMEWORK_API CException : public std::exception {
 public:
  const char* what() const noexcept override { return m_message.c_str(); }

  /// Copies the message, cut to `size` units with its closing zero, to `buffer`. FALSE, and nothing copied, when the
  /// buffer is null or `size` is 0.
  BOOL GetErrorMessage(LPTSTR buffer, UINT size) const;

 protected:
  explicit CException(std::string message) : m_message(std::move(message)) {}

 private:
  std::string m_message;
};

/// Out of memory.
class FRAMEWORK_API CMemoryException : public CException {
 public:
  CMemoryException();
};

/// An operation that the object does not support.
class FRAMEWORK_API CNotSupportedException : public CException {
 public:
  CNotSupportedException();
};

/// An argument that the operation refuses.
class FRAMEWORK_API CInvalidArgException : public CException {
 public:
  CInvalidArgException();
};

/// A failing platform status.
class FRAMEWORK_API COleException : public CException {
 public:
  explicit COleException(HRESULT status);

  HRESULT m_sc;
};

/// A fault of an archive's data or of the direction it is used in.
class FRAMEWORK_API CArchiveException : public CException {
 public:
  enum {
    none = 0,
    genericException = 1,
    readOnly = 2,   ///< A value is stored into an archive that is loading. The name is the framework's.
    endOfFile = 3,  ///< The data ends early.
    writeOnly = 4,  ///< A value is loaded from an archive that is storing. The name is the framework's.
    badIndex = 5,
    badClass = 6,
    badSchema = 7,  ///< The data is of another version or shape than the loader knows.
  };

  CArchiveException(int cause, LPCTSTR fileName);

  int m_cause;
  CString m_strFileName;  ///< The archive's file name, or empty.
};

/// A failing file operation.
class FRAMEWORK_API CFileException : public CException {
 public:
  enum {
    none = 0,
    genericException = 1,
    fileNotFound = 2,
    badPath = 3,
    tooManyOpenFiles = 4,
    accessDenied = 5,
    invalidFile = 6,
    removeCurrentDir = 7,
    directoryFull = 8,
    badSeek = 9,
    hardIO = 10,
    sharingViolation = 11,
    lockViolation = 12,
    diskFull = 13,
    endOfFile = 14,
  };

  CFileException(int cause, LONG osError, LPCTSTR fileName);

  /// The cause that stands for a system error code (ERROR_...); genericException for the codes without one.
  static int OsErrorToException(LONG osError);

  int m_cause;
  LONG m_lOsError;  ///< The system's error code (ERROR_...), or -1 when there is none.
  CString m_strFileName;
};

[[noreturn]] FRAMEWORK_API void AfxThrowMemoryException();
[[noreturn]] FRAMEWORK_API void AfxThrowNotSupportedException();
[[noreturn]] FRAMEWORK_API void AfxThrowInvalidArgException();
[[noreturn]] FRAMEWORK_API void AfxThrowOleException(HRESULT status);
[[noreturn]] FRAMEWORK_API void AfxThrowArchiveException(int cause, LPCTSTR fileName = nullptr);
[[noreturn]] FRAMEWORK_API void AfxThrowFileException(int cause, LONG osError = -1, LPCTSTR fileName = nullptr);

/// Turns a failing status into its exception: E_OUTOFMEMORY into CMemoryException, any other into COleException.
[[noreturn]] FRAMEWORK_API void AtlThrow(HRESULT status);

/// Raises the exception of a failing status; returns when `status` is a success.
inline void AtlThrowIfFailed(HRESULT status) {
  if (FAILED(status)) AtlThrow(status);
}
