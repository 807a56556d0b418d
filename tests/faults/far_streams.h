// Memory streams that seem to hold gigabytes.
#pragma once

#include <utility>

#include "faults/component_making.h"
#include "support/counted_stream.h"

namespace ondrel::test {

/// While it lives, the library's memory stream tells a chosen position, wherever it stands. For one stream.
class FarStreams final : public ComponentMaking {
 public:
  explicit FarStreams(ULONGLONG position) : m_stream(position) {}

  bool WasAsked() const { return m_stream.wasAsked; }

  CComPtr<IStream> OnStreamMade(CComPtr<IStream> stream) override {
    m_stream.target = std::move(stream);
    return CComPtr<IStream>(&m_stream);
  }

 private:
  class Stream final : public CountedStream {
   public:
    explicit Stream(ULONGLONG position) : m_position(position) {}

    CComPtr<IStream> target;
    bool wasAsked = false;

    /// What the stand-in is not, the stream behind it may be: the system finds its memory so.
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override {
      const HRESULT status = CountedStream::QueryInterface(id, object);
      return status == E_NOINTERFACE ? target->QueryInterface(id, object) : status;
    }
    HRESULT STDMETHODCALLTYPE Read(void* buffer, ULONG count, ULONG* read) override {
      return target->Read(buffer, count, read);
    }
    HRESULT STDMETHODCALLTYPE Write(const void* buffer, ULONG count, ULONG* written) override {
      return target->Write(buffer, count, written);
    }
    HRESULT STDMETHODCALLTYPE Seek(LARGE_INTEGER move, DWORD origin, ULARGE_INTEGER* position) override {
      const HRESULT status = target->Seek(move, origin, position);
      if (SUCCEEDED(status) && position != nullptr) {
        position->QuadPart = m_position;
        wasAsked = true;
      }
      return status;
    }

   private:
    const ULONGLONG m_position;
  };

  Stream m_stream;
};

}  // namespace ondrel::test
