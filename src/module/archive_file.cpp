// The file over a host's stream or handle.

#include <ondrel/MMCArchiveFile.h>

#include <ondrel/platform/kernel_file.h>

namespace {

/// Raises the status of the call of the system that just failed. One that left no reason behind raises nothing.
void ThrowLastError() {
  const DWORD code = GetLastError();
  const HRESULT status = HRESULT_FROM_WIN32(code);
  if (FAILED(status)) AfxThrowOleException(status);
}

void ThrowIfFailed(HRESULT status) {
  if (FAILED(status)) AfxThrowOleException(status);
}

}  // namespace

CMMCArchiveFile::CMMCArchiveFile(void* handle) : m_handle(handle) {}

CMMCArchiveFile::CMMCArchiveFile(IStream* stream) : m_handle(INVALID_HANDLE_VALUE) {
  if (stream == nullptr) return;
  ThrowIfFailed(stream->QueryInterface(ondrel::platform::InterfaceId<IStream>(), reinterpret_cast<void**>(&m_stream)));
}

CMMCArchiveFile::~CMMCArchiveFile() = default;

ULONGLONG CMMCArchiveFile::GetPosition() const { AfxThrowNotSupportedException(); }

std::unique_ptr<CFile> CMMCArchiveFile::Duplicate() const { AfxThrowNotSupportedException(); }

ULONGLONG CMMCArchiveFile::Seek(LONGLONG, UINT) { AfxThrowNotSupportedException(); }

void CMMCArchiveFile::SetLength(ULONGLONG) { AfxThrowNotSupportedException(); }

ULONGLONG CMMCArchiveFile::GetLength() const { AfxThrowNotSupportedException(); }

UINT CMMCArchiveFile::Read(void* buffer, UINT count) {
  if (m_handle != INVALID_HANDLE_VALUE) {
    DWORD read = 0;
    if (!ReadFile(m_handle, buffer, count, &read, nullptr)) ThrowLastError();
    return read;
  }
  if (m_stream == nullptr) AfxThrowOleException(E_NOTIMPL);
  ULONG read = 0;
  ThrowIfFailed(m_stream->Read(buffer, count, &read));
  // An archive would take the claim for bytes of its buffer, beyond the buffer's end.
  if (read > count) AfxThrowOleException(E_UNEXPECTED);
  return read;
}

// A short write raises nothing, in either mode: the count belongs to the source, and hosts may rely on that.
void CMMCArchiveFile::Write(const void* buffer, UINT count) {
  if (m_handle != INVALID_HANDLE_VALUE) {
    DWORD written = 0;
    if (!WriteFile(m_handle, buffer, count, &written, nullptr)) ThrowLastError();
    return;
  }
  if (m_stream == nullptr) AfxThrowOleException(E_NOTIMPL);
  ULONG written = 0;
  ThrowIfFailed(m_stream->Write(buffer, count, &written));
}

void CMMCArchiveFile::LockRange(ULONGLONG, ULONGLONG) { AfxThrowNotSupportedException(); }

void CMMCArchiveFile::UnlockRange(ULONGLONG, ULONGLONG) { AfxThrowNotSupportedException(); }

void CMMCArchiveFile::Abort() { AfxThrowNotSupportedException(); }

void CMMCArchiveFile::Flush() { AfxThrowNotSupportedException(); }

void CMMCArchiveFile::Close() { AfxThrowNotSupportedException(); }

UINT CMMCArchiveFile::GetBufferPtr(UINT, UINT, void**, void**) { return 0; }
