// CMemFile: a file in memory.
#include <ondrel/platform/framework/file.h>

#include <algorithm>
#include <cstring>
#include <limits>
#include <new>

CMemFile::CMemFile() noexcept = default;

CMemFile::CMemFile(const void* bytes, UINT count) {
  const auto* first = static_cast<const BYTE*>(bytes);
  m_bytes.assign(first, first + count);
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
      origin = m_bytes.size();
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
  if (length > m_bytes.max_size()) AfxThrowMemoryException();
  try {
    m_bytes.resize(static_cast<std::size_t>(length));
  } catch (const std::bad_alloc&) {
    AfxThrowMemoryException();
  }
}

ULONGLONG CMemFile::GetLength() const { return m_bytes.size(); }

UINT CMemFile::Read(void* buffer, UINT count) {
  if (m_position >= m_bytes.size()) return 0;
  const auto read = static_cast<UINT>(std::min<ULONGLONG>(count, m_bytes.size() - m_position));
  std::memcpy(buffer, m_bytes.data() + m_position, read);
  m_position += read;
  return read;
}

void CMemFile::Write(const void* buffer, UINT count) {
  if (count == 0) return;
  if (m_position + count > m_bytes.size()) SetLength(m_position + count);
  std::memcpy(m_bytes.data() + m_position, buffer, count);
  m_position += count;
}

void CMemFile::LockRange(ULONGLONG, ULONGLONG) { AfxThrowNotSupportedException(); }

void CMemFile::UnlockRange(ULONGLONG, ULONGLONG) { AfxThrowNotSupportedException(); }

void CMemFile::Abort() {}

void CMemFile::Flush() {}

void CMemFile::Close() {}

const BYTE* CMemFile::GetBytes() const noexcept { return m_bytes.data(); }
