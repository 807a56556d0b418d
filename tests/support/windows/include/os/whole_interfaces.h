// Interfaces for tests to implement: Whole<Interface> has every operation that the contract headers do not name and
// leaves the others to the test.
#pragma once

#include <ondrel/platform/xml.h>

#include "os/whole_dispatch.h"
#include "os/whole_nodes.h"

namespace ondrel::test {

template <>
class Whole<IStream> : public IStream {
 public:
  HRESULT STDMETHODCALLTYPE CopyTo(IStream*, ULARGE_INTEGER, ULARGE_INTEGER*, ULARGE_INTEGER*) override {
    return E_NOTIMPL;
  }
  HRESULT STDMETHODCALLTYPE Commit(DWORD) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE Revert() override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE LockRegion(ULARGE_INTEGER, ULARGE_INTEGER, DWORD) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE UnlockRegion(ULARGE_INTEGER, ULARGE_INTEGER, DWORD) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE Stat(STATSTG*, DWORD) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE Clone(IStream**) override { return E_NOTIMPL; }
};

/// Reports of what a test does not look at are no failures: the reader would stop.
template <>
class Whole<ISAXContentHandler> : public ISAXContentHandler {
 public:
  HRESULT STDMETHODCALLTYPE putDocumentLocator(ISAXLocator*) override { return S_OK; }
  HRESULT STDMETHODCALLTYPE startPrefixMapping(const WCHAR*, int, const WCHAR*, int) override { return S_OK; }
  HRESULT STDMETHODCALLTYPE endPrefixMapping(const WCHAR*, int) override { return S_OK; }
  HRESULT STDMETHODCALLTYPE characters(const WCHAR*, int) override { return S_OK; }
  HRESULT STDMETHODCALLTYPE ignorableWhitespace(const WCHAR*, int) override { return S_OK; }
  HRESULT STDMETHODCALLTYPE skippedEntity(const WCHAR*, int) override { return S_OK; }
};

}  // namespace ondrel::test
