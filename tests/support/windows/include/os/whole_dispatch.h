// What every interface with a dispatch table has.
#pragma once

#include <ondrel/platform/com.h>

namespace ondrel::test {

template <class Interface>
class Whole;

template <class Interface>
class WholeDispatch : public Interface {
 public:
  HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS*, VARIANT*, EXCEPINFO*, UINT*) override {
    return E_NOTIMPL;
  }
};

template <>
class Whole<IDispatch> : public WholeDispatch<IDispatch> {};

}  // namespace ondrel::test
