// A stream of a test's own that watches its references.
#pragma once

#include <ondrel/platform/com.h>

#include "os/whole_interfaces.h"

namespace ondrel::test {

/// Lives in its test, whatever becomes of its references. Offers itself as IStream and its bases.
class CountedStream : public Whole<IStream> {
 public:
  /// The references that are held now.
  ULONG References() const { return m_references; }

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override {
    using platform::InterfaceId;
    const bool offered =
        id == InterfaceId<IUnknown>() || id == InterfaceId<ISequentialStream>() || id == InterfaceId<IStream>();
    *object = offered ? static_cast<IStream*>(this) : nullptr;
    if (!offered) return E_NOINTERFACE;
    AddRef();
    return S_OK;
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return ++m_references; }
  ULONG STDMETHODCALLTYPE Release() override { return --m_references; }

  HRESULT STDMETHODCALLTYPE Seek(LARGE_INTEGER, DWORD, ULARGE_INTEGER*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE SetSize(ULARGE_INTEGER) override { return E_NOTIMPL; }

 private:
  ULONG m_references = 0;
};

}  // namespace ondrel::test
