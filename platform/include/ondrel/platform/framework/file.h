// Files of the framework: CFile over a file on disk, CMemFile over memory.
#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include <ondrel/platform/framework/exceptions.h>
#include <ondrel/platform/framework/object.h>
#include <ondrel/platform/os_block.h>

class CAtlTransactionManager;  ///< The framework's name for a transaction. There are none here, so it stays a name.

/// A file on disk. Positions and lengths are in bytes. Failures raise CFileException with the file's name.
///
/// The operations are virtual in the framework's order; a class that stands for another source of bytes derives from
/// CFile and overrides them.
class FRAMEWORK_API CFile : public CObject {
 public:
  enum OpenFlags : UINT {
    modeRead = 0x0000,
    modeWrite = 0x0001,
    modeReadWrite = 0x0002,
    shareCompat = 0x0000,  ///< As shareExclusive.
    shareExclusive = 0x0010,
    shareDenyWrite = 0x0020,  ///< Where the system has no share modes, these flags say nothing.
    shareDenyRead = 0x0030,
    shareDenyNone = 0x0040,
    modeCreate = 0x1000,      ///< Makes the file, or empties the one that is there.
    modeNoTruncate = 0x2000,  ///< With modeCreate: a file that is there keeps its contents.
    typeBinary = 0x8000,
  };
  enum SeekPosition : UINT { begin = 0, current = 1, end = 2 };
  enum BufferCommand : UINT { bufferRead = 0, bufferWrite = 1, bufferCommit = 2, bufferCheck = 3 };

  CFile() noexcept;
  /// Opens `path`. `\` and `/` both separate folders. Only regular files are opened: a folder, a pipe or a device is
  /// refused as access denied.
  CFile(LPCTSTR path, UINT flags);
  /// Closes an open file; a failure to close is not reported here, so a writer calls Close().
  ~CFile() override;

  virtual ULONGLONG GetPosition() const;
  virtual CString GetFileName() const;     ///< The last part of the path.
  virtual CString GetFileTitle() const;    ///< The last part without its ending.
  virtual CString GetFilePath() const;     ///< The path as it was given.
  virtual void SetFilePath(LPCTSTR path);  ///< Only the name that the file reports; null raises CInvalidArgException.
  /// As the opening constructor, but FALSE on failure, with the reason in `*error` when `error` is not null. A file
  /// that is open is closed before.
  virtual BOOL Open(LPCTSTR path, UINT flags, std::unique_ptr<CFileException>* error = nullptr);
  /// The same as a part of a transaction, or of none when `transaction` is null. There are no transactions here, so any
  /// other raises CNotSupportedException, and nothing is opened or closed.
  virtual BOOL Open(LPCTSTR path, UINT flags, CAtlTransactionManager* transaction,
                    std::unique_ptr<CFileException>* error = nullptr);
  /// A second object over the same open file; both share one position. Files that cannot be shared so raise
  /// CNotSupportedException.
  virtual std::unique_ptr<CFile> Duplicate() const;
  virtual ULONGLONG Seek(LONGLONG offset, UINT from);  ///< The new position from the start.
  virtual void SetLength(ULONGLONG length);
  virtual ULONGLONG GetLength() const;
  virtual UINT Read(void* buffer, UINT count);  ///< Bytes read; fewer than `count` only at the end of the file.
  virtual void Write(const void* buffer, UINT count);
  /// Keeps other openings of the file from locking any of these bytes (lockViolation). Needs a file open for writing.
  virtual void LockRange(ULONGLONG position, ULONGLONG count);
  virtual void UnlockRange(ULONGLONG position, ULONGLONG count);
  virtual void Abort();  ///< Closes without reporting a failure.
  virtual void Flush();  ///< Returns when the bytes are on the disk.
  /// Closes; the object has no file then, whatever the result. Nothing to do when it has none.
  virtual void Close();
  /// Offers memory of the file's own for direct access. 0: it offers none, for every command.
  virtual UINT GetBufferPtr(UINT command, UINT count = 0, void** start = nullptr, void** limit = nullptr);

 protected:
  /// Takes over an open file of the system (OsFile of os/file.h) and calls it `path`. Requires that none is open.
  void Attach(std::intptr_t file, LPCTSTR path);

  CString m_strFileName;

 private:
  BOOL OpenOrExplain(LPCTSTR path, UINT flags, int& cause, LONG& osError);
  [[noreturn]] void ThrowOsError(DWORD code) const;

  std::intptr_t m_file;  ///< The system's handle of the open file, or -1.
};

/// A file in memory that grows as it is written. It has no name and no locks of ranges. Flush, Close and Abort change
/// nothing. Memory that cannot be had raises CMemoryException.
class FRAMEWORK_API CMemFile : public CFile {
 public:
  CMemFile() noexcept;
  /// Starts with a copy of `count` bytes, at position 0.
  CMemFile(const void* bytes, UINT count);
  ~CMemFile() override;

  ULONGLONG GetPosition() const override;
  BOOL Open(LPCTSTR path, UINT flags, std::unique_ptr<CFileException>* error = nullptr) override;  ///< Not supported.
  BOOL Open(LPCTSTR path, UINT flags, CAtlTransactionManager* transaction,
            std::unique_ptr<CFileException>* error = nullptr) override;  ///< Not supported.
  std::unique_ptr<CFile> Duplicate() const override;                     ///< Not supported.
  /// A position behind the end is taken; a write there fills the gap with zeros.
  ULONGLONG Seek(LONGLONG offset, UINT from) override;
  void SetLength(ULONGLONG length) override;  ///< New bytes are zero.
  ULONGLONG GetLength() const override;
  UINT Read(void* buffer, UINT count) override;
  void Write(const void* buffer, UINT count) override;
  void LockRange(ULONGLONG position, ULONGLONG count) override;    ///< Not supported.
  void UnlockRange(ULONGLONG position, ULONGLONG count) override;  ///< Not supported.
  void Abort() override;
  void Flush() override;
  void Close() override;

  /// The file's bytes. Valid until the file is written, resized or destroyed.
  const BYTE* GetBytes() const noexcept;

 private:
  /// Makes room for `size` bytes, at least doubling it. What is behind the length is not initialised.
  void Reserve(ULONGLONG size);

  BYTE* Bytes() const noexcept { return reinterpret_cast<BYTE*>(m_block.Bytes()); }

  ondrel::platform::OsBlock m_block;
  ULONGLONG m_length = 0;
  ULONGLONG m_position = 0;
};
