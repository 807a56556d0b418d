// The text that a document is written as.
#include <gtest/gtest.h>

#include "system/documents.h"
#include "system/written_size.h"

namespace ondrel::test {
namespace {

const WriterSettings kBare{VARIANT_TRUE, VARIANT_TRUE, VARIANT_FALSE};

/// The text without the line end that a writer may put behind the last line.
std::string WithoutLastLineEnd(std::string text) {
  if (text.ends_with("\r\n")) text.resize(text.size() - 2);
  return text;
}

TEST(XmlWriter, IndentsWithTabsAndEndsLinesWithCrLf) {
  const CComPtr<IXMLDOMDocument> document =
      Loaded("<Project><NodeGroup><Node a='1' b='2'><c/></Node></NodeGroup><d/></Project>");
  EXPECT_EQ(WithoutLastLineEnd(Written(document)),
            "<?xml version=\"1.0\" encoding=\"utf-8\" standalone=\"yes\"?>\r\n"
            "<Project>\r\n"
            "\t<NodeGroup>\r\n"
            "\t\t<Node a=\"1\" b=\"2\">\r\n"
            "\t\t\t<c/>\r\n"
            "\t\t</Node>\r\n"
            "\t</NodeGroup>\r\n"
            "\t<d/>\r\n"
            "</Project>");
}

TEST(XmlWriter, FollowsItsSettings) {
  const CComPtr<IXMLDOMDocument> document = Loaded("<a><b/></a>");
  EXPECT_EQ(WithoutLastLineEnd(Written(document, {VARIANT_FALSE, VARIANT_FALSE, VARIANT_TRUE})),
            "<?xml version=\"1.0\" encoding=\"utf-8\" standalone=\"no\"?>\r\n<a>\r\n\t<b/>\r\n</a>");
  EXPECT_EQ(Written(document, kBare), "<a><b/></a>");
}

TEST(XmlWriter, EscapesWhatWouldNotComeBack) {
  const CComPtr<IXMLDOMDocument> document = Loaded("<a/>");
  const CString value = _T("<&>\"'\t\n\r \u00E9\u20AC\U0001F4BE\u007F\u0085");
  SetAttribute(document, RootOf(document), _T("v"), value);
  const std::string text = Written(document, kBare);
  EXPECT_EQ(text, "<a v=\"&lt;&amp;&gt;&quot;'&#9;&#10;&#13; \xC3\xA9\xE2\x82\xAC\xF0\x9F\x92\xBE\x7F\xC2\x85\"/>");
  const CComPtr<IXMLDOMDocument> again = NewDocument();
  std::basic_string<WCHAR> wide(text.size(), 0);
  wide.resize(static_cast<std::size_t>(MultiByteToWideChar(CP_UTF8, 0, text.data(), static_cast<int>(text.size()),
                                                           wide.data(), static_cast<int>(wide.size()))));
  ASSERT_EQ(Load(again, CString(wide)), S_OK);
  EXPECT_EQ(AttributeOf(RootOf(again), _T("v")), value);
}

// Whether a document with such a unit in it is written.
bool IsWritten(unsigned unit) {
  const CComPtr<IXMLDOMDocument> document = Loaded("<a/>");
  SetAttribute(document, RootOf(document), _T("v"), _T("x") + CString(static_cast<WCHAR>(unit), 1) + _T("y"));
  WrittenSize stream;
  return SUCCEEDED(Write(document, &stream));
}

TEST(XmlWriter, RefusesTextThatNoDocumentCanCarry) {
  for (const unsigned unit : {0x01U, 0x08U, 0x0BU, 0x0CU, 0x0EU, 0x1FU, 0xFFFEU, 0xFFFFU}) {
    EXPECT_FALSE(IsWritten(unit)) << std::hex << unit;
  }
  EXPECT_TRUE(IsWritten(0xFFFD));
}

TEST(XmlWriter, RefusesLoneSurrogates) {
  for (const unsigned unit : {0xD800U, 0xDBFFU, 0xDC00U, 0xDFFFU}) EXPECT_FALSE(IsWritten(unit)) << std::hex << unit;
}

TEST(XmlWriter, LeavesTheDocumentsOwnDeclarationAway) {
  const CComPtr<IXMLDOMDocument> document = NewDocument();
  CComPtr<IXMLDOMProcessingInstruction> instruction;
  ASSERT_EQ(document->createProcessingInstruction(CComBSTR(_T("xml")), CComBSTR(_T("version='1.0' encoding='utf-8'")),
                                                  &instruction),
            S_OK);
  ASSERT_EQ(document->appendChild(instruction, nullptr), S_OK);
  ASSERT_EQ(document->appendChild(NewElement(document, _T("a")), nullptr), S_OK);
  EXPECT_EQ(WithoutLastLineEnd(Written(document)),
            "<?xml version=\"1.0\" encoding=\"utf-8\" standalone=\"yes\"?>\r\n<a/>");
}

TEST(XmlWriter, WritesInstructions) {
  const CComPtr<IXMLDOMDocument> document = NewDocument();
  for (const auto& [target, data] : {std::pair(_T("p"), _T("q r")), {_T("e"), _T("")}}) {
    CComPtr<IXMLDOMProcessingInstruction> instruction;
    ASSERT_EQ(document->createProcessingInstruction(CComBSTR(target), CComBSTR(data), &instruction), S_OK);
    ASSERT_EQ(document->appendChild(instruction, nullptr), S_OK);
  }
  ASSERT_EQ(document->appendChild(NewElement(document, _T("a")), nullptr), S_OK);
  EXPECT_EQ(WithoutLastLineEnd(Written(document)),
            "<?xml version=\"1.0\" encoding=\"utf-8\" standalone=\"yes\"?>\r\n<?p q r?>\r\n<?e?>\r\n<a/>");
}

TEST(XmlWriter, WritesLargeDocumentsInBlocks) {
  std::string text = "<r>";
  for (int number = 0; number < 20'000; ++number) text += "<element with='" + std::to_string(number) + "'/>";
  const CComPtr<IXMLDOMDocument> document = Loaded(text + "</r>");
  WrittenSize stream;
  ASSERT_EQ(Hex(Write(document, &stream)), Hex(S_OK));
  EXPECT_EQ(stream.Size(), Written(document).size());
  EXPECT_GT(stream.Writes(), 1);
  EXPECT_LT(stream.LargestWrite(), 100'000U);
  EXPECT_EQ(stream.References(), 0U) << "writer and reader are gone, and their references with them";
}

TEST(XmlWriter, GivesTheFailureOfItsOutputBack) {
  WrittenSize failing;
  failing.Fail(STG_E_MEDIUMFULL);
  EXPECT_EQ(Hex(Write(Loaded("<a/>"), &failing)), Hex(STG_E_MEDIUMFULL));
}

TEST(XmlWriter, HasAContentHandlerForWhoeverHasAPlaceForIt) {
  CComPtr<IMXWriter> writer;
  ASSERT_EQ(writer.CoCreateInstance(CLSID_MXXMLWriter60, nullptr, CLSCTX_ALL), S_OK);
  EXPECT_EQ(writer->put_encoding(CComBSTR(_T("UTF-8"))), S_OK);
  EXPECT_EQ(writer->put_output(CComVariant()), S_OK);
  CComPtr<ISAXContentHandler> handler;
  EXPECT_EQ(platform::GetContentHandler(writer, &handler), S_OK);
  EXPECT_NE(handler.p, nullptr);
  EXPECT_EQ(Hex(platform::GetContentHandler(nullptr, &handler)), Hex(E_POINTER));
  EXPECT_EQ(Hex(platform::GetContentHandler(writer, nullptr)), Hex(E_POINTER));
}

}  // namespace
}  // namespace ondrel::test
