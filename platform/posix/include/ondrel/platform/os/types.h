// The basic types, statuses and macros of the Windows headers, for a system without them.
//
// Widths are those of Windows whatever the data model of the system: a LONG has 32 bits, a status is a signed 32-bit
// number, and a unit of wide text is a UTF-16 code unit.
#pragma once

#include <cstdint>

#include <ondrel/platform/os/export.h>

using BYTE = std::uint8_t;
using WORD = std::uint16_t;
using DWORD = std::uint32_t;
using UINT = std::uint32_t;
using ULONG = std::uint32_t;
using LONG = std::int32_t;
using BOOL = int;
using HRESULT = std::int32_t;
using LONGLONG = long long;
using ULONGLONG = unsigned long long;
using UINT_PTR = std::uintptr_t;
using HANDLE = void*;
using HINSTANCE = void*;
using HMODULE = HINSTANCE;
using __int64 = long long;  // NOLINT(bugprone-reserved-identifier): the name that the exported classes use

using WCHAR = char16_t;
using LPWSTR = WCHAR*;
using LPCWSTR = const WCHAR*;
using TCHAR = WCHAR;
using LPTSTR = LPWSTR;
using LPCTSTR = LPCWSTR;
using LPCSTR = const char*;

#define ONDREL_WIDE_(text) u##text
#define _T(text) ONDREL_WIDE_(text)  // NOLINT(bugprone-reserved-identifier)

#define STDMETHODCALLTYPE

inline constexpr BOOL FALSE = 0;
inline constexpr BOOL TRUE = 1;

inline const HANDLE INVALID_HANDLE_VALUE = reinterpret_cast<HANDLE>(std::intptr_t{-1});

inline constexpr HRESULT S_OK = 0;
inline constexpr HRESULT S_FALSE = 1;
inline constexpr HRESULT E_NOTIMPL = static_cast<HRESULT>(0x80004001);
inline constexpr HRESULT E_NOINTERFACE = static_cast<HRESULT>(0x80004002);
inline constexpr HRESULT E_POINTER = static_cast<HRESULT>(0x80004003);
inline constexpr HRESULT E_FAIL = static_cast<HRESULT>(0x80004005);
inline constexpr HRESULT E_UNEXPECTED = static_cast<HRESULT>(0x8000FFFF);
inline constexpr HRESULT E_OUTOFMEMORY = static_cast<HRESULT>(0x8007000E);
inline constexpr HRESULT E_INVALIDARG = static_cast<HRESULT>(0x80070057);
inline constexpr HRESULT DISP_E_TYPEMISMATCH = static_cast<HRESULT>(0x80020005);
inline constexpr HRESULT DISP_E_BADVARTYPE = static_cast<HRESULT>(0x80020008);
inline constexpr HRESULT DISP_E_OVERFLOW = static_cast<HRESULT>(0x8002000A);
inline constexpr HRESULT STG_E_INVALIDFUNCTION = static_cast<HRESULT>(0x80030001);
inline constexpr HRESULT STG_E_INVALIDPOINTER = static_cast<HRESULT>(0x80030009);
inline constexpr HRESULT STG_E_MEDIUMFULL = static_cast<HRESULT>(0x80030070);
inline constexpr HRESULT CLASS_E_NOAGGREGATION = static_cast<HRESULT>(0x80040110);
inline constexpr HRESULT REGDB_E_CLASSNOTREG = static_cast<HRESULT>(0x80040154);

inline constexpr DWORD ERROR_SUCCESS = 0;
inline constexpr DWORD ERROR_FILE_NOT_FOUND = 2;
inline constexpr DWORD ERROR_PATH_NOT_FOUND = 3;
inline constexpr DWORD ERROR_TOO_MANY_OPEN_FILES = 4;
inline constexpr DWORD ERROR_ACCESS_DENIED = 5;
inline constexpr DWORD ERROR_INVALID_HANDLE = 6;
inline constexpr DWORD ERROR_NOT_ENOUGH_MEMORY = 8;
inline constexpr DWORD ERROR_INVALID_DATA = 13;
inline constexpr DWORD ERROR_OUTOFMEMORY = 14;
inline constexpr DWORD ERROR_WRITE_FAULT = 29;
inline constexpr DWORD ERROR_READ_FAULT = 30;
inline constexpr DWORD ERROR_GEN_FAILURE = 31;
inline constexpr DWORD ERROR_SHARING_VIOLATION = 32;
inline constexpr DWORD ERROR_LOCK_VIOLATION = 33;
inline constexpr DWORD ERROR_HANDLE_EOF = 38;
inline constexpr DWORD ERROR_FILE_EXISTS = 80;
inline constexpr DWORD ERROR_INVALID_PARAMETER = 87;
inline constexpr DWORD ERROR_DISK_FULL = 112;
inline constexpr DWORD ERROR_INSUFFICIENT_BUFFER = 122;
inline constexpr DWORD ERROR_INVALID_NAME = 123;
inline constexpr DWORD ERROR_MOD_NOT_FOUND = 126;
inline constexpr DWORD ERROR_NEGATIVE_SEEK = 131;
inline constexpr DWORD ERROR_NOT_LOCKED = 158;
inline constexpr DWORD ERROR_ALREADY_EXISTS = 183;
inline constexpr DWORD ERROR_BAD_EXE_FORMAT = 193;
inline constexpr DWORD ERROR_FILENAME_EXCED_RANGE = 206;
inline constexpr DWORD ERROR_NO_DATA = 232;
inline constexpr DWORD ERROR_INVALID_FLAGS = 1004;
inline constexpr DWORD ERROR_NO_UNICODE_TRANSLATION = 1113;
inline constexpr DWORD ERROR_DLL_INIT_FAILED = 1114;
inline constexpr DWORD ERROR_NOT_FOUND = 1168;
inline constexpr DWORD ERROR_TIMEOUT = 1460;
inline constexpr DWORD ERROR_RESOURCE_DATA_NOT_FOUND = 1812;
inline constexpr DWORD ERROR_NOT_EMPTY = 4307;

constexpr bool SUCCEEDED(HRESULT status) { return status >= 0; }
constexpr bool FAILED(HRESULT status) { return status < 0; }

constexpr HRESULT HRESULT_FROM_WIN32(DWORD code) {
  const auto asSigned = static_cast<HRESULT>(code);
  return asSigned <= 0 ? asSigned : static_cast<HRESULT>((code & 0xFFFFU) | 0x80070000U);
}

// The calling thread's last error, as the system calls of this layer leave it.
ONDREL_OS_EXPORT DWORD GetLastError();
ONDREL_OS_EXPORT void SetLastError(DWORD code);
