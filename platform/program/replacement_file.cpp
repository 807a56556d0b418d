// A file that is written beside its place and takes it when it is complete.
#include <algorithm>
#include <new>

#include <ondrel/platform/program.h>

#include "program/file_beside.h"
#include "program/file_fault.h"

namespace ondrel::platform {
namespace {

/// Where the name of the file begins in a path.
int NameStart(const CString& path) { return std::max(path.ReverseFind('\\'), path.ReverseFind('/')) + 1; }

CString FolderOf(const CString& path) {
  const int start = NameStart(path);
  return start == 0 ? CString(_T(".")) : path.Left(start);
}

}  // namespace

ReplacementFile::ReplacementFile(const CString& path) {
  FileBeside created;
  if (const DWORD code = CreateFileBeside(path, created); code != ERROR_SUCCESS) ThrowFileFault(code, path);
  m_target = std::move(created.place);
  m_temporary = std::move(created.name);
  m_open = created.file;
  try {
    Attach(created.file, path);
  } catch (...) {
    CloseOsFile(created.file);
    Discard();
    throw;
  }
}

ReplacementFile::~ReplacementFile() {
  if (!m_committed) Discard();
}

void ReplacementFile::Write(const void* buffer, UINT count) {
  // The disk takes what is written while the rest is being made: early in small files, in large parts later.
  constexpr ULONGLONG kSmallestPart = ULONGLONG{64} << 10;
  constexpr ULONGLONG kLargestPart = ULONGLONG{1} << 20;
  CFile::Write(buffer, count);
  m_written += count;
  if (m_written - m_begun < std::clamp(m_begun, kSmallestPart, kLargestPart)) return;
  BeginSyncOsFile(m_open, m_begun, m_written - m_begun);
  m_begun = m_written;
}

void ReplacementFile::Commit() {
  try {
    Flush();
    DWORD code = ERROR_SUCCESS;
    if (m_temporary.IsEmpty()) {
      code = PlaceUnnamedFile(m_open, m_target);
      Abort();
    } else {
      Close();
      code = ReplaceOsFile(m_temporary, m_target);
    }
    if (code != ERROR_SUCCESS) ThrowFileFault(code, m_strFileName);
  } catch (...) {
    Discard();
    throw;
  }
  m_committed = true;
}

bool ReplacementFile::SharesPlaceWith(const ReplacementFile& other) const {
  return IsSameName(m_target.Mid(NameStart(m_target)), other.m_target.Mid(NameStart(other.m_target))) &&
         IsSameFile(FolderOf(m_target), FolderOf(other.m_target));
}

void ReplacementFile::Discard() noexcept {
  Abort();
  if (m_temporary.IsEmpty()) return;
  try {
    RemoveOsFile(m_temporary);
  } catch (const std::bad_alloc&) {
    // The name cannot be made into the system's form: the file stays behind.
  }
}

}  // namespace ondrel::platform
