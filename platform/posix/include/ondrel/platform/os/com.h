// Components, strings, variants and streams for a system without them: the subset of ondrel/platform/com.h.
#pragma once

#include <cstdint>

#include <ondrel/platform/os/types.h>

struct GUID {
  std::uint32_t Data1;
  std::uint16_t Data2;
  std::uint16_t Data3;
  std::uint8_t Data4[8];

  friend constexpr bool operator==(const GUID&, const GUID&) = default;
};
using IID = GUID;
using CLSID = GUID;
using REFIID = const IID&;
using REFCLSID = const CLSID&;

struct IUnknown {
  static constexpr IID kId{0x00000000, 0x0000, 0x0000, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};

  virtual HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) = 0;
  virtual ULONG STDMETHODCALLTYPE AddRef() = 0;
  virtual ULONG STDMETHODCALLTYPE Release() = 0;

 protected:
  ~IUnknown() = default;
};

struct IDispatch : IUnknown {
  static constexpr IID kId{0x00020400, 0x0000, 0x0000, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};

 protected:
  ~IDispatch() = default;
};

struct LARGE_INTEGER {
  LONGLONG QuadPart;
};
struct ULARGE_INTEGER {
  ULONGLONG QuadPart;
};
enum STREAM_SEEK : DWORD { STREAM_SEEK_SET = 0, STREAM_SEEK_CUR = 1, STREAM_SEEK_END = 2 };

struct ISequentialStream : IUnknown {
  static constexpr IID kId{0x0C733A30, 0x2A1C, 0x11CE, {0xAD, 0xE5, 0x00, 0xAA, 0x00, 0x44, 0x77, 0x3D}};

  virtual HRESULT STDMETHODCALLTYPE Read(void* buffer, ULONG count, ULONG* read) = 0;
  virtual HRESULT STDMETHODCALLTYPE Write(const void* buffer, ULONG count, ULONG* written) = 0;

 protected:
  ~ISequentialStream() = default;
};

struct IStream : ISequentialStream {
  static constexpr IID kId{0x0000000C, 0x0000, 0x0000, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};

  virtual HRESULT STDMETHODCALLTYPE Seek(LARGE_INTEGER move, DWORD origin, ULARGE_INTEGER* position) = 0;
  virtual HRESULT STDMETHODCALLTYPE SetSize(ULARGE_INTEGER size) = 0;

 protected:
  ~IStream() = default;
};

namespace ondrel::platform {

/// The identifier of an interface type.
template <class Interface>
constexpr const IID& InterfaceId() noexcept {
  return Interface::kId;
}

struct GlobalBlock;

}  // namespace ondrel::platform

using HGLOBAL = ondrel::platform::GlobalBlock*;

inline constexpr DWORD CLSCTX_INPROC_SERVER = 0x1;
inline constexpr DWORD CLSCTX_ALL = 0x17;

ONDREL_OS_EXPORT HRESULT CoCreateInstance(REFCLSID classId, IUnknown* outer, DWORD context, REFIID id, void** object);

ONDREL_OS_EXPORT HRESULT CreateStreamOnHGlobal(HGLOBAL block, BOOL deleteOnRelease, IStream** stream);
ONDREL_OS_EXPORT HRESULT GetHGlobalFromStream(IStream* stream, HGLOBAL* block);
ONDREL_OS_EXPORT void* GlobalLock(HGLOBAL block);
ONDREL_OS_EXPORT BOOL GlobalUnlock(HGLOBAL block);
ONDREL_OS_EXPORT HGLOBAL GlobalFree(HGLOBAL block);

using BSTR = WCHAR*;

ONDREL_OS_EXPORT BSTR SysAllocString(LPCWSTR text);
ONDREL_OS_EXPORT BSTR SysAllocStringLen(LPCWSTR text, UINT length);
ONDREL_OS_EXPORT void SysFreeString(BSTR text);
ONDREL_OS_EXPORT UINT SysStringLen(BSTR text);

using VARTYPE = WORD;
using VARIANT_BOOL = std::int16_t;
inline constexpr VARIANT_BOOL VARIANT_TRUE = -1;
inline constexpr VARIANT_BOOL VARIANT_FALSE = 0;

enum VARENUM : VARTYPE {
  VT_EMPTY = 0,
  VT_NULL = 1,
  VT_I4 = 3,
  VT_BSTR = 8,
  VT_DISPATCH = 9,
  VT_ERROR = 10,
  VT_BOOL = 11,
  VT_UNKNOWN = 13,
  VT_I8 = 20,
};

struct VARIANT {
  VARTYPE vt;
  WORD wReserved1;
  WORD wReserved2;
  WORD wReserved3;
  union {
    LONGLONG llVal;
    LONG lVal;
    VARIANT_BOOL boolVal;
    BSTR bstrVal;
    IUnknown* punkVal;
    IDispatch* pdispVal;
  };
};

ONDREL_OS_EXPORT void VariantInit(VARIANT* variant);
ONDREL_OS_EXPORT HRESULT VariantClear(VARIANT* variant);
ONDREL_OS_EXPORT HRESULT VariantCopy(VARIANT* destination, const VARIANT* source);
ONDREL_OS_EXPORT HRESULT VariantChangeType(VARIANT* destination, const VARIANT* source, WORD flags, VARTYPE type);

inline constexpr HRESULT VARCMP_LT = 0;
inline constexpr HRESULT VARCMP_EQ = 1;
inline constexpr HRESULT VARCMP_GT = 2;
inline constexpr DWORD LOCALE_USER_DEFAULT = 0x400;
ONDREL_OS_EXPORT HRESULT VarBstrCmp(BSTR left, BSTR right, DWORD locale, ULONG flags);

inline constexpr UINT CP_ACP = 0;
inline constexpr UINT CP_THREAD_ACP = 3;
inline constexpr UINT CP_UTF8 = 65001;

ONDREL_OS_EXPORT int MultiByteToWideChar(UINT codePage, DWORD flags, const char* bytes, int byteCount, WCHAR* text,
                                         int capacity);
ONDREL_OS_EXPORT int WideCharToMultiByte(UINT codePage, DWORD flags, const WCHAR* text, int length, char* bytes,
                                         int capacity, const char* defaultByte, BOOL* usedDefault);
