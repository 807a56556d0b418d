// A file that an icon is looked for in, read in pieces: it may be of any length.
#pragma once

#include <span>

#include <ondrel/platform/os/file.h>

#include "icons/icon_status.h"

namespace ondrel::platform {

class SourceFile {
 public:
  explicit SourceFile(LPCWSTR path);
  ~SourceFile();
  SourceFile(const SourceFile&) = delete;
  SourceFile& operator=(const SourceFile&) = delete;

  /// ERROR_SUCCESS, or the reason why the file cannot be read; nothing else is to be asked then.
  DWORD Status() const { return m_status; }
  /// Bytes of the file when it was opened.
  ULONGLONG Length() const { return m_length; }

  /// Fills `bytes` with those from `offset` on. A file that ends before them is a damaged icon.
  IconStatus Read(ULONGLONG offset, std::span<BYTE> bytes) const;

 private:
  OsFile m_file = kNoOsFile;
  DWORD m_status;
  ULONGLONG m_length = 0;
};

}  // namespace ondrel::platform
