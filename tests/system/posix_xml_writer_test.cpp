// The text that this system's own writer writes, to the byte: line ends at the start and the end, the limit of the
// indentation, empty documents, instructions among elements, and what it refuses. Windows has its own ways there.
#include <gtest/gtest.h>

#include "system/documents.h"
#include "system/memory_streams.h"
#include "system/written_size.h"

namespace ondrel::test {
namespace {

constexpr HRESULT kInvalidCharacter = static_cast<HRESULT>(0xC00CE508);

TEST(PosixXmlWriter, FollowsItsSettings) {
  const CComPtr<IXMLDOMDocument> document = Loaded("<a><b/></a>");
  EXPECT_EQ(Written(document, {VARIANT_FALSE, VARIANT_FALSE, VARIANT_TRUE}),
            "<?xml version=\"1.0\" encoding=\"utf-8\" standalone=\"no\"?>\r\n<a>\r\n\t<b/>\r\n</a>\r\n");
  EXPECT_EQ(Written(document, {VARIANT_TRUE, VARIANT_TRUE, VARIANT_TRUE}), "<a>\r\n\t<b/>\r\n</a>\r\n");
  EXPECT_EQ(Written(document, {VARIANT_FALSE, VARIANT_TRUE, VARIANT_FALSE}),
            "<?xml version=\"1.0\" encoding=\"utf-8\" standalone=\"yes\"?><a><b/></a>");
}

TEST(PosixXmlWriter, RefusesTextThatNoDocumentCanCarry) {
  for (const unsigned unit :
       {0x00U, 0x01U, 0x08U, 0x0BU, 0x0CU, 0x0EU, 0x1FU, 0xD800U, 0xDBFFU, 0xDC00U, 0xDFFFU, 0xFFFEU, 0xFFFFU}) {
    const CComPtr<IXMLDOMDocument> document = Loaded("<a/>");
    SetAttribute(document, RootOf(document), _T("v"), _T("x") + CString(static_cast<WCHAR>(unit), 1) + _T("y"));
    WrittenSize stream;
    EXPECT_EQ(Hex(Write(document, &stream)), Hex(kInvalidCharacter)) << std::hex << unit;
    EXPECT_EQ(stream.Size(), 0U) << "nothing of a short document is written";
  }
}

TEST(PosixXmlWriter, InstructionsStandAmongElements) {
  const CComPtr<IXMLDOMDocument> document = Loaded("<a/>");
  CComPtr<IXMLDOMProcessingInstruction> instruction;
  ASSERT_EQ(document->createProcessingInstruction(CComBSTR(_T("p")), CComBSTR(_T("q")), &instruction), S_OK);
  ASSERT_EQ(RootOf(document)->appendChild(instruction, nullptr), S_OK);
  ASSERT_EQ(RootOf(document)->appendChild(NewElement(document, _T("b")), nullptr), S_OK);
  EXPECT_EQ(Written(document, {VARIANT_TRUE, VARIANT_TRUE, VARIANT_TRUE}), "<a>\r\n\t<?p q?>\r\n\t<b/>\r\n</a>\r\n");
}

TEST(PosixXmlWriter, AnEmptyDocumentIsADeclaration) {
  EXPECT_EQ(Written(NewDocument()), "<?xml version=\"1.0\" encoding=\"utf-8\" standalone=\"yes\"?>\r\n");
}

TEST(PosixXmlWriter, IndentsNoDeeperThanItsLimit) {
  constexpr int kMostTabs = 64;
  std::string text;
  for (int level = 0; level < 66; ++level) text += "<n>";
  text += "<leaf/>";
  for (int level = 0; level < 66; ++level) text += "</n>";
  const std::string written = Written(Loaded(text));
  const std::string tabs(kMostTabs, '\t');
  EXPECT_NE(written.find("\r\n" + tabs.substr(1) + "<n>\r\n"), std::string::npos);
  EXPECT_NE(written.find("\r\n" + tabs + "<n>\r\n" + tabs + "<n>\r\n" + tabs + "<leaf/>\r\n" + tabs + "</n>\r\n"),
            std::string::npos);
}

TEST(PosixXmlWriter, EndsItsLastLine) {
  EXPECT_EQ(Written(Loaded("<a/>")), "<?xml version=\"1.0\" encoding=\"utf-8\" standalone=\"yes\"?>\r\n<a/>\r\n");
}

TEST(PosixXmlWriter, TakesAShortWriteForAFullMedium) {
  WrittenSize shortening;
  shortening.Shorten(3);
  EXPECT_EQ(Hex(Write(Loaded("<a/>"), &shortening)), Hex(STG_E_MEDIUMFULL));
  EXPECT_EQ(shortening.Writes(), 1);
}

TEST(PosixXmlWriter, NeedsAnOutput) { EXPECT_EQ(Hex(Write(Loaded("<a/>"), nullptr)), Hex(E_UNEXPECTED)); }

TEST(PosixXmlWriter, TakesOnlyTheOutputsAndEncodingsItKnows) {
  CComPtr<IMXWriter> writer;
  ASSERT_EQ(writer.CoCreateInstance(CLSID_MXXMLWriter60, nullptr, CLSCTX_ALL), S_OK);
  EXPECT_EQ(writer->put_encoding(CComBSTR(_T("UTF-8"))), S_OK);
  EXPECT_EQ(Hex(writer->put_encoding(CComBSTR(_T("utf-16")))), Hex(E_INVALIDARG));
  EXPECT_EQ(Hex(writer->put_encoding(nullptr)), Hex(E_INVALIDARG));
  EXPECT_EQ(Hex(writer->put_output(CComVariant(_T("text")))), Hex(E_INVALIDARG));
  EXPECT_EQ(Hex(writer->put_output(CComVariant(static_cast<IUnknown*>(nullptr)))), Hex(E_INVALIDARG));
  EXPECT_EQ(Hex(writer->put_output(CComVariant(static_cast<IUnknown*>(NewDocument())))), Hex(E_INVALIDARG));
  EXPECT_EQ(writer->put_output(CComVariant()), S_OK);
}

/// Attributes of which each fails to give its value.
class FailingAttributes final : public ISAXAttributes {
 public:
  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID, void**) override { return E_NOINTERFACE; }
  ULONG STDMETHODCALLTYPE AddRef() override { return 1; }
  ULONG STDMETHODCALLTYPE Release() override { return 1; }
  HRESULT STDMETHODCALLTYPE getLength(int* length) override {
    *length = 1;
    return m_failsAtOnce ? E_FAIL : S_OK;
  }
  HRESULT STDMETHODCALLTYPE getQName(int, const WCHAR** name, int* length) override {
    *name = _T("x");
    *length = 1;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE getValue(int, const WCHAR**, int*) override { return E_NOTIMPL; }

  explicit FailingAttributes(bool failsAtOnce) : m_failsAtOnce(failsAtOnce) {}

 private:
  const bool m_failsAtOnce;
};

TEST(PosixXmlWriter, GivesTheFailureOfAttributesBack) {
  CComPtr<IMXWriter> writer;
  ASSERT_EQ(writer.CoCreateInstance(CLSID_MXXMLWriter60, nullptr, CLSCTX_ALL), S_OK);
  const CComPtr<IStream> stream = NewStream();
  ASSERT_EQ(writer->put_output(CComVariant(static_cast<IUnknown*>(stream))), S_OK);
  CComPtr<ISAXContentHandler> handler;
  ASSERT_EQ(platform::GetContentHandler(writer, &handler), S_OK);
  ASSERT_EQ(handler->startDocument(), S_OK);
  for (const auto& [failsAtOnce, status] : {std::pair{true, E_FAIL}, {false, E_NOTIMPL}}) {
    FailingAttributes attributes(failsAtOnce);
    EXPECT_EQ(Hex(handler->startElement(nullptr, 0, nullptr, 0, _T("a"), 1, &attributes)), Hex(status));
  }
}

}  // namespace
}  // namespace ondrel::test
