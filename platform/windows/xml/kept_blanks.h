// Tabs and line ends in attributes, on their way through a writer that writes them as they are. Whoever reads the text
// would take them for blanks, so they have to become character references; but a writer makes text of every "&" that it
// is given. So each of them passes it as a mark, which the stream behind the writer replaces by the reference.
#pragma once

#include <atomic>
#include <string>
#include <string_view>
#include <vector>

#include <ondrel/platform/com.h>
#include <ondrel/platform/xml.h>

namespace ondrel::platform {

/// An element's attributes with marks in their values. It lives as long as the call that reports the element and counts
/// no references.
class MarkedAttributes final : public ISAXAttributes {
 public:
  explicit MarkedAttributes(ISAXAttributes& attributes) : m_attributes(attributes) {}

  /// Reads the values. S_FALSE when none needs a mark, and then the attributes can be reported as they are. Raises
  /// std::bad_alloc.
  HRESULT Read();

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override;
  ULONG STDMETHODCALLTYPE AddRef() override { return 1; }
  ULONG STDMETHODCALLTYPE Release() override { return 1; }

  HRESULT STDMETHODCALLTYPE getLength(int* length) override { return m_attributes.getLength(length); }
  HRESULT STDMETHODCALLTYPE getURI(int index, const WCHAR** uri, int* length) override {
    return m_attributes.getURI(index, uri, length);
  }
  HRESULT STDMETHODCALLTYPE getLocalName(int index, const WCHAR** name, int* length) override {
    return m_attributes.getLocalName(index, name, length);
  }
  HRESULT STDMETHODCALLTYPE getQName(int index, const WCHAR** name, int* length) override {
    return m_attributes.getQName(index, name, length);
  }
  HRESULT STDMETHODCALLTYPE getName(int index, const WCHAR** uri, int* uriLength, const WCHAR** localName,
                                    int* localNameLength, const WCHAR** name, int* nameLength) override {
    return m_attributes.getName(index, uri, uriLength, localName, localNameLength, name, nameLength);
  }
  HRESULT STDMETHODCALLTYPE getIndexFromName(const WCHAR* uri, int uriLength, const WCHAR* localName,
                                             int localNameLength, int* index) override {
    return m_attributes.getIndexFromName(uri, uriLength, localName, localNameLength, index);
  }
  HRESULT STDMETHODCALLTYPE getIndexFromQName(const WCHAR* name, int length, int* index) override {
    return m_attributes.getIndexFromQName(name, length, index);
  }
  HRESULT STDMETHODCALLTYPE getType(int index, const WCHAR** type, int* length) override {
    return m_attributes.getType(index, type, length);
  }
  HRESULT STDMETHODCALLTYPE getTypeFromName(const WCHAR* uri, int uriLength, const WCHAR* localName,
                                            int localNameLength, const WCHAR** type, int* typeLength) override {
    return m_attributes.getTypeFromName(uri, uriLength, localName, localNameLength, type, typeLength);
  }
  HRESULT STDMETHODCALLTYPE getTypeFromQName(const WCHAR* name, int nameLength, const WCHAR** type,
                                             int* typeLength) override {
    return m_attributes.getTypeFromQName(name, nameLength, type, typeLength);
  }
  HRESULT STDMETHODCALLTYPE getValue(int index, const WCHAR** value, int* length) override;
  HRESULT STDMETHODCALLTYPE getValueFromName(const WCHAR* uri, int uriLength, const WCHAR* localName,
                                             int localNameLength, const WCHAR** value, int* valueLength) override;
  HRESULT STDMETHODCALLTYPE getValueFromQName(const WCHAR* name, int nameLength, const WCHAR** value,
                                              int* valueLength) override;

 private:
  ISAXAttributes& m_attributes;
  std::vector<std::wstring> m_values;
};

/// A stream that takes UTF-8 text with marks and writes it, with references in their places, to another one.
class UnmarkingStream final : public IStream {
 public:
  /// Has one reference, which is the caller's.
  explicit UnmarkingStream(IStream* target) : m_target(target) {}

  /// The first failure of a write. Nothing is written after it, also when a writer goes on.
  HRESULT Status() const { return m_status; }
  IStream* Target() const { return m_target; }

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override;
  ULONG STDMETHODCALLTYPE AddRef() override { return ++m_references; }
  ULONG STDMETHODCALLTYPE Release() override;

  HRESULT STDMETHODCALLTYPE Write(const void* bytes, ULONG count, ULONG* written) override;

  HRESULT STDMETHODCALLTYPE Read(void* buffer, ULONG count, ULONG* read) override {
    return m_target->Read(buffer, count, read);
  }
  HRESULT STDMETHODCALLTYPE Seek(LARGE_INTEGER move, DWORD origin, ULARGE_INTEGER* position) override {
    return m_target->Seek(move, origin, position);
  }
  HRESULT STDMETHODCALLTYPE SetSize(ULARGE_INTEGER size) override { return m_target->SetSize(size); }
  HRESULT STDMETHODCALLTYPE CopyTo(IStream* other, ULARGE_INTEGER count, ULARGE_INTEGER* read,
                                   ULARGE_INTEGER* written) override {
    return m_target->CopyTo(other, count, read, written);
  }
  HRESULT STDMETHODCALLTYPE Commit(DWORD flags) override { return m_target->Commit(flags); }
  HRESULT STDMETHODCALLTYPE Revert() override { return m_target->Revert(); }
  HRESULT STDMETHODCALLTYPE LockRegion(ULARGE_INTEGER offset, ULARGE_INTEGER count, DWORD type) override {
    return m_target->LockRegion(offset, count, type);
  }
  HRESULT STDMETHODCALLTYPE UnlockRegion(ULARGE_INTEGER offset, ULARGE_INTEGER count, DWORD type) override {
    return m_target->UnlockRegion(offset, count, type);
  }
  HRESULT STDMETHODCALLTYPE Stat(STATSTG* status, DWORD flags) override { return m_target->Stat(status, flags); }
  HRESULT STDMETHODCALLTYPE Clone(IStream** clone) override { return m_target->Clone(clone); }

 private:
  ~UnmarkingStream() = default;

  HRESULT WriteWithReferences(std::string_view bytes);
  void PutMarked(char letter, std::string& text);

  CComPtr<IStream> m_target;
  HRESULT m_status = S_OK;
  std::size_t m_begun = 0;  // how many bytes of a mark stand at the end of what was written
  std::atomic<ULONG> m_references = 1;
};

}  // namespace ondrel::platform
