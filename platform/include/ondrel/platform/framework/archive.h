// The framework's archive: a buffered, one-way run of values over a CFile.
//
// Every value is little-endian, without padding, alignment or type tags. The direction is checked before each single
// value: storing on a loading archive raises CArchiveException with cause readOnly (2), loading on a storing one with
// cause writeOnly (4), both with the archive's file name.
#pragma once

#include <concepts>
#include <cstring>

#include <ondrel/platform/framework/file.h>

/// The types that an archive stores as fixed-width values.
template <class Type>
concept ArchiveValue = std::same_as<Type, BYTE> || std::same_as<Type, WORD> || std::same_as<Type, int> ||
    std::same_as<Type, UINT> || std::same_as<Type, LONG> || std::same_as<Type, DWORD> || std::same_as<Type, LONGLONG> ||
    std::same_as<Type, ULONGLONG>;

namespace ondrel::platform {
class ShortText;
}

class FRAMEWORK_API CArchive {
 public:
  enum Mode : UINT { store = 0, load = 1, bNoFlushOnDelete = 2 };

  /// Binds the archive to `file`, which must outlive it. `bufferSize` is in bytes. A given `buffer` stays the caller's;
  /// without one, or with one smaller than the widest value (8 bytes), the archive makes its own.
  CArchive(CFile* file, UINT mode, int bufferSize = 4096, void* buffer = nullptr);
  /// Closes a storing archive that is still open, unless the mode says bNoFlushOnDelete. A failing write is swallowed
  /// here, so a writer calls Close().
  ~CArchive();
  CArchive(const CArchive&) = delete;
  CArchive& operator=(const CArchive&) = delete;

  bool IsLoading() const noexcept { return (m_nMode & load) != 0; }
  bool IsStoring() const noexcept { return (m_nMode & load) == 0; }
  CFile* GetFile() const noexcept { return m_pFile; }

  /// Raw bytes. Read gives the number of bytes read, fewer than `count` only at the end of the data.
  UINT Read(void* buffer, UINT count);
  void Write(const void* buffer, UINT count);

  /// Storing: hands the buffered bytes to the file. Loading: gives unread bytes back to the file by seeking. An archive
  /// that has let go of its file raises CArchiveException with cause genericException, here and for every value.
  void Flush();
  /// Loading: makes `additionalBytesNeeded` bytes beyond the buffered ones available; raises CArchiveException with
  /// cause endOfFile and no file name when the data ends before. What is unread and what is needed must fit the buffer
  /// together: CInvalidArgException.
  void FillBuffer(UINT additionalBytesNeeded);
  void Close();  ///< Flush, and let go of the file, even when Flush fails. Nothing to do when there is no file.
  void Abort();  ///< Let go of the file and of what is buffered.

  template <ArchiveValue Type>
  CArchive& operator<<(Type value) {
    RequireStoring();
    if (m_lpBufMax - m_lpBufCur < static_cast<std::ptrdiff_t>(sizeof value)) Flush();
    std::memcpy(m_lpBufCur, &value, sizeof value);
    m_lpBufCur += sizeof value;
    return *this;
  }

  template <ArchiveValue Type>
  CArchive& operator>>(Type& value) {
    RequireLoading();
    const std::ptrdiff_t missing = static_cast<std::ptrdiff_t>(sizeof value) - (m_lpBufMax - m_lpBufCur);
    if (missing > 0) FillBuffer(static_cast<UINT>(missing));
    std::memcpy(&value, m_lpBufCur, sizeof value);
    m_lpBufCur += sizeof value;
    return *this;
  }

  /// The file's path when the archive was made; callers may set another. It stands in every direction fault, and the
  /// project file takes its directory from it.
  CString m_strFileName;

 protected:
  void RequireStoring() const {
    if (!IsStoring()) AfxThrowArchiveException(CArchiveException::readOnly, m_strFileName);
  }
  void RequireLoading() const {
    if (!IsLoading()) AfxThrowArchiveException(CArchiveException::writeOnly, m_strFileName);
  }

  UINT m_nMode;
  CFile* m_pFile;
  BYTE* m_lpBufCur;  ///< The next byte to store or load.
  BYTE* m_lpBufMax;  ///< The end of the valid buffer.

 private:
  friend class ondrel::platform::ShortText;

  /// How many bytes lie in the buffer to be loaded, or fit into it.
  std::size_t Buffered() const noexcept { return static_cast<std::size_t>(m_lpBufMax - m_lpBufCur); }
  void RequireOpen() const;
  /// Reads until `count` bytes are there or the file gives no more; how many there are.
  UINT ReadFully(BYTE* buffer, UINT count);
  /// Reads until `count` unread bytes are in the buffer, which must hold so many; false when the file ends before.
  bool BufferAtLeast(UINT count);

  std::unique_ptr<BYTE[]> m_ownBuffer;
  BYTE* m_lpBufStart;
  int m_nBufSize;
};

/// Text: the wide tag FF FE FF, the length in UTF-16 units (see AfxWriteStringLength), the units. Loading also takes
/// text without the tag, as narrow bytes of the narrow code page. Text that ends early raises CArchiveException with
/// cause endOfFile and no file name; memory is taken only as bytes arrive, never on the word of the length.
FRAMEWORK_API CArchive& operator<<(CArchive& archive, const CString& text);
FRAMEWORK_API CArchive& operator>>(CArchive& archive, CString& text);

/// Stores the prefix of a text of `length` units (wide: `unicode` TRUE) or bytes. The length takes the shortest of:
///   one byte                        below 0xFF
///   FF, WORD                        below 0xFFFE
///   FF, FFFF, DWORD                 below 0xFFFFFFFF
///   FF, FFFF, FFFFFFFF, 64 bits     otherwise
FRAMEWORK_API void AfxWriteStringLength(CArchive& archive, UINT_PTR length, BOOL unicode);
/// Loads such a prefix: the length, and in `charSize` 2 when the wide tag stood before it, else 1.
FRAMEWORK_API UINT_PTR AfxReadStringLength(CArchive& archive, int& charSize);
