// The console with all its operations, for tests to implement.
#pragma once

#include <ondrel/platform/console.h>

#include "os/whole_interfaces.h"

namespace ondrel::test {

template <>
class Whole<IConsole3> : public IConsole3 {
 public:
  HRESULT STDMETHODCALLTYPE SetHeader(LPHEADERCTRL) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE SetToolbar(LPTOOLBAR) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE QueryResultView(LPUNKNOWN*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE QueryScopeImageList(LPIMAGELIST*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE QueryResultImageList(LPIMAGELIST*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE UpdateAllViews(LPDATAOBJECT, LPARAM, LONG_PTR) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE QueryConsoleVerb(LPCONSOLEVERB*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE SelectScopeItem(HSCOPEITEM) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetMainWindow(HWND*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE NewWindow(HSCOPEITEM, unsigned long) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE Expand(HSCOPEITEM, BOOL) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE IsTaskpadViewPreferred() override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE SetStatusText(LPOLESTR) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE RenameScopeItem(HSCOPEITEM) override { return E_NOTIMPL; }
};

/// Whether VariantChangeType takes values by reference.
inline constexpr bool kConvertsReferences = true;

}  // namespace ondrel::test
