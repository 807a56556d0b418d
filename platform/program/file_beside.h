// A new file beside the place that it is to take.
#pragma once

#include <ondrel/platform/framework/string.h>
#include <ondrel/platform/os/file.h>

namespace ondrel::platform {

struct FileBeside {
  OsFile file = kNoOsFile;  ///< Open for writing; the caller's to close.
  CString place;            ///< Where it is to go: the path, or where that leads as a link.
  CString name;             ///< Its own path; empty while it has no name.
};

/// Makes a file in the folder of the place that `path` names: without a name where the system and the folder can do
/// that, so that nothing of it stays behind when the process is ended, otherwise under a name that no other file has.
/// ERROR_SUCCESS, or the system's error code, and then nothing was made.
DWORD CreateFileBeside(const CString& path, FileBeside& created);

/// Puts an open file that was made without a name in its place, in one step, and makes that last. ERROR_SUCCESS, or the
/// system's error code, and then the file still has no name.
DWORD PlaceUnnamedFile(OsFile file, const CString& place);

/// Whether two names would be those of one file, in one folder.
bool IsSameName(const CString& name, const CString& other);

}  // namespace ondrel::platform
