// What a stream has beside reading and writing, refused: a base for streams of the tests' own.
#pragma once

#include <ondrel/platform/com.h>

namespace ondrel::test {

class StreamBase : public IStream {
 public:
  HRESULT STDMETHODCALLTYPE Seek(LARGE_INTEGER, DWORD, ULARGE_INTEGER*) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE SetSize(ULARGE_INTEGER) override { return E_NOTIMPL; }
};

}  // namespace ondrel::test
