// A file for archives over bytes that a host holds open: a stream, or a file or pipe of the system.
#pragma once

#include <ondrel/export.h>
#include <ondrel/platform/com.h>
#include <ondrel/platform/framework/file.h>

/// Moves bytes in order from or to one source, and does nothing else: there are no positions, no length, no locks and
/// no name but the one it is given. Host and archive use it like this:
///
///   CMMCArchiveFile file(stream);
///   CVellum archive(&file, CArchive::store);
///   set.SerializeObjects(archive, FALSE, TRUE);
///   archive.Close();  // hands the last bytes to the stream and lets go of the file
///
/// A loading archive reads ahead, and what it has read beyond the loaded bytes is gone for the next reader of the
/// source. To give it back, which Flush and Close of such an archive try, is not supported; its destructor does not
/// try.
///
/// The operations are those of the framework, in their order; what is not declared here is the framework's own, Open
/// too, which serves nothing here. Failures are raised: COleException with the status of the source, and
/// CNotSupportedException. Nothing is tried again. One thread at a time.
class ONDREL_API CMMCArchiveFile : public CFile {
 public:
  /// Over a handle open for waiting calls (see kernel_file.h), which stays the caller's and is never closed here.
  /// INVALID_HANDLE_VALUE, which a failed opening gives, is no handle: reading and writing raise E_NOTIMPL.
  explicit CMMCArchiveFile(void* handle);
  /// Over a stream, of which a reference is held until the end. Raises COleException with the status of a stream that
  /// refuses QueryInterface for IStream. Null is no stream: reading and writing raise E_NOTIMPL.
  explicit CMMCArchiveFile(IStream* stream);
  ~CMMCArchiveFile() override;

  ULONGLONG GetPosition() const override;               ///< Not supported.
  std::unique_ptr<CFile> Duplicate() const override;    ///< Not supported.
  ULONGLONG Seek(LONGLONG offset, UINT from) override;  ///< Not supported.
  void SetLength(ULONGLONG length) override;            ///< Not supported.
  ULONGLONG GetLength() const override;                 ///< Not supported.
  /// The number of bytes that one call of the source reads: fewer than `count` say nothing, 0 is the end of the data. A
  /// stream that claims more than it was asked for raises E_UNEXPECTED.
  UINT Read(void* buffer, UINT count) override;
  /// Raises nothing when the source takes only a part: whether it did is not looked at.
  void Write(const void* buffer, UINT count) override;
  void LockRange(ULONGLONG position, ULONGLONG count) override;    ///< Not supported.
  void UnlockRange(ULONGLONG position, ULONGLONG count) override;  ///< Not supported.
  void Abort() override;                                           ///< Not supported.
  void Flush() override;                                           ///< Not supported.
  void Close() override;                                           ///< Not supported.
  /// 0 for every command; no argument is touched.
  UINT GetBufferPtr(UINT command, UINT count = 0, void** start = nullptr, void** limit = nullptr) override;

 private:
  HANDLE m_handle;  ///< INVALID_HANDLE_VALUE for a stream.
  CComPtr<IStream> m_stream;
};
