// Contract: the basic types and statuses that every other contract header speaks in.
//
// Meaning is the same on every platform:
//   BYTE, WORD, DWORD, LONG, LONGLONG   8, 16, 32, 32 (signed) and 64 (signed) bits, never `long` of the system
//   HRESULT                             a signed 32-bit status: negative is failure, 0 is S_OK, 1 is S_FALSE
//   WCHAR, LPCWSTR, _T("text")          a UTF-16 code unit, zero-terminated wide text, a wide literal
//   HRESULT_FROM_WIN32(code)            0x80070000 | (code & 0xFFFF) for a code above 0; otherwise the code unchanged
//   GetLastError(), SetLastError()      the calling thread's last error code
//
// On Windows these are the system's own declarations.
#pragma once

#include <ondrel/platform/os/types.h>
