// CFile: a file on disk.
#include <ondrel/platform/framework/file.h>

#include <utility>

#include <ondrel/platform/os/file.h>

using namespace ondrel::platform;

namespace {

constexpr UINT kAccessMask = 0x0003;
constexpr UINT kSharingMask = 0x0070;

// The position behind the last separator of folders.
std::size_t LastPart(std::basic_string_view<WCHAR> path) {
  const std::size_t separator = path.find_last_of(_T("\\/"));
  return separator == std::basic_string_view<WCHAR>::npos ? 0 : separator + 1;
}

OsAccess AccessOf(UINT flags) {
  switch (flags & kAccessMask) {
    case CFile::modeRead:
      return OsAccess::read;
    case CFile::modeWrite:
      return OsAccess::write;
    case CFile::modeReadWrite:
      return OsAccess::readWrite;
    default:
      AfxThrowInvalidArgException();
  }
}

OsSharing SharingOf(UINT flags) {
  switch (flags & kSharingMask) {
    case CFile::shareCompat:
    case CFile::shareExclusive:
      return OsSharing::nothing;
    case CFile::shareDenyWrite:
      return OsSharing::reading;
    case CFile::shareDenyRead:
      return OsSharing::writing;
    case CFile::shareDenyNone:
      return OsSharing::everything;
    default:
      AfxThrowInvalidArgException();
  }
}

OsCreation CreationOf(UINT flags) {
  if ((flags & CFile::modeCreate) == 0) return OsCreation::mustExist;
  return (flags & CFile::modeNoTruncate) != 0 ? OsCreation::createOrKeep : OsCreation::createOrEmpty;
}

}  // namespace

CFile::CFile() noexcept : m_file(kNoOsFile) {}

CFile::CFile(LPCTSTR path, UINT flags) : m_file(kNoOsFile) {
  int cause = CFileException::none;
  LONG osError = 0;
  if (!OpenOrExplain(path, flags, cause, osError)) AfxThrowFileException(cause, osError, path);
}

CFile::~CFile() { CFile::Abort(); }

ULONGLONG CFile::GetPosition() const {
  ULONGLONG position = 0;
  if (const DWORD code = SeekOsFile(m_file, 0, current, position); code != ERROR_SUCCESS) ThrowOsError(code);
  return position;
}

CString CFile::GetFileName() const {
  const auto name = m_strFileName.View().substr(LastPart(m_strFileName.View()));
  return CString(name.data(), static_cast<int>(name.size()));
}

CString CFile::GetFileTitle() const {
  const CString name = GetFileName();
  const int dot = name.ReverseFind('.');
  return dot > 0 ? name.Left(dot) : name;  // a dot in front is no ending
}

CString CFile::GetFilePath() const { return m_strFileName; }

void CFile::SetFilePath(LPCTSTR path) {
  if (path == nullptr) AfxThrowInvalidArgException();
  m_strFileName = CString(path);
}

BOOL CFile::Open(LPCTSTR path, UINT flags, std::unique_ptr<CFileException>* error) {
  int cause = CFileException::none;
  LONG osError = 0;
  if (OpenOrExplain(path, flags, cause, osError)) return TRUE;
  if (error != nullptr) *error = std::make_unique<CFileException>(cause, osError, path);
  return FALSE;
}

BOOL CFile::Open(LPCTSTR path, UINT flags, CAtlTransactionManager* transaction,
                 std::unique_ptr<CFileException>* error) {
  if (transaction != nullptr) AfxThrowNotSupportedException();
  return Open(path, flags, error);
}

std::unique_ptr<CFile> CFile::Duplicate() const {
  auto copy = std::make_unique<CFile>();
  copy->m_strFileName = m_strFileName;
  if (const DWORD code = DuplicateOsFile(m_file, copy->m_file); code != ERROR_SUCCESS) ThrowOsError(code);
  return copy;
}

ULONGLONG CFile::Seek(LONGLONG offset, UINT from) {
  ULONGLONG position = 0;
  if (const DWORD code = SeekOsFile(m_file, offset, from, position); code != ERROR_SUCCESS) ThrowOsError(code);
  return position;
}

void CFile::SetLength(ULONGLONG length) {
  if (const DWORD code = ResizeOsFile(m_file, length); code != ERROR_SUCCESS) ThrowOsError(code);
}

ULONGLONG CFile::GetLength() const {
  ULONGLONG length = 0;
  if (const DWORD code = MeasureOsFile(m_file, length); code != ERROR_SUCCESS) ThrowOsError(code);
  return length;
}

UINT CFile::Read(void* buffer, UINT count) {
  UINT read = 0;
  if (const DWORD code = ReadOsFile(m_file, buffer, count, read); code != ERROR_SUCCESS) ThrowOsError(code);
  return read;
}

void CFile::Write(const void* buffer, UINT count) {
  if (const DWORD code = WriteOsFile(m_file, buffer, count); code != ERROR_SUCCESS) ThrowOsError(code);
}

void CFile::LockRange(ULONGLONG position, ULONGLONG count) {
  if (const DWORD code = LockOsFile(m_file, position, count); code != ERROR_SUCCESS) ThrowOsError(code);
}

void CFile::UnlockRange(ULONGLONG position, ULONGLONG count) {
  if (const DWORD code = UnlockOsFile(m_file, position, count); code != ERROR_SUCCESS) ThrowOsError(code);
}

void CFile::Abort() {
  if (const OsFile file = std::exchange(m_file, kNoOsFile); file != kNoOsFile) CloseOsFile(file);
}

void CFile::Flush() {
  if (const DWORD code = SyncOsFile(m_file); code != ERROR_SUCCESS) ThrowOsError(code);
}

void CFile::Close() {
  const OsFile file = std::exchange(m_file, kNoOsFile);
  if (file == kNoOsFile) return;
  if (const DWORD code = CloseOsFile(file); code != ERROR_SUCCESS) ThrowOsError(code);
}

UINT CFile::GetBufferPtr(UINT, UINT, void**, void**) { return 0; }

void CFile::Attach(std::intptr_t file, LPCTSTR path) {
  m_strFileName = CString(path);
  m_file = file;
}

BOOL CFile::OpenOrExplain(LPCTSTR path, UINT flags, int& cause, LONG& osError) {
  if (path == nullptr) AfxThrowInvalidArgException();
  const OsAccess access = AccessOf(flags);
  const OsSharing sharing = SharingOf(flags);
  CFile::Abort();
  CString name(path);
  OsFile file = kNoOsFile;
  if (const DWORD code = OpenOsFile(path, access, sharing, CreationOf(flags), file); code != ERROR_SUCCESS) {
    osError = static_cast<LONG>(code);
    cause = CFileException::OsErrorToException(osError);
    return FALSE;
  }
  m_file = file;
  m_strFileName = std::move(name);
  return TRUE;
}

void CFile::ThrowOsError(DWORD code) const {
  const auto osError = static_cast<LONG>(code);
  AfxThrowFileException(CFileException::OsErrorToException(osError), osError, m_strFileName);
}
