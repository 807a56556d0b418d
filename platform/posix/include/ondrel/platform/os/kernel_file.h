// Reading and writing through a handle, for a system whose handles are file descriptors.
#pragma once

#include <ondrel/platform/os/types.h>

/// The state of a call that runs in the background, which no call does here.
struct OVERLAPPED;

ONDREL_OS_EXPORT BOOL ReadFile(HANDLE handle, void* buffer, DWORD count, DWORD* read, OVERLAPPED* overlapped);
ONDREL_OS_EXPORT BOOL WriteFile(HANDLE handle, const void* buffer, DWORD count, DWORD* written, OVERLAPPED* overlapped);
