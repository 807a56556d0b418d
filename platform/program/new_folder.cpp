// A folder that is filled beside its place and takes it when it is complete.
#include <algorithm>
#include <limits>
#include <new>

#include <ondrel/platform/os/file.h>
#include <ondrel/platform/program.h>

#include "program/file_fault.h"
#include "program/folder_beside.h"
#include "program/temporary_name.h"

namespace ondrel::platform {
namespace {

constexpr int kMaxFolderNames = 100;  // of names that are all taken

/// The full path without a separator at its end, but for that of a root.
CString PlaceOf(const CString& path) {
  CString place = FullPath(path);
  for (int length = place.GetLength(); length > 1 && place[length - 1] == '\\' && place[length - 2] != ':';) {
    place = place.Left(--length);
  }
  return place;
}

}  // namespace

NewFolder::NewFolder(const CString& path) : m_place(PlaceOf(path)) {
  if (const DWORD code = CheckFolderPlace(m_place); code != ERROR_SUCCESS) ThrowFileFault(code, m_place);
  const CString around = m_place.Left(m_place.ReverseFind('\\') + 1);
  DWORD code = ERROR_FILE_EXISTS;
  for (int attempts = 0; attempts < kMaxFolderNames && code == ERROR_FILE_EXISTS; ++attempts) {
    m_temporary = around + CString(TemporaryEnding().c_str());
    code = MakeOsFolder(m_temporary);
  }
  if (code != ERROR_SUCCESS) ThrowFileFault(code, m_place);
}

NewFolder::~NewFolder() {
  if (m_committed) return;
  try {
    std::for_each(m_entries.rbegin(), m_entries.rend(), [this](const Entry& entry) {
      const CString path = PathOf(entry.name);
      entry.isFolder ? RemoveOsFolder(path) : RemoveOsFile(path);
    });
    RemoveOsFolder(m_temporary);
  } catch (const std::bad_alloc&) {
    // The names cannot be made into the system's form: the folder stays behind.
  }
}

void NewFolder::MakeFolder(const CString& name) {
  m_entries.push_back({name, true});
  if (const DWORD code = MakeOsFolder(PathOf(name)); code != ERROR_SUCCESS) ThrowFileFault(code, PathOf(name));
}

void NewFolder::WriteFile(const CString& name, std::string_view bytes) {
  m_entries.push_back({name, false});
  CFile file(PathOf(name), CFile::modeWrite | CFile::modeCreate);
  while (!bytes.empty()) {
    const std::string_view block = bytes.substr(0, std::numeric_limits<int>::max());
    file.Write(block.data(), static_cast<UINT>(block.size()));
    bytes.remove_prefix(block.size());
  }
  file.Close();
}

void NewFolder::Commit() {
  if (const DWORD code = PlaceOsFolder(m_temporary, m_place); code != ERROR_SUCCESS) ThrowFileFault(code, m_place);
  m_committed = true;
}

}  // namespace ondrel::platform
