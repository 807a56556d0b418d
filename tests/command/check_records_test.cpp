// What `ondrel check` finds in nodes and dialogs.
#include <gtest/gtest.h>

#include "checked_project.h"

namespace ondrel::test {
namespace {

constexpr std::string_view kTopNode =
    R"(<Project><NodeGroup><Node Cookie="1" Name="t" Icon="0" Type="List"><MenuScript/>)";
constexpr std::string_view kTopEnd = "</Node></NodeGroup>";
constexpr std::string_view kUsedScript = R"(<FileGroup><File Cookie="8" Name="a.js"/></FileGroup></Project>)";

const RemarkCase kRecordRemarks[] = {
    {"NegativeLeaf",
     {kTopNode, "<Nodes>", R"(<Node Cookie="-3" Name="a" Icon="0" Type="List"><MenuScript/></Node>)", "</Nodes>",
      kTopEnd, "</Project>"},
     "3: error: node -3 would be lost: neither a save nor an image holds a node of a negative cookie; give it a cookie "
     "of 0 or more [node-lost]"},
    {"NegativeSubtree",
     {kTopNode, "<Nodes>", R"(<Node Cookie="-3" Name="a" Icon="0" Type="List"><MenuScript/><Nodes>)",
      R"(<Node Cookie="-4" Name="a" Icon="0" Type="List"><MenuScript/></Node>)",
      R"(<Node Cookie="5" Name="a" Icon="0" Type="List"><MenuScript/></Node></Nodes></Node>)", "</Nodes>", kTopEnd,
      "</Project>"},
     "3: error: node -3 with the 2 nodes below it would be lost: neither a save nor an image holds a node of a "
     "negative cookie; give it a cookie of 0 or more [node-lost]"},
    {"NegativeTopNode",
     {"<Project><NodeGroup>", R"(<Node Cookie="-1" Name="a" Icon="0" Type="List"><MenuScript/></Node>)",
      "</NodeGroup></Project>"},
     "2: error: node -1 would be lost: neither a save nor an image holds a node of a negative cookie; give it a cookie "
     "of 0 or more [node-lost]"},
    {"SecondTopNodeIsTheOneOfTheLargerCookie",
     {"<Project><NodeGroup>", R"(<Node Cookie="9" Name="a" Icon="0" Type="List"><MenuScript/><Nodes>)",
      R"(<Node Cookie="2" Name="b" Icon="0" Type="List"><MenuScript/></Node></Nodes></Node>)",
      R"(</NodeGroup><NodeGroup><Node Cookie="4" Name="c" Icon="0" Type="List"><MenuScript/></Node>)",
      "</NodeGroup></Project>"},
     "2: error: node 9 with the 1 node below it stands at the top beside node 4: an image refuses that, and a save "
     "would keep node 4 alone; put it below node 4 [second-top-node]"},
    {"UnknownType",
     {kTopNode, "<Nodes>", R"(<Node Cookie="3" Name="a" Icon="0" Type="Tree"><MenuScript/></Node>)", "</Nodes>",
      kTopEnd, "</Project>"},
     "3: warning: node 3 is of no known type, and a save writes \"Oops!!\" for it; give it the type List, HTML or "
     "Dialog [unknown-type]"},
    {"DialogOfCookieZero",
     {"<Project><DialogGroup>",
      R"(<Dialog Cookie="0" Name="a" Icon="0" Type="Dialog"><MenuScript/><StyleSheet/></Dialog>)",
      "</DialogGroup></Project>"},
     "2: warning: dialog 0 cannot be looked up by its name, because 0 stands for no dialog there; give it another "
     "cookie [dialog-cookie-zero]"},
    {"DialogNamesAlike",
     {"<Project><DialogGroup>",
      R"(<Dialog Cookie="7" Name="Ask" Icon="0" Type="Dialog"><MenuScript/><StyleSheet/></Dialog>)",
      R"(<Dialog Cookie="6" Name="aSK" Icon="0" Type="Dialog"><MenuScript/><StyleSheet/></Dialog>)",
      "</DialogGroup></Project>"},
     "3: warning: dialog 6 has the name \"aSK\", which differs from that of dialog 7 by letter case alone; give it "
     "another [dialog-names-alike]"},
    {"ScriptOfCookieZero",
     {kTopNode, R"(<Scripts><Script File="8"/>)", R"(<Script File="0"/></Scripts>)", kTopEnd, kUsedScript},
     "3: error: a Script of node 1 has the cookie 0: a save writes it without File, and no load comes back from that; "
     "give it a code file's cookie, or remove it [script-cookie-zero]"},
    {"UnknownMenuScript",
     {R"(<Project><NodeGroup><Node Cookie="1" Name="t" Icon="0" Type="List">)", R"(<MenuScript File="5"/>)", kTopEnd,
      "</Project>"},
     "2: error: the MenuScript of node 1 is to be the file 5, which is not in the definition; add it, or take the "
     "reference away [file-unknown]"},
    {"UnknownScript",
     {kTopNode, R"(<Scripts><Script File="8"/><Script)", R"(File="5"/></Scripts>)", kTopEnd, kUsedScript},
     "2: error: a Script of node 1 is to be the file 5, which is not in the definition; add it, or take the reference "
     "away [file-unknown]"},
    {"UnknownQuery",
     {kTopNode, "<ChildQueries>", R"(<Query Tag="t" File="0"/></ChildQueries>)", kTopEnd, "</Project>"},
     "3: error: a Query of node 1 is to be the file 0, which is not in the definition; add it, or take the reference "
     "away [file-unknown]"},
    {"UnknownStyleSheet",
     {"<Project><DialogGroup>", R"(<Dialog Cookie="2" Name="a" Icon="0" Type="HTML"><MenuScript/>)",
      R"(<StyleSheet File="-1"/></Dialog>)", "</DialogGroup></Project>"},
     "3: error: the StyleSheet of dialog 2 is to be the file -1, which is not in the definition; add it, or take the "
     "reference away [file-unknown]"},
    {"UnknownRenderQuery",
     {"<Project><DialogGroup>", R"(<Dialog Cookie="2" Name="a" Icon="0" Type="HTML"><MenuScript/><StyleSheet/>)",
      R"(<RenderQueries><Query Tag="" File="4"/></RenderQueries></Dialog>)", "</DialogGroup></Project>"},
     "3: error: a Query of dialog 2 is to be the file 4, which is not in the definition; add it, or take the reference "
     "away [file-unknown]"},
    {"IconThatIsACodeFile",
     {R"(<Project><NodeGroup>)", R"(<Node Cookie="1" Name="t" Icon="8" Type="List"><MenuScript/>)", kTopEnd,
      kUsedScript},
     "2: error: the icon of node 1 is to be the file 8, which is a code file; name an icon file [file-of-other-kind]"},
    {"ScriptThatIsAnIcon",
     {kTopNode, R"(<Scripts><Script File="3"/></Scripts>)", kTopEnd,
      R"(<FileGroup><Icon Cookie="3" Name="a.ico"/></FileGroup></Project>)"},
     "2: error: a Script of node 1 is to be the file 3, which is an icon file; name a code file [file-of-other-kind]"},
    {"UnusedCodeFile",
     {"<Project>", kUsedScript},
     "2: warning: code file 8, \"a.js\": no node and no dialog refers to it; remove it, or refer to it [file-unused]"},
};

class RecordRemark : public testing::TestWithParam<RemarkCase> {};
TEST_P(RecordRemark, IsTold) { ExpectRemarkAlone(GetParam()); }
INSTANTIATE_TEST_SUITE_P(Check, RecordRemark, testing::ValuesIn(kRecordRemarks),
                         [](const auto& info) { return info.param.name; });

TEST(CheckRecords, ADialogsNegativeCookieIsNoLoss) {
  CheckedProject({"<Project><DialogGroup>",
                  R"(<Dialog Cookie="-2" Name="a" Icon="0" Type="Dialog"><MenuScript/><StyleSheet/></Dialog>)",
                  "</DialogGroup></Project>"})
      .ExpectRemarks({}, "console.xml: nothing was found", 0);
}

TEST(CheckRecords, EachTopNodeBesideTheKeptOneIsTold) {
  CheckedProject({"<Project><NodeGroup>", R"(<Node Cookie="3" Name="a" Icon="0" Type="List"><MenuScript/></Node>)",
                  R"(<Node Cookie="-9" Name="a" Icon="0" Type="List"><MenuScript/></Node>)",
                  R"(<Node Cookie="0" Name="a" Icon="0" Type="List"><MenuScript/></Node>)",
                  R"(<Node Cookie="9" Name="a" Icon="0" Type="List"><MenuScript/></Node>)", "</NodeGroup></Project>"})
      .ExpectRemarks(
          {"2: error: node 3 stands at the top beside node 0: an image refuses that, and a save would keep node 0 "
           "alone; "
           "put it below node 0 [second-top-node]",
           "3: error: node -9 would be lost: neither a save nor an image holds a node of a negative cookie; give it a "
           "cookie of 0 or more [node-lost]",
           "5: error: node 9 stands at the top beside node 0: an image refuses that, and a save would keep node 0 "
           "alone; "
           "put it below node 0 [second-top-node]"},
          "3 errors, 0 warnings", 1);
}

}  // namespace
}  // namespace ondrel::test
