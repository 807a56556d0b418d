// What a reader reports of a document, and when it stops.
#include <gtest/gtest.h>

#include "system/documents.h"

namespace ondrel::test {
namespace {

/// Writes down what it is told. Lives on the stack of its test.
class Recorder final : public ISAXContentHandler {
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
    EXPECT_EQ(Hex(attributes->getQName(count, &text, &textLength)), Hex(E_INVALIDARG));
    EXPECT_EQ(Hex(attributes->getValue(-1, &text, &textLength)), Hex(E_INVALIDARG));
    EXPECT_EQ(Hex(attributes->getValue(0, nullptr, &textLength)), Hex(E_POINTER));
    EXPECT_EQ(Hex(attributes->getLength(nullptr)), Hex(E_POINTER));
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

CComPtr<ISAXXMLReader> NewReader(ISAXContentHandler* handler) {
  CComPtr<ISAXXMLReader> reader;
  EXPECT_EQ(reader.CoCreateInstance(CLSID_SAXXMLReader60, nullptr, CLSCTX_ALL), S_OK);
  EXPECT_EQ(reader->putContentHandler(handler), S_OK);
  return reader;
}

HRESULT Parse(ISAXXMLReader* reader, IXMLDOMDocument* document) {
  return reader->parse(CComVariant(static_cast<IDispatch*>(document)));
}

TEST(SaxReader, ReportsTheDocumentInOrder) {
  Recorder recorder;
  const CComPtr<ISAXXMLReader> reader = NewReader(&recorder);
  EXPECT_EQ(Parse(reader, Loaded("<a x='1' y='&#x20AC;'><b/><c><d/></c></a>")), S_OK);
  EXPECT_EQ(recorder.events, "start <a x=1 y=\xE2\x82\xAC> <b> </b> <c> <d> </d> </c> </a> end ");
  recorder.events.clear();
  EXPECT_EQ(Parse(reader, NewDocument()), S_OK);
  EXPECT_EQ(recorder.events, "start end ");
}

TEST(SaxReader, StopsAtTheFirstFailureAndGivesItBack) {
  const std::vector<std::string> untilCall = {"start ",
                                              "start <a> ",
                                              "start <a> <b> ",
                                              "start <a> <b> </b> ",
                                              "start <a> <b> </b> </a> ",
                                              "start <a> <b> </b> </a> end "};
  for (std::size_t call = 1; call <= untilCall.size(); ++call) {
    Recorder recorder(static_cast<int>(call));
    EXPECT_EQ(Hex(Parse(NewReader(&recorder), Loaded("<a><b/></a>"))), Hex(E_NOTIMPL)) << "call " << call;
    EXPECT_EQ(recorder.events, untilCall[call - 1]);
    EXPECT_EQ(recorder.references, 0U);
  }
}

TEST(SaxReader, WithoutAHandlerHasNothingToDo) { EXPECT_EQ(Parse(NewReader(nullptr), Loaded("<a/>")), S_OK); }

TEST(SaxReader, LetsGoOfAHandlerThatIsReplaced) {
  Recorder first;
  Recorder second;
  {
    const CComPtr<ISAXXMLReader> reader = NewReader(&first);
    EXPECT_EQ(first.references, 1U);
    EXPECT_EQ(reader->putContentHandler(&second), S_OK);
    EXPECT_EQ(first.references, 0U);
    EXPECT_EQ(reader->putContentHandler(&second), S_OK);
    EXPECT_EQ(second.references, 1U);
  }
  EXPECT_EQ(second.references, 0U);
}

TEST(SaxReader, TakesOnlyDocuments) {
  Recorder recorder;
  const CComPtr<ISAXXMLReader> reader = NewReader(&recorder);
  const CComPtr<IXMLDOMDocument> document = Loaded("<a/>");
  EXPECT_EQ(Hex(reader->parse(CComVariant())), Hex(E_INVALIDARG));
  EXPECT_EQ(Hex(reader->parse(CComVariant(_T("<a/>")))), Hex(E_INVALIDARG));
  EXPECT_EQ(Hex(reader->parse(CComVariant(static_cast<IDispatch*>(nullptr)))), Hex(E_INVALIDARG));
  EXPECT_EQ(Hex(reader->parse(CComVariant(static_cast<IDispatch*>(RootOf(document))))), Hex(E_INVALIDARG));
  EXPECT_EQ(recorder.events, "");
}

}  // namespace
}  // namespace ondrel::test
