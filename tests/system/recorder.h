// A content handler that writes down what a reader reports, and the reader for it.
#pragma once

#include <string>

#include "os/whole_interfaces.h"
#include "system/documents.h"

namespace ondrel::test {

/// Writes down what it is told. Lives on the stack of its test.
class Recorder : public Whole<ISAXContentHandler> {
 public:
  /// The call, counted from 1, that fails.
  explicit Recorder(int failing = 0) : m_failing(failing) {}

  std::string events;

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID, void** object) override {
    *object = nullptr;
    return E_NOINTERFACE;
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return ++references; }
  ULONG STDMETHODCALLTYPE Release() override { return --references; }
  HRESULT STDMETHODCALLTYPE startDocument() override { return Note("start"); }
  HRESULT STDMETHODCALLTYPE endDocument() override { return Note("end"); }
  HRESULT STDMETHODCALLTYPE startElement(const WCHAR*, int namespaceLength, const WCHAR* localName, int localLength,
                                         const WCHAR* name, int length, ISAXAttributes* attributes) override {
    EXPECT_EQ(namespaceLength, 0);
    EXPECT_EQ(CString(localName, localLength), CString(name, length));
    std::string event = "<";
    event += platform::ToUtf8(CString(name, length));
    int count = -1;
    EXPECT_EQ(attributes->getLength(&count), S_OK);
    const WCHAR* text = nullptr;
    int textLength = 0;
    for (int index = 0; index < count; ++index) {
      EXPECT_EQ(attributes->getQName(index, &text, &textLength), S_OK);
      event += ' ';
      event += platform::ToUtf8(CString(text, textLength));
      EXPECT_EQ(attributes->getValue(index, &text, &textLength), S_OK);
      event += '=';
      event += platform::ToUtf8(CString(text, textLength));
    }
    return Note(event + ">");
  }
  HRESULT STDMETHODCALLTYPE endElement(const WCHAR*, int, const WCHAR*, int, const WCHAR* name, int length) override {
    return Note("</" + platform::ToUtf8(CString(name, length)) + ">");
  }
  HRESULT STDMETHODCALLTYPE processingInstruction(const WCHAR* target, int targetLength, const WCHAR* data,
                                                  int dataLength) override {
    return Note("<?" + platform::ToUtf8(CString(target, targetLength)) + " " +
                platform::ToUtf8(CString(data, dataLength)) + "?>");
  }

  ULONG references = 0;

 private:
  HRESULT Note(const std::string& event) {
    events += event + " ";
    return ++m_calls == m_failing ? E_NOTIMPL : S_OK;
  }

  int m_failing;
  int m_calls = 0;
};

inline CComPtr<ISAXXMLReader> NewReader(ISAXContentHandler* handler) {
  CComPtr<ISAXXMLReader> reader;
  EXPECT_EQ(reader.CoCreateInstance(CLSID_SAXXMLReader60, nullptr, CLSCTX_ALL), S_OK);
  EXPECT_EQ(reader->putContentHandler(handler), S_OK);
  return reader;
}

inline HRESULT Parse(ISAXXMLReader* reader, IXMLDOMDocument* document) {
  return reader->parse(CComVariant(static_cast<IDispatch*>(document)));
}

}  // namespace ondrel::test
