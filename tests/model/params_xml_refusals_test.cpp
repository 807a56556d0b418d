// XML that a record refuses: what is missing, what does not convert, and what was read until then.

#include <gtest/gtest.h>

#include <string>
#include <string_view>

#include "support/model/documents.h"
#include "support/model/sets.h"
#include "support/statuses.h"

namespace ondrel::test {
namespace {

struct Refusal {
  std::string_view xml;
  HRESULT status;
  RecordFields left;  ///< What a fresh record holds afterwards.
};

void Check(const Refusal& refusal) {
  const CComPtr<IXMLDOMDocument> document = ParseDocument(refusal.xml);
  CMMCObjectParams record;
  EXPECT_EQ(record.Deserialize(CComPtr<IXMLDOMNode>(RootOf(document))), refusal.status) << refusal.xml;
  EXPECT_TRUE(SameRecord(record, refusal.left)) << refusal.xml;
}

TEST(ParamsXmlRefusals, AMissingAttributeIsInvalidDataAndWhatStoodBeforeItIsKept) {
  Check({R"(<R Name="n" Icon="2" Type="HTML"><MenuScript File="3"/><StyleSheet/></R>)", kInvalidData, {}});
  Check({R"(<R Cookie="1" Icon="2" Type="HTML"><MenuScript File="3"/><StyleSheet/></R>)", kInvalidData, {.cookie = 1}});
  Check({R"(<R Cookie="1" Name="n" Type="HTML"><MenuScript File="3"/><StyleSheet/></R>)",
         kInvalidData,
         {.cookie = 1, .name = _T("n")}});
  Check({R"(<R Cookie="1" Name="n" Icon="2"><MenuScript File="3"/><StyleSheet/></R>)",
         kInvalidData,
         {.cookie = 1, .name = _T("n"), .icon = 2}});
}

TEST(ParamsXmlRefusals, AttributesAreNamedExactly) {
  Check({R"(<R cookie="1" Name="n" Icon="2" Type="HTML"><MenuScript/><StyleSheet/></R>)", kInvalidData, {}});
  Check({R"(<R Cookie="1" Name="n" icon="2" Type="HTML"><MenuScript/><StyleSheet/></R>)",
         kInvalidData,
         {.cookie = 1, .name = _T("n")}});
}

TEST(ParamsXmlRefusals, AMissingMenuScriptIsInvalidData) {
  Check({R"(<R Cookie="1" Name="n" Icon="2" Type="List"><ChildQueries><Query Tag="q" File="3"/></ChildQueries>)"
         R"(<Scripts><Script File="4"/></Scripts></R>)",
         kInvalidData,
         {.cookie = 1, .name = _T("n"), .icon = 2, .childQueries = {{_T("q"), 3}}}});
  Check({R"(<R Cookie="1" Name="n" Icon="2" Type="List"><Other><MenuScript File="5"/></Other></R>)",
         kInvalidData,
         {.cookie = 1, .name = _T("n"), .icon = 2}});
}

TEST(ParamsXmlRefusals, AMissingStyleSheetIsInvalidDataForHtmlAndDialog) {
  Check({R"(<R Cookie="1" Name="n" Icon="2" Type="HTML"><MenuScript File="3"/><Scripts><Script File="4"/></Scripts>)"
         R"(<RenderQueries><Query Tag="q" File="5"/></RenderQueries></R>)",
         kInvalidData,
         {.cookie = 1, .name = _T("n"), .icon = 2, .type = CMMCObjectParams::eHTML, .menuScript = 3, .scripts = {4}}});
  Check({R"(<R Cookie="1" Name="n" Icon="2" Type="Dialog"><MenuScript/></R>)",
         kInvalidData,
         {.cookie = 1, .name = _T("n"), .icon = 2, .type = CMMCObjectParams::eDialog}});
}

TEST(ParamsXmlRefusals, AQueryNeedsTagAndFile) {
  for (const std::string_view query : {R"(<Query/>)", R"(<Query Tag="b"/>)", R"(<Query File="6"/>)",
                                       R"(<Query tag="b" File="6"/>)", R"(<Query Tag="b" file="6"/>)"}) {
    const std::string child = R"(<R Cookie="1" Name="n" Icon="2" Type="HTML"><ChildQueries><Query Tag="a" File="5"/>)" +
                              std::string(query) +
                              R"(<Query Tag="c" File="7"/></ChildQueries>)"
                              R"(<MenuScript File="3"/><StyleSheet/></R>)";
    Check({child,
           kInvalidData,
           {.cookie = 1, .name = _T("n"), .icon = 2, .type = CMMCObjectParams::eHTML, .childQueries = {{_T("a"), 5}}}});
    const std::string render = R"(<R Cookie="1" Name="n" Icon="2" Type="Dialog"><MenuScript File="3"/>)"
                               R"(<StyleSheet File="4"/><RenderQueries><Query Tag="a" File="5"/>)" +
                               std::string(query) + R"(<Query Tag="c" File="7"/></RenderQueries></R>)";
    Check({render,
           kInvalidData,
           {.cookie = 1,
            .name = _T("n"),
            .icon = 2,
            .type = CMMCObjectParams::eDialog,
            .styleSheet = 4,
            .menuScript = 3,
            .renderQueries = {{_T("a"), 5}}}});
  }
}

TEST(ParamsXmlRefusals, TextThatIsNoNumberIsATypeMismatch) {
  for (const std::string text : {"x", "12x", "", "1 2", "--1"}) {
    Check({R"(<R Cookie=")" + text + R"(" Name="n" Icon="2" Type="List"><MenuScript/></R>)", kTypeMismatch, {}});
    Check({R"(<R Cookie="1" Name="n" Icon=")" + text + R"(" Type="List"><MenuScript/></R>)",
           kTypeMismatch,
           {.cookie = 1, .name = _T("n")}});
    Check({R"(<R Cookie="1" Name="n" Icon="2" Type="List"><ChildQueries><Query Tag="q" File=")" + text +
               R"("/></ChildQueries><MenuScript File="3"/></R>)",
           kTypeMismatch,
           {.cookie = 1, .name = _T("n"), .icon = 2}});
    Check({R"(<R Cookie="1" Name="n" Icon="2" Type="List"><MenuScript File=")" + text +
               R"("/><Scripts><Script File="4"/></Scripts></R>)",
           kTypeMismatch,
           {.cookie = 1, .name = _T("n"), .icon = 2}});
    Check({R"(<R Cookie="1" Name="n" Icon="2" Type="HTML"><MenuScript/><StyleSheet File=")" + text +
               R"("/><RenderQueries><Query Tag="q" File="3"/></RenderQueries></R>)",
           kTypeMismatch,
           {.cookie = 1, .name = _T("n"), .icon = 2, .type = CMMCObjectParams::eHTML}});
  }
}

TEST(ParamsXmlRefusals, ANumberBeyondSixtyFourBitsIsAnOverflow) {
  for (const std::string text : {"9223372036854775808", "-9223372036854775809", "100000000000000000000000"}) {
    Check({R"(<R Cookie=")" + text + R"(" Name="n" Icon="2" Type="List"><MenuScript/></R>)", kOverflow, {}});
    Check({R"(<R Cookie="1" Name="n" Icon="2" Type="HTML"><MenuScript/><StyleSheet File=")" + text + R"("/></R>)",
           kOverflow,
           {.cookie = 1, .name = _T("n"), .icon = 2, .type = CMMCObjectParams::eHTML}});
  }
}

TEST(ParamsXmlRefusals, AScriptThatDoesNotConvertEndsTheScriptsSilently) {
  const CComPtr<IXMLDOMDocument> document =
      ParseDocument(R"(<R Cookie="1" Name="n" Icon="2" Type="HTML"><MenuScript File="3"/>)"
                    R"(<Scripts><Script File="4"/><Script File="x"/><Script File="5"/></Scripts>)"
                    R"(<StyleSheet File="6"/><RenderQueries><Query Tag="q" File="7"/></RenderQueries></R>)");
  CMMCObjectParams record;
  EXPECT_EQ(record.Deserialize(CComPtr<IXMLDOMNode>(RootOf(document))), 0);
  EXPECT_TRUE(SameRecord(record, {.cookie = 1,
                                  .name = _T("n"),
                                  .icon = 2,
                                  .type = CMMCObjectParams::eHTML,
                                  .styleSheet = 6,
                                  .menuScript = 3,
                                  .scripts = {4},
                                  .renderQueries = {{_T("q"), 7}}}));
}

TEST(ParamsXmlRefusals, AFailedReadLeavesTheFieldsThatItDidNotReach) {
  const RecordFields before{.cookie = 90,
                            .name = _T("old"),
                            .icon = 91,
                            .type = CMMCObjectParams::eDialog,
                            .childQueries = {{_T("old"), 92}},
                            .styleSheet = 93,
                            .menuScript = 94,
                            .scripts = {95},
                            .renderQueries = {{_T("was"), 96}}};
  CMMCObjectParams record = MakeRecord(before);
  const CComPtr<IXMLDOMDocument> document = ParseDocument(R"(<R Cookie="1" Name="n" Type="List"><MenuScript/></R>)");
  EXPECT_EQ(record.Deserialize(CComPtr<IXMLDOMNode>(RootOf(document))), kInvalidData);
  RecordFields after = before;
  after.cookie = 1;
  after.name = _T("n");
  EXPECT_TRUE(SameRecord(record, after));
}

}  // namespace
}  // namespace ondrel::test
