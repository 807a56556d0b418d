// What stands between the library and the system where the library makes components and memory streams.
#pragma once

#include <ondrel/platform/com.h>

namespace ondrel::test {

/// A test derives its own, which is asked while it lives. One at a time, and for one thread.
class ComponentMaking {
 public:
  ComponentMaking();
  virtual ~ComponentMaking();
  ComponentMaking(const ComponentMaking&) = delete;
  ComponentMaking& operator=(const ComponentMaking&) = delete;

  /// Before a document, another component or a memory stream is made. A failing status is what the library gets.
  virtual HRESULT OnMaking() { return S_OK; }
  /// Gives what the library shall get for a memory stream that was made.
  virtual CComPtr<IStream> OnStreamMade(CComPtr<IStream> stream) { return stream; }
};

}  // namespace ondrel::test
