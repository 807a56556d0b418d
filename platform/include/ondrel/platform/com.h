// Contract: components, wide strings, variants and memory streams.
//
// What the model relies on, with the results, ownership and statuses of Windows:
//
//   IUnknown           QueryInterface gives an owned reference, or E_NOINTERFACE and null; AddRef and Release count.
//   IStream            Read, Write and Seek over a growing block of memory. A short read is S_OK with a smaller count;
//                      a target before the start is a failure, off Windows STG_E_INVALIDFUNCTION; memory that runs
//                      short, or a size beyond 32 bits, is E_OUTOFMEMORY. Bytes of a gap, and those that SetSize adds,
//                      are open, off Windows zero. A position of 2 GiB and more is for other systems than Windows.
//   CreateStreamOnHGlobal(block, deleteOnRelease, &stream)
//                      a stream over `block`, or over a new one when it is null; the stream frees the block with
//                      itself when deleteOnRelease says so. GetHGlobalFromStream gives the block, still the stream's.
//   GlobalLock         the bytes of a block that has some, valid until the stream is written; GlobalUnlock ends the
//                      use.
//   CoCreateInstance   an object of a class named by its CLSID (see xml.h), or REGDB_E_CLASSNOTREG.
//   BSTR               wide text with a length before it; SysAllocString copies to the first zero unit,
//                      SysAllocStringLen copies so many units. Null when memory is short. A null BSTR is empty text.
//   VARIANT            VariantInit, VariantClear (frees what it holds), VariantCopy (copies text, adds a reference),
//   VariantChangeType  converts into *destination, which may be the source: VT_BSTR to VT_I8 or VT_I4 takes numbers
//                      as people write them in the user's locale, off Windows in English (United States): blanks
//                      around, a sign before or behind, "$", parentheses for a negative number, "," anywhere among the
//                      digits, a fraction, which is rounded, halves to the even number, an exponent; or "&H" and "&O"
//                      with digits of base 16 and 8. DISP_E_TYPEMISMATCH for text that is no number (null and empty
//                      text too) and DISP_E_OVERFLOW for one out of range; VT_I8, VT_I4 and VT_BOOL to VT_BSTR give
//                      decimal digits; VT_EMPTY gives 0 and empty text; VT_DISPATCH and VT_UNKNOWN to one another ask
//                      the object, and a refusal is a failure. To the same type it is a copy. The destination is
//                      unchanged on failure. `flags` is 0. Off Windows a refusal and a null object are
//                      DISP_E_TYPEMISMATCH.
//   VarBstrCmp         VARCMP_LT, VARCMP_EQ or VARCMP_GT; case counts.
//   MultiByteToWideChar, WideCharToMultiByte
//                      with CP_ACP and CP_THREAD_ACP (the narrow code page, 1252 off Windows, where its unassigned
//                      bytes 81, 8D, 8F, 90 and 9D are the control characters of the same number) and CP_UTF8, where
//                      bytes that are no UTF-8 become one U+FFFD or several.
//                      A count of 0 for the target asks for the length; 0 is a failure, explained by GetLastError().
//
// The classes below are the same on every platform: owners for interface pointers, text and variants.
#pragma once

#include <cstddef>
#include <cstdint>
#include <utility>

#include <ondrel/platform/framework/exceptions.h>
#include <ondrel/platform/os/com.h>

/// Owns one reference to an interface, or none.
template <class Interface>
class CComPtr {
 public:
  CComPtr() noexcept = default;
  CComPtr(Interface* pointer) noexcept : p(pointer) {
    if (p != nullptr) p->AddRef();
  }
  CComPtr(const CComPtr& other) noexcept : CComPtr(other.p) {}
  CComPtr(CComPtr&& other) noexcept : p(std::exchange(other.p, nullptr)) {}
  ~CComPtr() { Release(); }
  CComPtr& operator=(CComPtr other) noexcept {
    std::swap(p, other.p);
    return *this;
  }

  void Release() noexcept {
    if (Interface* const old = std::exchange(p, nullptr); old != nullptr) old->Release();
  }
  void Attach(Interface* pointer) noexcept {  ///< Takes over a reference that the caller owns.
    Release();
    p = pointer;
  }
  Interface* Detach() noexcept { return std::exchange(p, nullptr); }

  operator Interface*() const noexcept { return p; }
  Interface* operator->() const noexcept { return p; }
  /// Where a callee puts a new reference. Lets go of the old one first.
  Interface** operator&() noexcept {  // NOLINT(google-runtime-operator): callees put their results there
    Release();
    return &p;
  }

  HRESULT CoCreateInstance(REFCLSID classId, IUnknown* outer, DWORD context) {
    Release();
    return ::CoCreateInstance(classId, outer, context, ondrel::platform::InterfaceId<Interface>(),
                              reinterpret_cast<void**>(&p));
  }
  template <class Other>
  HRESULT QueryInterface(Other** other) const {
    return p->QueryInterface(ondrel::platform::InterfaceId<Other>(), reinterpret_cast<void**>(other));
  }

  Interface* p = nullptr;
};

/// A constant BSTR, for arguments that a callee only reads. Nothing is allocated and nothing needs to be freed.
template <std::size_t Size>
class BstrLiteral {
 public:
  consteval BstrLiteral(const WCHAR (&text)[Size]) : m_bytes((Size - 1) * sizeof(WCHAR)) {
    for (std::size_t index = 0; index < Size; ++index) m_text[index] = text[index];
  }
  operator BSTR() const noexcept { return const_cast<BSTR>(m_text); }

 private:
  std::uint32_t m_bytes;  // the length in bytes stands directly before the text
  WCHAR m_text[Size] = {};
};

/// Owns a BSTR, or null. Raises CMemoryException when text cannot be allocated.
class CComBSTR {
 public:
  CComBSTR() noexcept = default;
  CComBSTR(LPCWSTR text) : m_str(text == nullptr ? nullptr : Checked(SysAllocString(text))) {}
  CComBSTR(const CString& text)  ///< All units of the string, zero units too.
      : m_str(Checked(SysAllocStringLen(text.GetString(), static_cast<UINT>(text.GetLength())))) {}
  CComBSTR(CComBSTR&& other) noexcept : m_str(std::exchange(other.m_str, nullptr)) {}
  CComBSTR& operator=(CComBSTR&& other) noexcept {
    std::swap(m_str, other.m_str);
    return *this;
  }
  CComBSTR(const CComBSTR&) = delete;
  CComBSTR& operator=(const CComBSTR&) = delete;
  ~CComBSTR() { SysFreeString(m_str); }

  operator BSTR() const noexcept { return m_str; }
  // NOLINTNEXTLINE(google-runtime-operator): callees put their results there
  BSTR* operator&() noexcept {  ///< Where a callee puts new text. Frees the old text first.
    SysFreeString(std::exchange(m_str, nullptr));
    return &m_str;
  }
  BSTR Detach() noexcept { return std::exchange(m_str, nullptr); }  ///< Gives the text to the caller.
  UINT Length() const noexcept { return SysStringLen(m_str); }

  BSTR m_str = nullptr;

 private:
  static BSTR Checked(BSTR text) {
    if (text == nullptr) AfxThrowMemoryException();
    return text;
  }
};

/// Owns a VARIANT's contents. A copy that fails raises the exception of its status.
class CComVariant : public VARIANT {
 public:
  CComVariant() noexcept { VariantInit(this); }
  CComVariant(const VARIANT& other) : CComVariant() {
    // Some compilers' headers take the source as one that may change. It does not.
    AtlThrowIfFailed(VariantCopy(this, const_cast<VARIANT*>(&other)));
  }
  CComVariant(const CComVariant& other) : CComVariant(static_cast<const VARIANT&>(other)) {}
  CComVariant(CComVariant&& other) noexcept : VARIANT(other) { VariantInit(&other); }
  explicit CComVariant(LONGLONG value) noexcept : CComVariant() {
    vt = VT_I8;
    llVal = value;
  }
  explicit CComVariant(const CString& text) : CComVariant() {
    bstrVal = CComBSTR(text).Detach();
    vt = VT_BSTR;
  }
  explicit CComVariant(LPCWSTR text) : CComVariant() {
    bstrVal = CComBSTR(text).Detach();
    vt = VT_BSTR;
  }
  explicit CComVariant(IUnknown* object) noexcept : CComVariant() {
    vt = VT_UNKNOWN;
    punkVal = object;
    if (object != nullptr) object->AddRef();
  }
  explicit CComVariant(IDispatch* object) noexcept : CComVariant() {
    vt = VT_DISPATCH;
    pdispVal = object;
    if (object != nullptr) object->AddRef();
  }
  ~CComVariant() { VariantClear(this); }
  CComVariant& operator=(CComVariant other) noexcept {
    std::swap(static_cast<VARIANT&>(*this), static_cast<VARIANT&>(other));
    return *this;
  }

  HRESULT Clear() noexcept { return VariantClear(this); }
  HRESULT ChangeType(VARTYPE type) { return VariantChangeType(this, this, 0, type); }
};
