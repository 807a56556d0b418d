// A record's XML form over a document whose calls fail, each in turn.

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "support/model/documents.h"
#include "support/model/failing_document.h"
#include "support/model/sets.h"
#include "support/raised.h"
#include "support/statuses.h"

namespace ondrel::test {
namespace {

/// Notes a state unless it is the one noted last.
void NoteState(std::vector<std::string>& states, std::string state) {
  if (states.empty() || states.back() != state) states.push_back(std::move(state));
}

/// The document's states after a write whose first, second, ... call fails, up to the write that succeeds. Each failing
/// write must return the status of the call and make no further call.
std::vector<std::string> StatesOfFailingWrites(const RecordFields& fields) {
  std::vector<std::string> states;
  const CMMCObjectParams record = MakeRecord(fields);
  for (std::size_t failing = 1;; ++failing) {
    const CComPtr<IXMLDOMDocument> document = NewDocument();
    const CComPtr<IXMLDOMElement> root = AddRoot(document, _T("R"));
    DocumentCalls calls(failing);
    const HRESULT status = record.Serialize(Failing(document, calls), Failing(root, calls));
    NoteState(states, XmlOf(document));
    if (!calls.HasFailed()) {
      EXPECT_EQ(status, 0);
      return states;
    }
    EXPECT_EQ(status, kChosenFailure) << "call " << failing << ", " << calls.Log().back();
    EXPECT_EQ(calls.Log().size(), failing) << "a call was made after " << calls.Log()[failing - 1];
  }
}

TEST(ParamsXmlFaults, AFailedWriteLeavesWhatWasAttachedAndWritesNothingMore) {
  const std::string attributes = R"(<R Cookie="12" Name="Status" Icon="31" Type="HTML")";
  const std::string children = R"(<ChildQueries><Query Tag="q" File="40"/></ChildQueries>)";
  EXPECT_EQ(
      StatesOfFailingWrites({.cookie = 12,
                             .name = _T("Status"),
                             .icon = 31,
                             .type = CMMCObjectParams::eHTML,
                             .childQueries = {{_T("q"), 40}},
                             .styleSheet = 42,
                             .menuScript = 43,
                             .scripts = {44, 0},
                             .renderQueries = {{_T("r"), 45}, {_T("s"), 46}}}),
      (std::vector<std::string>{
          R"(<R/>)",
          R"(<R Cookie="12"/>)",
          R"(<R Cookie="12" Name="Status"/>)",
          R"(<R Cookie="12" Name="Status" Icon="31"/>)",
          attributes + "/>",
          attributes + ">" + children + "</R>",
          attributes + ">" + children + R"(<MenuScript File="43"/></R>)",
          attributes + ">" + children + R"(<MenuScript File="43"/><Scripts><Script File="44"/><Script/></Scripts></R>)",
          attributes + ">" + children +
              R"(<MenuScript File="43"/><Scripts><Script File="44"/><Script/></Scripts>)"
              R"(<StyleSheet File="42"/></R>)",
          attributes + ">" + children +
              R"(<MenuScript File="43"/><Scripts><Script File="44"/><Script/></Scripts>)"
              R"(<StyleSheet File="42"/>)"
              R"(<RenderQueries><Query Tag="r" File="45"/><Query Tag="s" File="46"/>)"
              R"(</RenderQueries></R>)",
      }));
}

TEST(ParamsXmlFaults, AFailedWriteOfADialogStopsAtEachStep) {
  const std::string head = R"(<R Cookie="0" Name="" Icon="0" Type="Dialog")";
  EXPECT_EQ(StatesOfFailingWrites({.type = CMMCObjectParams::eDialog, .childQueries = {{_T("never"), 1}}}),
            (std::vector<std::string>{
                R"(<R/>)",
                R"(<R Cookie="0"/>)",
                R"(<R Cookie="0" Name=""/>)",
                R"(<R Cookie="0" Name="" Icon="0"/>)",
                head + "/>",
                head + "><MenuScript/></R>",
                head + "><MenuScript/><Scripts/></R>",
                head + "><MenuScript/><Scripts/><StyleSheet/></R>",
                head + "><MenuScript/><Scripts/><StyleSheet/><RenderQueries/></R>",
            }));
}

TEST(ParamsXmlFaults, MemoryThatTheDocumentLacksIsAStatusToo) {
  const CComPtr<IXMLDOMDocument> document = NewDocument();
  DocumentCalls calls(2, E_OUTOFMEMORY);
  EXPECT_EQ(CMMCObjectParams().Serialize(Failing(document, calls), Failing(AddRoot(document, _T("R")), calls)),
            kOutOfMemory);
}

TEST(ParamsXmlFaults, AFailedReadReturnsTheStatusAndReadsNothingMoreButInTheScripts) {
  const CComPtr<IXMLDOMDocument> document = ParseDocument(
      R"(<R Cookie="1" Name="n" Icon="2" Type="HTML"><ChildQueries><Query Tag="a" File="3"/></ChildQueries>)"
      R"(<MenuScript File="4"/><Scripts><Script File="5"/><Script File="6"/></Scripts><StyleSheet File="7"/>)"
      R"(<RenderQueries><Query Tag="b" File="8"/></RenderQueries></R>)");
  // The walk over the scripts lies between the look-up of the menu script's file and that of the style sheet.
  DocumentCalls whole;
  CMMCObjectParams expected;
  ASSERT_EQ(expected.Deserialize(CComPtr<IXMLDOMNode>(Failing(RootOf(document), whole))), 0);
  const auto numberOf = [&](const char* call) {
    return static_cast<std::size_t>(std::find(whole.Log().begin(), whole.Log().end(), call) - whole.Log().begin()) + 1;
  };
  const std::size_t firstInScripts = numberOf("selectNodes Scripts/Script");
  const std::size_t firstAfterScripts = numberOf("selectSingleNode StyleSheet");
  ASSERT_LT(firstInScripts, firstAfterScripts);
  ASSERT_LE(firstAfterScripts, whole.Log().size());

  std::vector<std::string> states;
  for (std::size_t failing = 1; failing <= whole.Log().size(); ++failing) {
    DocumentCalls calls(failing);
    CMMCObjectParams record;
    const HRESULT status = record.Deserialize(CComPtr<IXMLDOMNode>(Failing(RootOf(document), calls)));
    const std::string where = "call " + std::to_string(failing) + ", " + whole.Log()[failing - 1];
    ASSERT_TRUE(calls.HasFailed()) << where;
    if (failing >= firstInScripts && failing < firstAfterScripts) {
      EXPECT_EQ(status, 0) << where;
      EXPECT_EQ(calls.Log()[failing], "selectSingleNode StyleSheet") << where;
      EXPECT_EQ(record.GetStyleSheet(), 7) << where;
      EXPECT_EQ(record.GetRenderQueries(), expected.GetRenderQueries()) << where;
      EXPECT_LE(record.GetScripts().size(), 2U) << where;
    } else {
      EXPECT_EQ(status, kChosenFailure) << where;
      EXPECT_EQ(calls.Log().size(), failing) << where;
      NoteState(states, Describe(FieldsOf(record)));
    }
  }
  const auto html = CMMCObjectParams::eHTML;
  const CMMCObjectParams::QueryList child{{_T("a"), 3}};
  const CMMCObjectParams::QueryList render{{_T("b"), 8}};
  EXPECT_EQ(states,
            (std::vector<std::string>{
                Describe(RecordFields{}),
                Describe(RecordFields{.cookie = 1}),
                Describe(RecordFields{.cookie = 1, .name = _T("n")}),
                Describe(RecordFields{.cookie = 1, .name = _T("n"), .icon = 2}),
                Describe(RecordFields{.cookie = 1, .name = _T("n"), .icon = 2, .type = html}),
                Describe(RecordFields{.cookie = 1, .name = _T("n"), .icon = 2, .type = html, .childQueries = child}),
                Describe(RecordFields{.cookie = 1,
                                      .name = _T("n"),
                                      .icon = 2,
                                      .type = html,
                                      .childQueries = child,
                                      .menuScript = 4,
                                      .scripts = {5, 6}}),
                Describe(RecordFields{.cookie = 1,
                                      .name = _T("n"),
                                      .icon = 2,
                                      .type = html,
                                      .childQueries = child,
                                      .styleSheet = 7,
                                      .menuScript = 4,
                                      .scripts = {5, 6}}),
                Describe(RecordFields{.cookie = 1,
                                      .name = _T("n"),
                                      .icon = 2,
                                      .type = html,
                                      .childQueries = child,
                                      .styleSheet = 7,
                                      .menuScript = 4,
                                      .scripts = {5, 6},
                                      .renderQueries = render}),
            }));
}

TEST(ParamsXmlFaults, TheScriptsReadUntilAFailureStay) {
  const CComPtr<IXMLDOMDocument> document =
      ParseDocument(R"(<R Cookie="1" Name="n" Icon="2" Type="List"><MenuScript/>)"
                    R"(<Scripts><Script File="5"/><Script File="6"/></Scripts></R>)");
  std::vector<std::string> scripts;
  for (std::size_t failing = 1;; ++failing) {
    DocumentCalls calls(failing);
    CMMCObjectParams record;
    const HRESULT status = record.Deserialize(CComPtr<IXMLDOMNode>(Failing(RootOf(document), calls)));
    if (status != 0) continue;
    std::string text;
    for (const __int64 script : record.GetScripts()) text += std::to_string(script) + " ";
    NoteState(scripts, text);
    if (!calls.HasFailed()) break;
    EXPECT_EQ(calls.Log().size(), failing) << "a list record ends with its scripts";
  }
  EXPECT_EQ(scripts, (std::vector<std::string>{"", "5 ", "5 6 "}));
}

}  // namespace
}  // namespace ondrel::test
