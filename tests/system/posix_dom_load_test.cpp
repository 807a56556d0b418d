// Reading text into a document of this system's own: what loadXML refuses by itself, what the document does not keep,
// and the time that long texts take.
#include <gtest/gtest.h>

#include <ctime>
#include <string>

#include "system/documents.h"
#include "system/xml_texts.h"

namespace ondrel::test {
namespace {

TEST(PosixDomLoad, RefusesByItselfWhatIsRefused) {
  for (const NamedText& text : RefusedTexts()) {
    VARIANT_BOOL loaded = VARIANT_TRUE;
    EXPECT_EQ(Hex(NewDocument()->loadXML(CComBSTR(text.text), &loaded)), Hex(S_FALSE)) << text.name;
    EXPECT_EQ(loaded, VARIANT_FALSE) << text.name;
  }
}

TEST(PosixDomLoad, NullTextIsRefusedAndTheFlagIsOptional) {
  const CComPtr<IXMLDOMDocument> document = NewDocument();
  VARIANT_BOOL loaded = VARIANT_TRUE;
  EXPECT_EQ(document->loadXML(nullptr, &loaded), S_FALSE);
  EXPECT_EQ(loaded, VARIANT_FALSE);
  EXPECT_EQ(document->loadXML(CComBSTR(_T("<a/>")), nullptr), S_OK);
  EXPECT_EQ(NameOf(RootOf(document)), _T("a"));
}

TEST(PosixDomLoad, KeepsNoTextCommentsOrInstructions) {
  const CComPtr<IXMLDOMDocument> document =
      Loaded("<r z='1' a='2'>text<!-- c --><b><c/></b>more<?p q?><d m='&lt;3'/></r>");
  EXPECT_EQ(Written(document, {VARIANT_TRUE, VARIANT_TRUE, VARIANT_FALSE}),
            "<r z=\"1\" a=\"2\"><b><c/></b><d m=\"&lt;3\"/></r>");
}

// The processor time of loading an attribute of so many units.
double SecondsForValue(int units) {
  const CComBSTR text(_T("<r v='") + CString('v', units) + _T("'/>"));
  const CComPtr<IXMLDOMDocument> document = NewDocument();
  VARIANT_BOOL loaded = VARIANT_FALSE;
  const std::clock_t start = std::clock();
  EXPECT_EQ(document->loadXML(text, &loaded), S_OK);
  const double seconds = static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC;
  EXPECT_EQ(AttributeOf(RootOf(document), _T("v")).GetLength(), units);
  return seconds;
}

// The parser looks at a token that is cut by the end of a block again with the next block. With blocks of one size that
// would take 256 times as long for 16 times the length.
TEST(PosixDomLoad, ALongTokenIsReadInLinearTime) {
  constexpr int kUnits = 1'000'000;
  constexpr double kClockGrain = 0.001;
  EXPECT_LT(SecondsForValue(16 * kUnits), 64 * (SecondsForValue(kUnits) + kClockGrain));
}

TEST(PosixDomLoad, AMillionAttributesOfOneElementAreReadInLinearTime) {
  std::string text = "<r";
  for (int number = 0; number < 1'000'000; ++number) text += " a" + std::to_string(number) + "=''";
  const CComPtr<IXMLDOMDocument> document = Loaded(text + "/>");
  EXPECT_EQ(AttributeOf(RootOf(document), _T("a999999")), _T(""));
  EXPECT_EQ(AttributeOf(RootOf(document), _T("a1000000")), _T("(none)"));
}

}  // namespace
}  // namespace ondrel::test
