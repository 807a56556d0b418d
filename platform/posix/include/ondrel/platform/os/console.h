// The management console's interface for a system without one: what a host that shows messages itself implements.
#pragma once

#include <ondrel/platform/os/com.h>

inline constexpr UINT MB_ICONERROR = 0x00000010;
inline constexpr UINT MB_ICONWARNING = 0x00000030;
inline constexpr UINT MB_ICONINFORMATION = 0x00000040;
inline constexpr UINT MB_SETFOREGROUND = 0x00010000;

struct IConsole3 : IUnknown {
  static constexpr IID kId{0x4F85EFDB, 0xD0E1, 0x498C, {0x8D, 0x4A, 0xD0, 0x10, 0xDF, 0xDD, 0x40, 0x4F}};

  virtual HRESULT STDMETHODCALLTYPE MessageBox(LPCWSTR text, LPCWSTR caption, UINT style, int* button) = 0;

 protected:
  ~IConsole3() = default;
};
