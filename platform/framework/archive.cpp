// The archive's buffer: how bytes move between it, the values and the file.
#include <ondrel/platform/framework/archive.h>

#include <algorithm>
#include <bit>

// Values are copied as they lie in memory.
static_assert(std::endian::native == std::endian::little, "the archive's values are little-endian");

namespace {

constexpr int kWidestValue = sizeof(ULONGLONG);

}  // namespace

CArchive::CArchive(CFile* file, UINT mode, int bufferSize, void* buffer)
    : m_nMode(mode), m_pFile(file), m_lpBufStart(static_cast<BYTE*>(buffer)), m_nBufSize(bufferSize) {
  if (file == nullptr) AfxThrowInvalidArgException();
  if (buffer == nullptr || bufferSize < kWidestValue) {
    m_nBufSize = std::max(bufferSize, kWidestValue);
    m_ownBuffer.reset(new BYTE[static_cast<std::size_t>(m_nBufSize)]);
    m_lpBufStart = m_ownBuffer.get();
  }
  m_lpBufCur = m_lpBufStart;
  m_lpBufMax = IsLoading() ? m_lpBufStart : m_lpBufStart + m_nBufSize;
  m_strFileName = file->GetFilePath();
}

CArchive::~CArchive() {
  if (m_pFile == nullptr || IsLoading() || (m_nMode & bNoFlushOnDelete) != 0) return;
  try {
    Close();
  } catch (...) {
    // A destructor may run because of another exception; who wants to know calls Close().
  }
}

UINT CArchive::Read(void* buffer, UINT count) {
  RequireLoading();
  auto* target = static_cast<BYTE*>(buffer);
  UINT missing = count;
  const auto takeBuffered = [&] {
    const UINT part = std::min(missing, static_cast<UINT>(m_lpBufMax - m_lpBufCur));
    if (part == 0) return;
    std::memcpy(target, m_lpBufCur, part);
    m_lpBufCur += part;
    target += part;
    missing -= part;
  };
  takeBuffered();
  // Whole blocks need no stop in the buffer, which is empty here when any of them is missing.
  const auto bufferSize = static_cast<UINT>(m_nBufSize);
  if (const UINT blocks = missing - missing % bufferSize; blocks > 0) {
    const UINT read = ReadFully(target, blocks);
    target += read;
    missing -= read;
    if (read < blocks) return count - missing;
  }
  if (missing > 0) {
    BufferAtLeast(missing);
    takeBuffered();
  }
  return count - missing;
}

void CArchive::Write(const void* buffer, UINT count) {
  RequireStoring();
  if (count == 0) return;
  if (static_cast<UINT>(m_lpBufMax - m_lpBufCur) < count) {
    Flush();
    if (count >= static_cast<UINT>(m_nBufSize)) {
      m_pFile->Write(buffer, count);
      return;
    }
  }
  std::memcpy(m_lpBufCur, buffer, count);
  m_lpBufCur += count;
}

void CArchive::Flush() {
  RequireOpen();
  if (IsLoading()) {
    const std::ptrdiff_t unread = m_lpBufMax - m_lpBufCur;
    m_lpBufCur = m_lpBufMax = m_lpBufStart;
    if (unread > 0) m_pFile->Seek(-static_cast<LONGLONG>(unread), CFile::current);
  } else {
    const std::ptrdiff_t stored = m_lpBufCur - m_lpBufStart;
    // Emptied first: bytes of a write that fails are not handed over a second time, behind what it did write.
    m_lpBufCur = m_lpBufStart;
    if (stored > 0) m_pFile->Write(m_lpBufStart, static_cast<UINT>(stored));
  }
}

void CArchive::FillBuffer(UINT additionalBytesNeeded) {
  RequireLoading();
  const auto unread = static_cast<UINT>(m_lpBufMax - m_lpBufCur);
  if (additionalBytesNeeded > static_cast<UINT>(m_nBufSize) - unread) AfxThrowInvalidArgException();
  if (!BufferAtLeast(unread + additionalBytesNeeded)) AfxThrowArchiveException(CArchiveException::endOfFile);
}

void CArchive::Close() {
  if (m_pFile == nullptr) return;
  try {
    Flush();
  } catch (...) {
    Abort();
    throw;
  }
  Abort();
}

void CArchive::Abort() {
  m_pFile = nullptr;
  // Nothing buffered and no room left: the next value asks for the file and finds none.
  m_lpBufCur = m_lpBufMax = m_lpBufStart;
}

void CArchive::RequireOpen() const {
  if (m_pFile == nullptr) AfxThrowArchiveException(CArchiveException::genericException, m_strFileName);
}

UINT CArchive::ReadFully(BYTE* buffer, UINT count) {
  RequireOpen();
  UINT read = 0;
  while (read < count) {
    const UINT part = m_pFile->Read(buffer + read, count - read);
    if (part == 0) break;
    read += part;
  }
  return read;
}

bool CArchive::BufferAtLeast(UINT count) {
  RequireOpen();
  const std::ptrdiff_t unread = m_lpBufMax - m_lpBufCur;
  std::memmove(m_lpBufStart, m_lpBufCur, static_cast<std::size_t>(unread));
  m_lpBufCur = m_lpBufStart;
  m_lpBufMax = m_lpBufStart + unread;
  while (m_lpBufMax - m_lpBufCur < static_cast<std::ptrdiff_t>(count)) {
    const std::ptrdiff_t room = m_lpBufStart + m_nBufSize - m_lpBufMax;
    const UINT part = m_pFile->Read(m_lpBufMax, static_cast<UINT>(room));
    if (part == 0) return false;
    m_lpBufMax += part;
  }
  return true;
}
