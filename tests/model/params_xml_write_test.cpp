// A record's XML form as it is written: attributes and child elements in their order.

#include <gtest/gtest.h>

#include <string>

#include "support/model/documents.h"
#include "support/model/sets.h"

namespace ondrel::test {
namespace {

std::string Written(const RecordFields& fields) {
  const CComPtr<IXMLDOMDocument> document = NewDocument();
  const CMMCObjectParams record = MakeRecord(fields);
  EXPECT_EQ(record.Serialize(document, AddRoot(document, _T("R"))), 0);
  return XmlOf(document);
}

TEST(ParamsXmlWrite, AnHtmlRecordHasFourAttributesAndFiveElements) {
  EXPECT_EQ(Written({.cookie = 12,
                     .name = _T("Status"),
                     .type = CMMCObjectParams::eHTML,
                     .childQueries = {{_T("Disks"), 40}},
                     .styleSheet = 42,
                     .scripts = {41},
                     .renderQueries = {{_T("Summary"), 43}}}),
            R"(<R Cookie="12" Name="Status" Icon="0" Type="HTML">)"
            R"(<ChildQueries><Query Tag="Disks" File="40"/></ChildQueries>)"
            R"(<MenuScript/>)"
            R"(<Scripts><Script File="41"/></Scripts>)"
            R"(<StyleSheet File="42"/>)"
            R"(<RenderQueries><Query Tag="Summary" File="43"/></RenderQueries></R>)");
}

TEST(ParamsXmlWrite, ADialogRecordHasNoChildQueries) {
  EXPECT_EQ(Written(FullRecord(CMMCObjectParams::eDialog)),
            R"(<R Cookie="12" Name="Status" Icon="31" Type="Dialog">)"
            R"(<MenuScript File="43"/>)"
            R"(<Scripts><Script File="44"/><Script File="45"/><Script File="46"/></Scripts>)"
            R"(<StyleSheet File="42"/>)"
            R"(<RenderQueries><Query Tag="Summary" File="47"/><Query Tag="Detail" File="48"/></RenderQueries></R>)");
}

TEST(ParamsXmlWrite, AListRecordHasNoView) {
  EXPECT_EQ(Written(FullRecord(CMMCObjectParams::eList)),
            R"(<R Cookie="12" Name="Status" Icon="31" Type="List">)"
            R"(<ChildQueries><Query Tag="Disks" File="40"/><Query Tag="Fans" File="41"/></ChildQueries>)"
            R"(<MenuScript File="43"/>)"
            R"(<Scripts><Script File="44"/><Script File="45"/><Script File="46"/></Scripts></R>)");
}

TEST(ParamsXmlWrite, ARecordOfAnUnknownTypeIsWrittenAsOopsWithoutAView) {
  for (const int type : {3, 4, -1}) {
    EXPECT_EQ(Written(FullRecord(static_cast<CMMCObjectParams::_eTypeNode>(type))),
              R"(<R Cookie="12" Name="Status" Icon="31" Type="Oops!!">)"
              R"(<ChildQueries><Query Tag="Disks" File="40"/><Query Tag="Fans" File="41"/></ChildQueries>)"
              R"(<MenuScript File="43"/>)"
              R"(<Scripts><Script File="44"/><Script File="45"/><Script File="46"/></Scripts></R>)")
        << "type " << type;
  }
}

TEST(ParamsXmlWrite, EmptyRecordsHaveTheirEmptyElements) {
  EXPECT_EQ(Written({}), R"(<R Cookie="0" Name="" Icon="0" Type="List"><ChildQueries/><MenuScript/><Scripts/></R>)");
  EXPECT_EQ(Written({.type = CMMCObjectParams::eHTML}),
            R"(<R Cookie="0" Name="" Icon="0" Type="HTML"><ChildQueries/><MenuScript/><Scripts/><StyleSheet/>)"
            R"(<RenderQueries/></R>)");
  EXPECT_EQ(Written({.type = CMMCObjectParams::eDialog}),
            R"(<R Cookie="0" Name="" Icon="0" Type="Dialog"><MenuScript/><Scripts/><StyleSheet/><RenderQueries/></R>)");
}

TEST(ParamsXmlWrite, AFileOfZeroStandsInQueriesAndIsLeftOutOfReferences) {
  EXPECT_EQ(Written({.type = CMMCObjectParams::eHTML,
                     .childQueries = {{_T(""), 0}},
                     .scripts = {0, 5, 0},
                     .renderQueries = {{_T("t"), 0}}}),
            R"(<R Cookie="0" Name="" Icon="0" Type="HTML"><ChildQueries><Query Tag="" File="0"/></ChildQueries>)"
            R"(<MenuScript/><Scripts><Script/><Script File="5"/><Script/></Scripts><StyleSheet/>)"
            R"(<RenderQueries><Query Tag="t" File="0"/></RenderQueries></R>)");
}

TEST(ParamsXmlWrite, CookiesAreSignedDecimalNumbersOfFullWidth) {
  constexpr __int64 kLargest = 0x7FFFFFFFFFFFFFFF;
  EXPECT_EQ(Written({.cookie = -kLargest - 1,
                     .icon = kLargest,
                     .childQueries = {{_T("q"), -1}},
                     .menuScript = -2,
                     .scripts = {4294967296}}),
            R"(<R Cookie="-9223372036854775808" Name="" Icon="9223372036854775807" Type="List">)"
            R"(<ChildQueries><Query Tag="q" File="-1"/></ChildQueries><MenuScript File="-2"/>)"
            R"(<Scripts><Script File="4294967296"/></Scripts></R>)");
}

TEST(ParamsXmlWrite, ListsKeepTheirOrderAndTheirDuplicates) {
  EXPECT_EQ(
      Written({.childQueries = {{_T("b"), 2}, {_T("a"), 1}, {_T("b"), 2}}, .scripts = {9, 3, 9}}),
      R"(<R Cookie="0" Name="" Icon="0" Type="List">)"
      R"(<ChildQueries><Query Tag="b" File="2"/><Query Tag="a" File="1"/><Query Tag="b" File="2"/></ChildQueries>)"
      R"(<MenuScript/><Scripts><Script File="9"/><Script File="3"/><Script File="9"/></Scripts></R>)");
}

TEST(ParamsXmlWrite, TextIsKeptAsItIs) {
  EXPECT_EQ(Written({.name = _T("<a & \"b\">"), .childQueries = {{_T(" x "), 1}}}),
            R"(<R Cookie="0" Name="&lt;a &amp; &quot;b&quot;>" Icon="0" Type="List">)"
            R"(<ChildQueries><Query Tag=" x " File="1"/></ChildQueries><MenuScript/><Scripts/></R>)");
}

TEST(ParamsXmlWrite, AttributesThatAreThereAreReplacedAndElementsAreAdded) {
  // In the order of the writing, so that it says nothing whether a replaced attribute stays at its place.
  const CComPtr<IXMLDOMDocument> document =
      ParseDocument(R"(<R Other="y" Cookie="9" Name="x" Icon="9" Type="x"><Old/></R>)");
  EXPECT_EQ(MakeRecord({.cookie = 1, .name = _T("n")}).Serialize(document, RootOf(document)), 0);
  EXPECT_EQ(XmlOf(document), R"(<R Other="y" Cookie="1" Name="n" Icon="0" Type="List"><Old/><ChildQueries/>)"
                             R"(<MenuScript/><Scripts/></R>)");
}

TEST(ParamsXmlWrite, TheRecordStaysAsItWas) {
  const CComPtr<IXMLDOMDocument> document = NewDocument();
  const CMMCObjectParams record = MakeRecord(FullRecord(CMMCObjectParams::eHTML));
  EXPECT_EQ(record.Serialize(document, AddRoot(document, _T("R"))), 0);
  EXPECT_TRUE(SameRecord(record, FullRecord(CMMCObjectParams::eHTML)));
}

}  // namespace
}  // namespace ondrel::test
