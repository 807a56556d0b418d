// CMemFile: a file in memory.
#include <ondrel/platform/framework/file.h>

#include <algorithm>
#include <cstring>
#include <limits>

CMemFile::CMemFile() noexcept = default;

CMemFile::CMemFile(const void* bytes, UINT count) {
  if (count == 0) return;
  Reserve(count);
  std::memcpy(Bytes(), bytes, count);
  m_length = count;
}

CMemFile::~CMemFile() = default;

ULONGLONG CMemFile::GetPosition() const { return m_position; }

BOOL CMemFile::Open(LPCTSTR, UINT, std::unique_ptr<CFileException>*) { AfxThrowNotSupportedException(); }

BOOL CMemFile::Open(LPCTSTR, UINT, CAtlTransactionManager*, std::unique_ptr<CFileException>*) {
  AfxThrowNotSupportedException();
}

std::unique_ptr<CFile> CMemFile::Duplicate() const { AfxThrowNotSupportedException(); }

ULONGLONG CMemFile::Seek(LONGLONG offset, UINT from) {
  ULONGLONG origin = 0;
  switch (from) {
    case begin:
      break;
    case current:
      origin = m_position;
      break;
    case end:
      origin = m_length;
      break;
    default:
      AfxThrowInvalidArgException();
  }
  // Positions stay below the largest signed number, as those of files on disk do.
  const auto start = static_cast<LONGLONG>(origin);
  const bool beforeStart = offset < -start;
  const bool tooFar = offset > std::numeric_limits<LONGLONG>::max() - start;
  if (beforeStart || tooFar) {
    AfxThrowFileException(CFileException::badSeek, static_cast<LONG>(ERROR_NEGATIVE_SEEK), m_strFileName);
  }
  m_position = static_cast<ULONGLONG>(start + offset);
  return m_position;
}

void CMemFile::SetLength(ULONGLONG length) {
  if (length > m_length) {
    Reserve(length);
    std::memset(Bytes() + m_length, 0, static_cast<std::size_t>(length - m_length));
  }
  m_length = length;
}

ULONGLONG CMemFile::GetLength() const { return m_length; }

UINT CMemFile::Read(void* buffer, UINT count) {
  if (m_position >= m_length) return 0;
  const auto read = static_cast<UINT>(std::min<ULONGLONG>(count, m_length - m_position));
  std::memcpy(buffer, Bytes() + m_position, read);
  m_position += read;
  return read;
}

void CMemFile::Write(const void* buffer, UINT count) {
  if (count == 0) return;
  const ULONGLONG end = m_position + count;
  Reserve(end);
  if (m_position > m_length) {
    std::memset(Bytes() + m_length, 0, static_cast<std::size_t>(m_position - m_length));
  }
  std::memcpy(Bytes() + m_position, buffer, count);
  m_position = end;
  m_length = std::max(m_length, end);
}

void CMemFile::Reserve(ULONGLONG size) {
  constexpr auto kMost = static_cast<ULONGLONG>(std::numeric_limits<std::ptrdiff_t>::max());
  const ULONGLONG present = m_block.Size();
  if (size <= present) return;
  if (size > kMost) AfxThrowMemoryException();
  const ULONGLONG grown = std::max(size, std::min(2 * present, kMost));
  if (!m_block.Grow(static_cast<std::size_t>(m_length), static_cast<std::size_t>(grown))) AfxThrowMemoryException();
}

void CMemFile::LockRange(ULONGLONG, ULONGLONG) { AfxThrowNotSupportedException(); }

void CMemFile::UnlockRange(ULONGLONG, ULONGLONG) { AfxThrowNotSupportedException(); }

void CMemFile::Abort() {}

void CMemFile::Flush() {}

void CMemFile::Close() {}

const BYTE* CMemFile::GetBytes() const noexcept { return Bytes(); }
