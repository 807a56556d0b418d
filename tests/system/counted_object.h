// An object that tells how it is used.
#pragma once

#include <ondrel/platform/com.h>

#include "os/whole_interfaces.h"

namespace ondrel::test {

/// Lives on the stack of its test; its count of references is only watched.
class CountedObject final : public Whole<IDispatch> {
 public:
  explicit CountedObject(bool hasDispatch = true) : m_hasDispatch(hasDispatch) {}

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override {
    *object = nullptr;
    const bool isDispatch = id == platform::InterfaceId<IDispatch>();
    if (isDispatch ? !m_hasDispatch : id != platform::InterfaceId<IUnknown>()) return E_NOINTERFACE;
    *object = static_cast<IDispatch*>(this);
    AddRef();
    return S_OK;
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return ++references; }
  ULONG STDMETHODCALLTYPE Release() override { return --references; }

  ULONG references = 0;

 private:
  bool m_hasDispatch;
};

}  // namespace ondrel::test
