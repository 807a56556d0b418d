// A record read from its XML form.

#include <gtest/gtest.h>

#include <string_view>
#include <utility>

#include "support/model/documents.h"
#include "support/model/sets.h"

namespace ondrel::test {
namespace {

constexpr std::string_view kHtml =
    R"(<R Cookie="12" Name="Status" Icon="31" Type="HTML">)"
    R"(<ChildQueries><Query Tag="Disks" File="40"/><Query Tag="Fans" File="41"/></ChildQueries>)"
    R"(<MenuScript File="43"/>)"
    R"(<Scripts><Script File="44"/><Script File="45"/><Script File="46"/></Scripts>)"
    R"(<StyleSheet File="42"/>)"
    R"(<RenderQueries><Query Tag="Summary" File="47"/><Query Tag="Detail" File="48"/></RenderQueries></R>)";

/// The record read from the document's element into `record`, which must succeed with 0.
CMMCObjectParams RecordRead(std::string_view xml, CMMCObjectParams record = {}) {
  const CComPtr<IXMLDOMDocument> document = ParseDocument(xml);
  EXPECT_EQ(record.Deserialize(CComPtr<IXMLDOMNode>(RootOf(document))), 0) << xml;
  return record;
}

RecordFields Full(CMMCObjectParams::_eTypeNode type) { return FullRecord(type); }

TEST(ParamsXmlRead, GivesEveryFieldOfAnHtmlRecord) {
  EXPECT_TRUE(SameRecord(RecordRead(kHtml), Full(CMMCObjectParams::eHTML)));
}

TEST(ParamsXmlRead, GivesTheViewOfADialogAndItsChildQueriesIfItHasSome) {
  EXPECT_TRUE(
      SameRecord(RecordRead(R"(<R Cookie="1" Name="d" Icon="2" Type="Dialog">)"
                            R"(<ChildQueries><Query Tag="a" File="3"/></ChildQueries><MenuScript/><Scripts/>)"
                            R"(<StyleSheet File="4"/><RenderQueries><Query Tag="b" File="5"/></RenderQueries></R>)"),
                 {.cookie = 1,
                  .name = _T("d"),
                  .icon = 2,
                  .type = CMMCObjectParams::eDialog,
                  .childQueries = {{_T("a"), 3}},
                  .styleSheet = 4,
                  .renderQueries = {{_T("b"), 5}}}));
}

TEST(ParamsXmlRead, IgnoresTheViewOfOtherTypes) {
  for (const char* const name : {"List", "Oops!!", "Tree", ""}) {
    const CMMCObjectParams record = RecordRead(std::string(R"(<R Cookie="1" Name="n" Icon="2" Type=")") + name +
                                               R"("><MenuScript/><StyleSheet File="4"/>)"
                                               R"(<RenderQueries><Query Tag="b"/></RenderQueries></R>)");
    EXPECT_EQ(record.GetStyleSheet(), 0) << name;
    EXPECT_TRUE(record.GetRenderQueries().empty()) << name;
  }
}

TEST(ParamsXmlRead, TakesTheTypeWithoutRegardToCase) {
  const std::pair<const char*, int> types[] = {{"List", 0}, {"list", 0},   {"html", 1}, {"HTML", 1}, {"dIALOG", 2},
                                               {"Tree", 3}, {"Oops!!", 3}, {"", 3},     {"2", 3}};
  for (const auto& [name, type] : types) {
    const CMMCObjectParams record = RecordRead(std::string(R"(<R Cookie="1" Name="n" Icon="0" Type=")") + name +
                                               R"("><MenuScript/><StyleSheet/></R>)");
    EXPECT_EQ(record.GetNodeType(), type) << name;
  }
}

TEST(ParamsXmlRead, TakesNumbersOfFullWidthWithBlanksAndSigns) {
  const CMMCObjectParams record =
      RecordRead(R"(<R Cookie="-9223372036854775808" Name="" Icon=" +9223372036854775807 " Type="List">)"
                 R"(<MenuScript File="-1"/><Scripts><Script File=" 7"/></Scripts></R>)");
  EXPECT_TRUE(SameRecord(
      record, {.cookie = -0x7FFFFFFFFFFFFFFF - 1, .icon = 0x7FFFFFFFFFFFFFFF, .menuScript = -1, .scripts = {7}}));
}

TEST(ParamsXmlRead, LeavesTheCookieOfAReferenceWithoutAFile) {
  constexpr std::string_view kBare = R"(<R Cookie="1" Name="n" Icon="0" Type="HTML"><MenuScript/><StyleSheet/></R>)";
  EXPECT_TRUE(SameRecord(RecordRead(kBare), {.cookie = 1, .name = _T("n"), .type = CMMCObjectParams::eHTML}));
  EXPECT_TRUE(
      SameRecord(RecordRead(kBare, MakeRecord({.styleSheet = 8, .menuScript = 9})),
                 {.cookie = 1, .name = _T("n"), .type = CMMCObjectParams::eHTML, .styleSheet = 8, .menuScript = 9}));
}

TEST(ParamsXmlRead, TakesAFileOfZeroForZero) {
  const CMMCObjectParams record = RecordRead(R"(<R Cookie="1" Name="n" Icon="0" Type="HTML">)"
                                             R"(<MenuScript File="0"/><StyleSheet File="0"/></R>)",
                                             MakeRecord({.styleSheet = 8, .menuScript = 9}));
  EXPECT_EQ(record.GetMenuScript(), 0);
  EXPECT_EQ(record.GetStyleSheet(), 0);
}

TEST(ParamsXmlRead, NeedsNoListElements) {
  EXPECT_TRUE(SameRecord(RecordRead(R"(<R Cookie="1" Name="n" Icon="0" Type="HTML"><MenuScript/><StyleSheet/></R>)"),
                         {.cookie = 1, .name = _T("n"), .type = CMMCObjectParams::eHTML}));
  EXPECT_TRUE(
      SameRecord(RecordRead(R"(<R Cookie="1" Name="n" Icon="0" Type="HTML"><ChildQueries/><MenuScript/><Scripts/>)"
                            R"(<StyleSheet/><RenderQueries/></R>)"),
                 {.cookie = 1, .name = _T("n"), .type = CMMCObjectParams::eHTML}));
}

TEST(ParamsXmlRead, TakesQueriesAndScriptsOfTheirNamesAlone) {
  const CMMCObjectParams record = RecordRead(
      R"(<R Cookie="1" Name="n" Icon="0" Type="HTML">)"
      R"(<ChildQueries><query Tag="no" File="1"/><Query Tag="yes" File="2"/><Other><Query/></Other></ChildQueries>)"
      R"(<MenuScript/><Scripts><script/><Script File="3"/><Other><Script/></Other></Scripts><Script File="4"/>)"
      R"(<StyleSheet/><Query/><renderQueries><Query/></renderQueries></R>)");
  EXPECT_TRUE(SameRecord(record, {.cookie = 1,
                                  .name = _T("n"),
                                  .type = CMMCObjectParams::eHTML,
                                  .childQueries = {{_T("yes"), 2}},
                                  .scripts = {3}}));
}

TEST(ParamsXmlRead, TakesElementsInAnyOrderAndSeveralListsInDocumentOrder) {
  const CMMCObjectParams record =
      RecordRead(R"(<R Type="HTML" Icon="5" Name="n" Cookie="1"><Scripts><Script File="1"/></Scripts>)"
                 R"(<RenderQueries><Query File="2" Tag="r"/></RenderQueries><StyleSheet File="3"/>)"
                 R"(<ChildQueries><Query Tag="a" File="4"/></ChildQueries><MenuScript File="6"/><MenuScript File="7"/>)"
                 R"(<ChildQueries><Query Tag="b" File="5"/></ChildQueries><Scripts><Script File="8"/></Scripts></R>)");
  EXPECT_TRUE(SameRecord(record, {.cookie = 1,
                                  .name = _T("n"),
                                  .icon = 5,
                                  .type = CMMCObjectParams::eHTML,
                                  .childQueries = {{_T("a"), 4}, {_T("b"), 5}},
                                  .styleSheet = 3,
                                  .menuScript = 6,
                                  .scripts = {1, 8},
                                  .renderQueries = {{_T("r"), 2}}}));
}

TEST(ParamsXmlRead, ReplacesValuesAndAddsToLists) {
  const CMMCObjectParams record = RecordRead(kHtml, MakeRecord({.cookie = 1,
                                                                .name = _T("old"),
                                                                .icon = 2,
                                                                .childQueries = {{_T("old"), 3}},
                                                                .styleSheet = 4,
                                                                .menuScript = 5,
                                                                .scripts = {6},
                                                                .renderQueries = {{_T("was"), 7}}}));
  RecordFields expected = Full(CMMCObjectParams::eHTML);
  expected.childQueries.insert(expected.childQueries.begin(), {_T("old"), 3});
  expected.scripts.insert(expected.scripts.begin(), 6);
  expected.renderQueries.insert(expected.renderQueries.begin(), {_T("was"), 7});
  EXPECT_TRUE(SameRecord(record, expected));
}

TEST(ParamsXmlRead, DoublesEveryListThatIsReadTwice) {
  RecordFields expected = Full(CMMCObjectParams::eHTML);
  expected.childQueries = {{_T("Disks"), 40}, {_T("Fans"), 41}, {_T("Disks"), 40}, {_T("Fans"), 41}};
  expected.scripts = {44, 45, 46, 44, 45, 46};
  expected.renderQueries = {{_T("Summary"), 47}, {_T("Detail"), 48}, {_T("Summary"), 47}, {_T("Detail"), 48}};
  EXPECT_TRUE(SameRecord(RecordRead(kHtml, RecordRead(kHtml)), expected));

  constexpr std::string_view kList =
      R"(<R Cookie="1" Name="" Icon="0" Type="List"><ChildQueries><Query Tag="a" File="1"/></ChildQueries>)"
      R"(<MenuScript/><Scripts><Script File="2"/></Scripts>)"
      R"(<RenderQueries><Query Tag="b" File="3"/></RenderQueries></R>)";
  EXPECT_TRUE(SameRecord(RecordRead(kList, RecordRead(kList)),
                         {.cookie = 1, .childQueries = {{_T("a"), 1}, {_T("a"), 1}}, .scripts = {2, 2}}));
}

TEST(ParamsXmlRead, GivesBackWhatWasWrittenButForWhatTheTypeLeavesOut) {
  for (const int number : {0, 1, 2, 3}) {
    const auto type = static_cast<CMMCObjectParams::_eTypeNode>(number);
    const CComPtr<IXMLDOMDocument> document = NewDocument();
    const CComPtr<IXMLDOMElement> root = AddRoot(document, _T("Any"));
    ASSERT_EQ(MakeRecord(Full(type)).Serialize(document, root), 0);
    CMMCObjectParams record;
    ASSERT_EQ(record.Deserialize(CComPtr<IXMLDOMNode>(root)), 0);
    RecordFields expected = Full(type);
    if (number == 2) expected.childQueries.clear();
    if (number == 0 || number == 3) {
      expected.styleSheet = 0;
      expected.renderQueries.clear();
    }
    EXPECT_TRUE(SameRecord(record, expected)) << "type " << number;
  }
}

}  // namespace
}  // namespace ondrel::test
