// The basic types, statuses and macros: the system's own.
#pragma once

#if !defined(UNICODE) || !defined(_UNICODE)
#error "Ondrel's interfaces are wide: compile with UNICODE and _UNICODE defined."
#endif

#include <windows.h>

#include <tchar.h>

#include <ondrel/platform/os/export.h>
