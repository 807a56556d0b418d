// Reading pieces of a file.
#include "icons/source_file.h"

namespace ondrel::platform {

SourceFile::SourceFile(LPCWSTR path)
    : m_status(OpenOsFile(path, OsAccess::read, OsSharing::everything, OsCreation::mustExist, m_file)) {
  if (m_status == ERROR_SUCCESS) m_status = MeasureOsFile(m_file, m_length);
}

SourceFile::~SourceFile() {
  if (m_file != kNoOsFile) CloseOsFile(m_file);
}

IconStatus SourceFile::Read(ULONGLONG offset, std::span<BYTE> bytes) const {
  if (offset > m_length || bytes.size() > m_length - offset) return kIconDamaged;
  constexpr UINT kFromStart = 0;
  ULONGLONG position = 0;
  DWORD status = SeekOsFile(m_file, static_cast<LONGLONG>(offset), kFromStart, position);
  if (status != ERROR_SUCCESS) return {.file = status};
  UINT read = 0;
  status = ReadOsFile(m_file, bytes.data(), static_cast<UINT>(bytes.size()), read);
  if (status != ERROR_SUCCESS) return {.file = status};
  return read == bytes.size() ? kIconRead : kIconDamaged;
}

}  // namespace ondrel::platform
