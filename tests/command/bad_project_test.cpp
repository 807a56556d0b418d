// Projects that do not load: what the command says of each, and that the library raises the same status.
#include <gtest/gtest.h>

#include "bad_file.h"
#include "bad_project.h"
#include "project_folder.h"

namespace ondrel::test {
namespace {

const std::string kGoodNode = R"(<Node Cookie="1" Name="a" Icon="0" Type="List"><MenuScript/></Node>)";
const std::string kGoodDialog =
    R"(<Dialog Cookie="9" Name="d" Icon="0" Type="Dialog"><MenuScript/><StyleSheet/></Dialog>)";

/// An HTML node with cookie 5; `inside` is line 4.
std::string HtmlNode(std::string_view inside) {
  return Nodes({R"(<Node Cookie="5" Name="a" Icon="0" Type="HTML">)", inside, "</Node>"});
}

const BadProject kBadProjects[] = {
    // Text that is no project
    {"UnclosedElement", "<Project>\n<NodeGroup>\n</Project>\n", "3: the XML cannot be read: ", kInvalidData},
    {"CutText", "<Project>\n<NodeGroup>\n<Node Cookie=\"1", "3: the XML cannot be read: ", kInvalidData},
    {"UnknownEntity", "<Project>\n&nothing;</Project>", "2: the XML cannot be read: ", kInvalidData},
    {"TwoRoots", "<Project/>\n<Project/>", "2: the XML cannot be read: ", kInvalidData},
    {"ZeroByte", std::string("<Project>\n\0</Project>", 21), "2: the XML cannot be read: ", kInvalidData},
    {"BlanksAlone", " \n\t\n ", "", kInvalidData},
    {"Utf8Mark", "\xEF\xBB\xBF<Project/>", "1: the text begins with a byte-order mark", kInvalidData},
    {"Utf16", std::string("\xFF\xFE<\0P\0/\0>\0", 10), "1: the text is UTF-16", kInvalidData},
    {"WrongRoot", "<?xml version=\"1.0\"?>\n<Nodes/>", "2: the root element is \"Nodes\"", kInvalidData},
    {"LowerCaseRoot", "<project/>", "1: the root element is \"project\"", kInvalidData},
    // Records
    {"NodeWithoutCookie", Nodes({kGoodNode, R"(<Node Name="b" Icon="0" Type="List"><MenuScript/></Node>)"}),
     "4: a node has no Cookie attribute; ", kInvalidData},
    {"NodeWithoutName", Nodes({R"(<Node Cookie="2" Icon="0" Type="List"><MenuScript/></Node>)"}),
     "3: node 2 has no Name attribute; ", kInvalidData},
    {"NodeWithoutIcon", Nodes({kGoodNode, "", R"(<Node Cookie="2" Name="b" Type="List"><MenuScript/></Node>)"}),
     "5: node 2 has no Icon attribute; ", kInvalidData},
    {"NodeWithoutType", Nodes({R"(<Node Cookie="2" Name="b" Icon="0"><MenuScript/></Node>)"}),
     "3: node 2 has no Type attribute; ", kInvalidData},
    {"NodeWithoutMenuScript", Nodes({R"(<Node Cookie="2" Name="b" Icon="0" Type="List"/>)"}),
     "3: node 2 has no MenuScript element; ", kInvalidData},
    {"HtmlNodeWithoutStyleSheet", HtmlNode("<MenuScript/>"), "3: node 5 shows a view but has no StyleSheet element; ",
     kInvalidData},
    {"DialogWithoutStyleSheet",
     Dialogs({R"(<Dialog Cookie="2" Name="b" Icon="0" Type="Dialog"><MenuScript/></Dialog>)"}),
     "3: dialog 2 shows a view but has no StyleSheet element; ", kInvalidData},
    {"ChildQueryWithoutTag", HtmlNode(R"(<ChildQueries><Query File="1"/></ChildQueries><MenuScript/><StyleSheet/>)"),
     "4: a Query of node 5 has no Tag attribute; ", kInvalidData},
    {"ChildQueryWithoutFile", HtmlNode(R"(<ChildQueries><Query Tag="t"/></ChildQueries><MenuScript/><StyleSheet/>)"),
     "4: a Query of node 5 has no File attribute; ", kInvalidData},
    {"RenderQueryWithoutTag", HtmlNode(R"(<MenuScript/><StyleSheet/><RenderQueries><Query File="1"/></RenderQueries>)"),
     "4: a Query of node 5 has no Tag attribute; ", kInvalidData},
    {"RenderQueryWithoutFile", HtmlNode(R"(<MenuScript/><StyleSheet/><RenderQueries><Query Tag="t"/></RenderQueries>)"),
     "4: a Query of node 5 has no File attribute; ", kInvalidData},
    {"CookieOfLetters", Nodes({R"(<Node Cookie="two" Name="b" Icon="0" Type="List"><MenuScript/></Node>)"}),
     "3: a node has the Cookie \"two\", which is no whole number; ", kTypeMismatch},
    {"EmptyIcon", Nodes({R"(<Node Cookie="2" Name="b" Icon="" Type="List"><MenuScript/></Node>)"}),
     "3: node 2 has the Icon \"\", which is no whole number; ", kTypeMismatch},
    {"CookieBeyond64Bits",
     Nodes({R"(<Node Cookie="9223372036854775808" Name="b" Icon="0" Type="List"><MenuScript/></Node>)"}),
     "3: a node has the Cookie \"9223372036854775808\", which is beyond 64 bits; ", kOverflow},
    {"MenuScriptOfLetters", HtmlNode(R"(<MenuScript File="x"/><StyleSheet/>)"),
     "4: the MenuScript of node 5 has the File \"x\", which is no whole number; ", kTypeMismatch},
    {"StyleSheetOfLetters", HtmlNode(R"(<MenuScript/><StyleSheet File="x"/>)"),
     "4: the StyleSheet of node 5 has the File \"x\", which is no whole number; ", kTypeMismatch},
    {"QueryFileOfLetters",
     HtmlNode(R"(<ChildQueries><Query Tag="" File="x"/></ChildQueries><MenuScript/><StyleSheet/>)"),
     "4: a Query of node 5 has the File \"x\", which is no whole number; ", kTypeMismatch},
    // The tree and the dialogs
    {"NodeCookieTwice", Nodes({kGoodNode, kGoodNode}), "4: node 1 has the cookie of the node or dialog in line 3; ",
     kAlreadyExists},
    {"ChildWithItsParentsCookie",
     Nodes({R"(<Node Cookie="1" Name="a" Icon="0" Type="List"><MenuScript/><Nodes>)", kGoodNode, "</Nodes></Node>"}),
     "4: node 1 has the cookie of the node or dialog in line 3; ", kAlreadyExists},
    {"DialogWithANodesCookie",
     "<Project><NodeGroup>" + kGoodNode + "</NodeGroup><DialogGroup>\n" +
         R"(<Dialog Cookie="1" Name="d" Icon="0" Type="Dialog"><MenuScript/><StyleSheet/></Dialog></DialogGroup></Project>)",
     "2: dialog 1 has the cookie of the node or dialog in line 1; ", kAlreadyExists},
    {"DialogCookieTwice",
     Dialogs(
         {kGoodDialog, R"(<Dialog Cookie="9" Name="e" Icon="0" Type="Dialog"><MenuScript/><StyleSheet/></Dialog>)"}),
     "4: dialog 9 has the cookie of the node or dialog in line 3; ", kAlreadyExists},
    {"DialogNameTwice",
     Dialogs(
         {kGoodDialog, R"(<Dialog Cookie="8" Name="d" Icon="0" Type="Dialog"><MenuScript/><StyleSheet/></Dialog>)"}),
     "4: dialog 8 has the name \"d\" of the dialog in line 3; ", kAlreadyExists},
    // Files
    {"IconWithoutName", Files({R"(<Icon Cookie="1"/>)"}), "3: icon file 1 has neither a Name nor a Path attribute; ",
     kInvalidData},
    {"FileWithoutName", Files({R"(<File Cookie="1"/>)"}), "3: code file 1 has neither a Name nor a Path attribute; ",
     kInvalidData},
    {"IconWithoutCookie", Files({R"(<Icon Name="good.ico"/>)"}), "3: icon file \"good.ico\" has no Cookie attribute; ",
     kInvalidData},
    {"FileWithoutCookie", Files({R"(<File Path="/a.js"/>)"}), "3: code file \"/a.js\" has no Cookie attribute; ",
     kInvalidData},
    {"FileCookieOfLetters", Files({R"(<File Cookie="x" Name="a.js"/>)"}),
     "3: code file \"a.js\" has the Cookie \"x\", which is no whole number; ", kTypeMismatch},
    {"IconTwice", Files({R"(<Icon Cookie="1" Name="good.ico"/>)", R"(<Icon Cookie="2" Name="good.ico"/>)"}),
     "4: icon file 2 names the same file as in line 3; ", kAlreadyExists},
    {"IconCookieTwice", Files({R"(<Icon Cookie="1" Name="good.ico"/>)", R"(<Icon Cookie="1" Name="./good.ico"/>)"}),
     "4: icon file 1 has the cookie of the icon file in line 3; ", kAlreadyExists},
    {"FileTwice", Files({R"(<File Cookie="1" Name="a.js"/>)", R"(<File Cookie="2" Name="a.js"/>)"}),
     "4: code file 2 names the same file as in line 3; ", kAlreadyExists},
    {"FileCookieTwice", Files({R"(<File Cookie="1" Name="a.js"/>)", R"(<File Cookie="1" Name="b.js"/>)"}),
     "4: code file 1 has the cookie of the code file in line 3; ", kAlreadyExists},
    {"NamesThatWouldBuryTheMessage", Files({R"(<Icon Cookie=")" + std::string(100'000, 'x') + "\"/>"}),
     "3: icon file \"xxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxx...\" has neither a Name nor a Path ",
     kInvalidData},
    {"IconMissing", Files({R"(<Icon Cookie="1" Name="good.ico"/>)", R"(<Icon Cookie="2" Name="gone.ico"/>)"}),
     "4: icon file 2, \"gone.ico\": there is no such file; ", kFileNotFound},
    {"IconIsAFolder", Files({R"(<Icon Cookie="2" Name="folder"/>)"}), "3: icon file 2, \"folder\": it is a folder; ",
     kAccessDenied},
    // The order in which a load meets them
    {"NodesComeBeforeDialogs",
     "<Project><DialogGroup>\n<Dialog/></DialogGroup>\n<NodeGroup>\n<Node/></NodeGroup></Project>",
     "4: a node has no Cookie ", kInvalidData},
    {"AParentComesBeforeItsChildren",
     Nodes({R"(<Node Cookie="1" Name="a" Icon="0" Type="List"><Nodes>)", "<Node/>", "</Nodes></Node>"}),
     "3: node 1 has no MenuScript element; ", kInvalidData},
    {"AGroupInsideAnotherComesAfterIt", Nodes({"<NodeGroup>", "<Node/>", "</NodeGroup>", R"(<Node Cookie="2"/>)"}),
     "6: node 2 has no Name attribute; ", kInvalidData},
    {"AGroupInsideANodeIsRead",
     Nodes({R"(<Node Cookie="1" Name="a" Icon="0" Type="List"><MenuScript/><DialogGroup>)", "<Dialog/>",
            "</DialogGroup></Node>"}),
     "4: a dialog has no Cookie attribute; ", kInvalidData},
};

class BadProjects : public testing::TestWithParam<BadProject> {};

TEST_P(BadProjects, AreExplainedAndLeaveTheOldImage) {
  const BadProjectFolder folder(GetParam().text);
  folder.ExpectExplained(GetParam().complaint, GetParam().status);
  folder.ExpectRaised(GetParam().status);
}

INSTANTIATE_TEST_SUITE_P(Command, BadProjects, testing::ValuesIn(kBadProjects),
                         [](const auto& info) { return std::string(info.param.name); });

struct EndlessProject {
  const char* name;
  std::string text;
  const char* complaint;
};

std::ostream& operator<<(std::ostream& out, const EndlessProject& endless) { return out << endless.name; }

/// The last element of a node's scripts, which stand in line 4, without its brackets.
std::string EndlessScript(const std::string& script) {
  return HtmlNode("<MenuScript/><Scripts><" + script + "/></Scripts><StyleSheet/>");
}

constexpr const char* kNamelessScript = "4: a Script of node 5 has no File attribute";

const EndlessProject kEndlessProjects[] = {
    {"InANode", HtmlNode("<MenuScript/><Scripts><Script File=\"1\"/>\n<Script/></Scripts><StyleSheet/>"),
     "5: a Script of node 5 has no File attribute"},
    {"InADialog",
     Dialogs({R"(<Dialog Cookie="9" Name="d" Icon="0" Type="Dialog"><MenuScript/>)", "<Scripts><Script/></Scripts>",
              "<StyleSheet/></Dialog>"}),
     "4: a Script of dialog 9 has no File attribute"},
    {"InASecondScriptsElement", HtmlNode("<MenuScript/><Scripts/><Scripts><Script/></Scripts><StyleSheet/>"),
     "4: a Script of node 5 has no File attribute"},
    {"DeepInTheTree",
     Nodes({R"(<Node Cookie="1" Name="a" Icon="0" Type="List"><MenuScript/><Nodes/><Nodes>)",
            R"(<Node Cookie="2" Name="a" Icon="0" Type="List"><MenuScript/><Scripts>)", "<Script/>",
            "</Scripts></Node></Nodes></Node>"}),
     "5: a Script of node 2 has no File attribute"},
    {"InANestedGroup",
     "<Project><Other><NodeGroup>\n<Node Cookie=\"2\" Name=\"a\" Icon=\"0\" "
     "Type=\"List\"><MenuScript/><Scripts><Script/>"
     "</Scripts></Node></NodeGroup></Other></Project>",
     "2: a Script of node 2 has no File attribute"},
    {"WithAnAttributeOfAnotherName", EndlessScript(R"(Script Files="1")"), kNamelessScript},
    {"WithAnAttributeInSmallLetters", EndlessScript(R"(Script file="1")"), kNamelessScript},
    {"WithAPrefixedAttribute", EndlessScript(R"(Script xmlns:x="x" x:File="1")"), kNamelessScript},
    {"WithTheAttributeInAValue", EndlessScript(R"(Script Name=" File='1'")"), kNamelessScript},
    {"WithTheAttributeInAValueOfOtherQuotes", EndlessScript(R"(Script Name='"' Other=' File="1"')"), kNamelessScript},
    {"WithAnEndOfTagInAValue", EndlessScript(R"(Script Name=">" Other="File=")"), kNamelessScript},
    {"BehindOneWithBlanksAroundItsFile", EndlessScript("Script\tFile = '1'/><Script "), kNamelessScript},
    {"InAnEntity",
     "<!DOCTYPE Project [<!ENTITY script '&#60;Script/>'>]>" + HtmlNode("<MenuScript/><Scripts>&script;</Scripts>"),
     kNamelessScript},
};

class EndlessProjects : public testing::TestWithParam<EndlessProject> {};

TEST_P(EndlessProjects, AScriptWithoutFileIsRefusedBeforeTheLoad) {
  const ProjectFolder folder;
  folder.WriteProject(GetParam().text);
  const std::string complaint = std::string("console.xml:") + GetParam().complaint;
  ExpectAllFail(folder, kProjectName, complaint, "0x8007000D");
}

INSTANTIATE_TEST_SUITE_P(Command, EndlessProjects, testing::ValuesIn(kEndlessProjects),
                         [](const auto& info) { return std::string(info.param.name); });

}  // namespace
}  // namespace ondrel::test
