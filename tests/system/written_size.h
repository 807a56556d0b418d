// A stream that keeps no bytes: it counts them, and fails when a test says so.
#pragma once

#include <algorithm>
#include <limits>

#include <ondrel/platform/com.h>

#include "os/whole_interfaces.h"

namespace ondrel::test {

/// Lives on the stack of its test; its count of references is only watched.
class WrittenSize final : public Whole<IStream> {
 public:
  ULONGLONG Size() const { return m_size; }
  int Writes() const { return m_writes; }
  ULONG LargestWrite() const { return m_largestWrite; }
  ULONG References() const { return m_references; }
  /// The status of every write from now on.
  void Fail(HRESULT status) { m_status = status; }
  /// The most bytes that one write takes.
  void Shorten(ULONG limit) { m_limit = limit; }

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override {
    *object = nullptr;
    if (id != platform::InterfaceId<IUnknown>() && id != platform::InterfaceId<ISequentialStream>() &&
        id != platform::InterfaceId<IStream>()) {
      return E_NOINTERFACE;
    }
    *object = static_cast<IStream*>(this);
    AddRef();
    return S_OK;
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return ++m_references; }
  ULONG STDMETHODCALLTYPE Release() override { return --m_references; }
  HRESULT STDMETHODCALLTYPE Read(void*, ULONG, ULONG*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE Write(const void*, ULONG count, ULONG* written) override {
    ++m_writes;
    m_largestWrite = std::max(m_largestWrite, count);
    const ULONG taken = FAILED(m_status) ? 0 : std::min(count, m_limit);
    m_size += taken;
    if (written != nullptr) *written = taken;
    return m_status;
  }
  HRESULT STDMETHODCALLTYPE Seek(LARGE_INTEGER, DWORD, ULARGE_INTEGER*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE SetSize(ULARGE_INTEGER) override { return E_NOTIMPL; }

 private:
  ULONGLONG m_size = 0;
  int m_writes = 0;
  ULONG m_largestWrite = 0;
  ULONG m_references = 0;
  HRESULT m_status = S_OK;
  ULONG m_limit = std::numeric_limits<ULONG>::max();
};

}  // namespace ondrel::test
