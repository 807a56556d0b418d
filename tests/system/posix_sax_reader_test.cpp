// What this system's own reader and its attributes refuse, and what it makes of an empty document. Windows takes text
// and streams, too, and may crash on null.
#include <gtest/gtest.h>

#include "system/recorder.h"

namespace ondrel::test {
namespace {

TEST(PosixSaxReader, ReportsAnEmptyDocument) {
  Recorder recorder;
  EXPECT_EQ(Parse(NewReader(&recorder), NewDocument()), S_OK);
  EXPECT_EQ(recorder.events, "start end ");
}

TEST(PosixSaxReader, TakesOnlyDocuments) {
  Recorder recorder;
  const CComPtr<ISAXXMLReader> reader = NewReader(&recorder);
  const CComPtr<IXMLDOMDocument> document = Loaded("<a/>");
  EXPECT_EQ(Hex(reader->parse(CComVariant())), Hex(E_INVALIDARG));
  EXPECT_EQ(Hex(reader->parse(CComVariant(_T("<a/>")))), Hex(E_INVALIDARG));
  EXPECT_EQ(Hex(reader->parse(CComVariant(static_cast<IDispatch*>(nullptr)))), Hex(E_INVALIDARG));
  EXPECT_EQ(Hex(reader->parse(CComVariant(static_cast<IDispatch*>(RootOf(document))))), Hex(E_INVALIDARG));
  EXPECT_EQ(recorder.events, "");
}

/// Asks for attributes that are not there.
class Asker final : public Recorder {
 public:
  HRESULT STDMETHODCALLTYPE startElement(const WCHAR*, int, const WCHAR*, int, const WCHAR*, int,
                                         ISAXAttributes* attributes) override {
    const WCHAR* text = nullptr;
    int length = 0;
    EXPECT_EQ(Hex(attributes->getQName(2, &text, &length)), Hex(E_INVALIDARG));
    EXPECT_EQ(Hex(attributes->getValue(-1, &text, &length)), Hex(E_INVALIDARG));
    EXPECT_EQ(Hex(attributes->getValue(0, nullptr, &length)), Hex(E_POINTER));
    EXPECT_EQ(Hex(attributes->getLength(nullptr)), Hex(E_POINTER));
    ++asked;
    return S_OK;
  }

  int asked = 0;
};

TEST(PosixSaxReader, AttributesThatAreNotThereAreInvalid) {
  Asker asker;
  EXPECT_EQ(Parse(NewReader(&asker), Loaded("<a x='1' y='2'/>")), S_OK);
  EXPECT_EQ(asker.asked, 1);
}

/// Takes the attributes that it is given for any other object.
class Holder final : public Recorder {
 public:
  HRESULT STDMETHODCALLTYPE startElement(const WCHAR*, int, const WCHAR*, int, const WCHAR*, int,
                                         ISAXAttributes* attributes) override {
    CComPtr<ISAXAttributes> same;
    EXPECT_EQ(attributes->QueryInterface(platform::InterfaceId<ISAXAttributes>(), reinterpret_cast<void**>(&same)),
              S_OK);
    EXPECT_EQ(same.p, attributes);
    CComPtr<IStream> stream;
    EXPECT_EQ(Hex(attributes->QueryInterface(platform::InterfaceId<IStream>(), reinterpret_cast<void**>(&stream))),
              Hex(E_NOINTERFACE));
    same.Release();
    const WCHAR* text = nullptr;
    int length = 0;
    EXPECT_EQ(attributes->getValue(0, &text, &length), S_OK);
    EXPECT_EQ(CString(text, length), _T("1"));
    ++held;
    return S_OK;
  }

  int held = 0;
};

TEST(PosixSaxReader, AttributesMayBeHeldWhileTheirElementIsReported) {
  Holder holder;
  EXPECT_EQ(Parse(NewReader(&holder), Loaded("<a x='1'/>")), S_OK);
  EXPECT_EQ(holder.held, 1);
}

}  // namespace
}  // namespace ondrel::test
