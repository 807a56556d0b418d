// Folders that are made beside the place that they are to take.
#pragma once

#include <ondrel/platform/framework/string.h>

namespace ondrel::platform {

// Each gives ERROR_SUCCESS or the system's error code.

/// Whether a folder can take a place: nothing is there, or an empty folder. ERROR_NOT_EMPTY for one that holds
/// anything, ERROR_FILE_EXISTS for whatever else is there, a link too.
DWORD CheckFolderPlace(const CString& place);
/// ERROR_FILE_EXISTS when anything has the name, ERROR_PATH_NOT_FOUND when the folder around it is not there.
DWORD MakeOsFolder(const CString& path);
/// Of an empty folder alone.
DWORD RemoveOsFolder(const CString& path);
/// Gives a folder the name `place`, where nothing is or an empty folder, which goes and hands its permissions on where
/// the system does that. ERROR_NOT_EMPTY when something came into it meanwhile.
DWORD PlaceOsFolder(const CString& folder, const CString& place);

}  // namespace ondrel::platform
