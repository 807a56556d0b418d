// A new file beside the place that it is to take.
#pragma once

#include <ondrel/platform/framework/string.h>
#include <ondrel/platform/os/file.h>

namespace ondrel::platform {

struct FileBeside {
  OsFile file = kNoOsFile;  ///< Open for writing; the caller's to close.
  CString place;            ///< Where it is to go: the path, or where that leads as a link.
  CString name;             ///< Its own path.
};

/// Makes a file, under a name that no other has, in the folder of the place that `path` names. ERROR_SUCCESS, or the
/// system's error code, and then nothing was made.
DWORD CreateFileBeside(const CString& path, FileBeside& created);

/// Whether two names would be those of one file, in one folder.
bool IsSameName(const CString& name, const CString& other);

}  // namespace ondrel::platform
