// What this system's reader hands to its writer directly is what the writer makes of the reports of any reader: a
// handler that passes every call on takes the direct way from them.
#include <gtest/gtest.h>

#include "system/documents.h"
#include "system/memory_streams.h"
#include "system/recorder.h"
#include "system/written_size.h"

namespace ondrel::test {
namespace {

/// Passes every call on. Lives on the stack of its test.
class Forwarding final : public ISAXContentHandler {
 public:
  explicit Forwarding(ISAXContentHandler* next) : m_next(next) {}

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID, void** object) override {
    *object = nullptr;
    return E_NOINTERFACE;
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return 1; }
  ULONG STDMETHODCALLTYPE Release() override { return 1; }
  HRESULT STDMETHODCALLTYPE startDocument() override { return m_next->startDocument(); }
  HRESULT STDMETHODCALLTYPE endDocument() override { return m_next->endDocument(); }
  HRESULT STDMETHODCALLTYPE startElement(const WCHAR* namespaceUri, int namespaceUriLength, const WCHAR* localName,
                                         int localLength, const WCHAR* qName, int qNameLength,
                                         ISAXAttributes* attributes) override {
    return m_next->startElement(namespaceUri, namespaceUriLength, localName, localLength, qName, qNameLength,
                                attributes);
  }
  HRESULT STDMETHODCALLTYPE endElement(const WCHAR* namespaceUri, int namespaceUriLength, const WCHAR* localName,
                                       int localLength, const WCHAR* qName, int qNameLength) override {
    return m_next->endElement(namespaceUri, namespaceUriLength, localName, localLength, qName, qNameLength);
  }
  HRESULT STDMETHODCALLTYPE processingInstruction(const WCHAR* target, int targetLength, const WCHAR* data,
                                                  int dataLength) override {
    return m_next->processingInstruction(target, targetLength, data, dataLength);
  }

 private:
  ISAXContentHandler* m_next;
};

/// As Write, but through the forwarding handler.
HRESULT WriteForwarded(IXMLDOMDocument* document, IStream* stream, const WriterSettings& settings) {
  CComPtr<IMXWriter> writer;
  EXPECT_EQ(writer.CoCreateInstance(CLSID_MXXMLWriter60, nullptr, CLSCTX_ALL), S_OK);
  EXPECT_EQ(writer->put_omitXMLDeclaration(settings.omitDeclaration), S_OK);
  EXPECT_EQ(writer->put_standalone(settings.standalone), S_OK);
  EXPECT_EQ(writer->put_indent(settings.indent), S_OK);
  EXPECT_EQ(writer->put_output(CComVariant(static_cast<IUnknown*>(stream))), S_OK);
  CComPtr<ISAXContentHandler> handler;
  EXPECT_EQ(platform::GetContentHandler(writer, &handler), S_OK);
  Forwarding forwarding(handler);
  return Parse(NewReader(&forwarding), document);
}

/// The status of writing both ways, which must be one, and the bytes that came to the stream, likewise.
HRESULT WriteBothWays(IXMLDOMDocument* document, std::string& bytes, const WriterSettings& settings = {}) {
  const CComPtr<IStream> direct = NewStream();
  const CComPtr<IStream> forwarded = NewStream();
  const HRESULT status = Write(document, direct, settings);
  EXPECT_EQ(Hex(WriteForwarded(document, forwarded, settings)), Hex(status));
  bytes = BytesOf(direct);
  EXPECT_TRUE(BytesOf(forwarded) == bytes) << BytesOf(forwarded).size() << " and " << bytes.size() << " bytes";
  return status;
}

constexpr std::size_t kWriterBlock = std::size_t{64} * 1024;
constexpr HRESULT kRefusedCharacter = static_cast<HRESULT>(0xC00CE508);

TEST(PosixXmlWriterDirect, WritesElementsAttributesAndInstructions) {
  const CComPtr<IXMLDOMDocument> document =
      Loaded(CString(_T("<r a='&lt;&gt;&amp;&quot;&apos;&#9;&#10;&#13;\u00E9\u20AC\U0001F4BE\u007F\u0085' b=''>"
                        "<\u0416 \u00E9='1'><c/></\u0416><p:d xmlns:p='u' p:e='2'/></r>")));
  CComPtr<IXMLDOMProcessingInstruction> instruction;
  ASSERT_EQ(document->createProcessingInstruction(CComBSTR(_T("p")), CComBSTR(_T("a<b>&\u20AC")), &instruction), S_OK);
  ASSERT_EQ(RootOf(document)->appendChild(instruction, nullptr), S_OK);
  instruction.Release();
  ASSERT_EQ(document->createProcessingInstruction(CComBSTR(_T("q")), CComBSTR(_T("")), &instruction), S_OK);
  ASSERT_EQ(RootOf(document)->appendChild(instruction, nullptr), S_OK);
  std::string bytes;
  EXPECT_EQ(WriteBothWays(document, bytes), S_OK);
  EXPECT_EQ(bytes,
            "<?xml version=\"1.0\" encoding=\"utf-8\" standalone=\"yes\"?>\r\n"
            "<r a=\"&lt;&gt;&amp;&quot;'&#9;&#10;&#13;\xC3\xA9\xE2\x82\xAC\xF0\x9F\x92\xBE\x7F\xC2\x85\" b=\"\">\r\n"
            "\t<\xD0\x96 \xC3\xA9=\"1\">\r\n\t\t<c/>\r\n\t</\xD0\x96>\r\n"
            "\t<p:d xmlns:p=\"u\" p:e=\"2\"/>\r\n"
            "\t<?p a<b>&\xE2\x82\xAC?>\r\n\t<?q?>\r\n</r>\r\n");
  EXPECT_EQ(WriteBothWays(document, bytes, kPlainWriter), S_OK);
  EXPECT_EQ(WriteBothWays(NewDocument(), bytes), S_OK);
}

// What is written for one character lies on both sides of the end of a block, cut at each of its bytes.
TEST(PosixXmlWriterDirect, WritesCharactersAcrossTheEndOfABlock) {
  const struct {
    const WCHAR* character;
    const char* written;
  } kCharacters[] = {{_T("&"), "&amp;"},
                     {_T("\n"), "&#10;"},
                     {_T("\""), "&quot;"},
                     {_T("\u00E9"), "\xC3\xA9"},
                     {_T("\u20AC"), "\xE2\x82\xAC"},
                     {_T("\U0001F4BE"), "\xF0\x9F\x92\xBE"}};
  const std::string start = "<r v=\"";
  for (const auto& [character, written] : kCharacters) {
    for (std::size_t before = 0; before <= std::string(written).size(); ++before) {
      const std::size_t padding = kWriterBlock - before - start.size();
      const CComPtr<IXMLDOMDocument> document = Loaded("<r/>");
      SetAttribute(document, RootOf(document), _T("v"),
                   CString('p', static_cast<int>(padding)) + CString(character) + _T("e"));
      std::string bytes;
      ASSERT_EQ(WriteBothWays(document, bytes, kPlainWriter), S_OK);
      EXPECT_TRUE(bytes == start + std::string(padding, 'p') + written + "e\"/>") << written << ", " << before;
    }
  }
}

TEST(PosixXmlWriterDirect, WritesValuesOfManyBlocks) {
  CString value;
  std::string expected;
  for (int count = 0; count < 60'000; ++count) {
    value += _T("x\U0001F4BE<");
    expected += "x\xF0\x9F\x92\xBE&lt;";
  }
  const CComPtr<IXMLDOMDocument> document = Loaded("<r/>");
  SetAttribute(document, RootOf(document), _T("v"), value);
  std::string bytes;
  EXPECT_EQ(WriteBothWays(document, bytes, kPlainWriter), S_OK);
  EXPECT_TRUE(bytes == "<r v=\"" + expected + "\"/>");
}

TEST(PosixXmlWriterDirect, WritesManyElements) {
  std::string expected = "<r>";
  for (int number = 0; number < 20'000; ++number) expected += "<a n=\"" + std::to_string(number) + "\"><b/></a>";
  expected += "</r>";
  std::string bytes;
  EXPECT_EQ(WriteBothWays(Loaded(expected), bytes, kPlainWriter), S_OK);
  EXPECT_TRUE(bytes == expected);
}

// Whole blocks before a refused character are written, what follows the last of them is not.
TEST(PosixXmlWriterDirect, RefusesCharactersAtTheEndOfABlock) {
  const std::string start = "<r v=\"";
  for (const WCHAR refused : {WCHAR{0x01}, WCHAR{0xD83D}, WCHAR{0xDCBE}, WCHAR{0xFFFE}}) {
    for (const std::size_t place : {kWriterBlock - 1, kWriterBlock, kWriterBlock + 1}) {
      const CComPtr<IXMLDOMDocument> document = Loaded("<r/>");
      const std::size_t padding = place - start.size();
      SetAttribute(document, RootOf(document), _T("v"),
                   CString('p', static_cast<int>(padding)) + CString(refused, 1) + _T("e"));
      std::string bytes;
      EXPECT_EQ(Hex(WriteBothWays(document, bytes, kPlainWriter)), Hex(kRefusedCharacter)) << place;
      EXPECT_EQ(bytes.size(), place > kWriterBlock ? kWriterBlock : 0) << place;
    }
  }
}

TEST(PosixXmlWriterDirect, StopsAtTheFirstFailureOfTheStream) {
  const CComPtr<IXMLDOMDocument> document = Loaded("<r/>");
  SetAttribute(document, RootOf(document), _T("v"), CString('p', 3 * static_cast<int>(kWriterBlock)));
  WrittenSize direct;
  direct.Fail(STG_E_MEDIUMFULL);
  EXPECT_EQ(Hex(Write(document, &direct)), Hex(STG_E_MEDIUMFULL));
  EXPECT_EQ(direct.Writes(), 1);
  WrittenSize forwarded;
  forwarded.Fail(STG_E_MEDIUMFULL);
  EXPECT_EQ(Hex(WriteForwarded(document, &forwarded, {})), Hex(STG_E_MEDIUMFULL));
  EXPECT_EQ(forwarded.Writes(), 1);
}

}  // namespace
}  // namespace ondrel::test
