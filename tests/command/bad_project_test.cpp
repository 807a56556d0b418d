// Projects that do not load: what the command says of each, and that the library raises the same status.
#include <gtest/gtest.h>

#include <ondrel/MMCObjectSet.h>
#include <ondrel/platform/program.h>

#include "project_folder.h"
#include "support/raised.h"

namespace ondrel::test {
namespace {

struct BadProject {
  const char* name;
  std::string text;
  const char* complaint;  ///< Behind "console.xml:".
  DWORD status;
};

std::ostream& operator<<(std::ostream& out, const BadProject& bad) { return out << bad.name; }

constexpr DWORD kInvalidData = 0x8007000D;
constexpr DWORD kTaken = 0x800700B7;
constexpr DWORD kNoNumber = 0x80020005;
constexpr DWORD kNumberTooLarge = 0x8002000A;
constexpr DWORD kNoSuchFile = 0x80070002;
constexpr DWORD kNoSuchFolder = 0x80070003;
constexpr DWORD kAccessDenied = 0x80070005;
constexpr DWORD kNoIcon = 0x80070714;

const std::string kGoodNode = R"(<Node Cookie="1" Name="a" Icon="0" Type="List"><MenuScript/></Node>)";
const std::string kGoodDialog =
    R"(<Dialog Cookie="9" Name="d" Icon="0" Type="Dialog"><MenuScript/><StyleSheet/></Dialog>)";

/// The lines of the group begin with line 3.
std::string InGroup(const std::string& group, std::initializer_list<std::string_view> lines) {
  return "<Project>\n<" + group + ">\n" + Lines(lines) + "</" + group + ">\n</Project>\n";
}
std::string Nodes(std::initializer_list<std::string_view> lines) { return InGroup("NodeGroup", lines); }
std::string Dialogs(std::initializer_list<std::string_view> lines) { return InGroup("DialogGroup", lines); }
std::string Files(std::initializer_list<std::string_view> lines) { return InGroup("FileGroup", lines); }
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
     "3: a node has the Cookie \"two\", which is no whole number; ", kNoNumber},
    {"EmptyIcon", Nodes({R"(<Node Cookie="2" Name="b" Icon="" Type="List"><MenuScript/></Node>)"}),
     "3: node 2 has the Icon \"\", which is no whole number; ", kNoNumber},
    {"CookieBeyond64Bits",
     Nodes({R"(<Node Cookie="9223372036854775808" Name="b" Icon="0" Type="List"><MenuScript/></Node>)"}),
     "3: a node has the Cookie \"9223372036854775808\", which is beyond 64 bits; ", kNumberTooLarge},
    {"MenuScriptOfLetters", HtmlNode(R"(<MenuScript File="x"/><StyleSheet/>)"),
     "4: the MenuScript of node 5 has the File \"x\", which is no whole number; ", kNoNumber},
    {"StyleSheetOfLetters", HtmlNode(R"(<MenuScript/><StyleSheet File="x"/>)"),
     "4: the StyleSheet of node 5 has the File \"x\", which is no whole number; ", kNoNumber},
    {"QueryFileOfLetters",
     HtmlNode(R"(<ChildQueries><Query Tag="" File="x"/></ChildQueries><MenuScript/><StyleSheet/>)"),
     "4: a Query of node 5 has the File \"x\", which is no whole number; ", kNoNumber},
    // The tree and the dialogs
    {"NodeCookieTwice", Nodes({kGoodNode, kGoodNode}), "4: node 1 has the cookie of the node or dialog in line 3; ",
     kTaken},
    {"ChildWithItsParentsCookie",
     Nodes({R"(<Node Cookie="1" Name="a" Icon="0" Type="List"><MenuScript/><Nodes>)", kGoodNode, "</Nodes></Node>"}),
     "4: node 1 has the cookie of the node or dialog in line 3; ", kTaken},
    {"DialogWithANodesCookie",
     "<Project><NodeGroup>" + kGoodNode + "</NodeGroup><DialogGroup>\n" +
         R"(<Dialog Cookie="1" Name="d" Icon="0" Type="Dialog"><MenuScript/><StyleSheet/></Dialog></DialogGroup></Project>)",
     "2: dialog 1 has the cookie of the node or dialog in line 1; ", kTaken},
    {"DialogCookieTwice",
     Dialogs(
         {kGoodDialog, R"(<Dialog Cookie="9" Name="e" Icon="0" Type="Dialog"><MenuScript/><StyleSheet/></Dialog>)"}),
     "4: dialog 9 has the cookie of the node or dialog in line 3; ", kTaken},
    {"DialogNameTwice",
     Dialogs(
         {kGoodDialog, R"(<Dialog Cookie="8" Name="d" Icon="0" Type="Dialog"><MenuScript/><StyleSheet/></Dialog>)"}),
     "4: dialog 8 has the name \"d\" of the dialog in line 3; ", kTaken},
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
     "3: code file \"a.js\" has the Cookie \"x\", which is no whole number; ", kNoNumber},
    {"IconTwice", Files({R"(<Icon Cookie="1" Name="good.ico"/>)", R"(<Icon Cookie="2" Name="good.ico"/>)"}),
     "4: icon file 2 names the same file as in line 3; ", kTaken},
    {"IconCookieTwice", Files({R"(<Icon Cookie="1" Name="good.ico"/>)", R"(<Icon Cookie="1" Name="./good.ico"/>)"}),
     "4: icon file 1 has the cookie of the icon file in line 3; ", kTaken},
    {"FileTwice", Files({R"(<File Cookie="1" Name="a.js"/>)", R"(<File Cookie="2" Name="a.js"/>)"}),
     "4: code file 2 names the same file as in line 3; ", kTaken},
    {"FileCookieTwice", Files({R"(<File Cookie="1" Name="a.js"/>)", R"(<File Cookie="1" Name="b.js"/>)"}),
     "4: code file 1 has the cookie of the code file in line 3; ", kTaken},
    {"NamesThatWouldBuryTheMessage", Files({R"(<Icon Cookie=")" + std::string(100'000, 'x') + "\"/>"}),
     "3: icon file \"xxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxx...\" has neither a Name nor a Path ",
     kInvalidData},
    {"IconMissing", Files({R"(<Icon Cookie="1" Name="good.ico"/>)", R"(<Icon Cookie="2" Name="gone.ico"/>)"}),
     "4: icon file 2, \"gone.ico\": there is no such file; ", kNoSuchFile},
    {"IconInAMissingFolder", Files({R"(<Icon Cookie="2" Name="gone\a.ico"/>)"}),
     "3: icon file 2, \"gone\\a.ico\": its folder is not there; ", kNoSuchFolder},
    {"IconOnADrive", Files({R"(<Icon Cookie="2" Path="C:\icons\a.ico"/>)"}),
     "3: icon file 2, \"C:\\icons\\a.ico\": the drive C: cannot be reached from this system; ", kNoSuchFolder},
    {"IconInTheNetwork", Files({R"(<Icon Cookie="2" Path="\\server\share\a.ico"/>)"}),
     "3: icon file 2, \"\\\\server\\share\\a.ico\": the network path cannot be reached from this system; ",
     kNoSuchFolder},
    {"IconIsAFolder", Files({R"(<Icon Cookie="2" Name="folder"/>)"}), "3: icon file 2, \"folder\": it is a folder; ",
     kAccessDenied},
    {"IconIsAPipe", Files({R"(<Icon Cookie="2" Name="pipe"/>)"}), "3: icon file 2, \"pipe\": it is no regular file; ",
     kAccessDenied},
    {"IconIsText", Files({R"(<Icon Cookie="2" Name="text.ico"/>)"}), "3: icon file 2, \"text.ico\": it holds no icon; ",
     kNoIcon},
    {"IconIsEmpty", Files({R"(<Icon Cookie="2" Name="empty.ico"/>)"}),
     "3: icon file 2, \"empty.ico\": it holds no icon; ", kNoIcon},
    {"IconIsCut", Files({R"(<Icon Cookie="2" Name="cut.ico"/>)"}), "3: icon file 2, \"cut.ico\": its icon is damaged; ",
     kInvalidData},
    // The order in which a load meets them
    {"ADamagedIconComesBeforeAFileWithoutCookie",
     Files({R"(<File Name="a.js"/>)", R"(<Icon Cookie="2" Name="cut.ico"/>)"}),
     "4: icon file 2, \"cut.ico\": ", kInvalidData},
    {"AnIconWithoutCookieComesBeforeADamagedIcon",
     Files({R"(<Icon Name="good.ico"/>)", R"(<Icon Cookie="2" Name="cut.ico"/>)"}), "3: icon file \"good.ico\" has no ",
     kInvalidData},
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

void WriteFiles(const ProjectFolder& folder) {
  folder.Write("good.ico", SmallIconFile());
  folder.Write("cut.ico", SmallIconFile().substr(0, 200));
  folder.Write("text.ico", "This is no icon.\n");
  folder.Write("empty.ico", "");
  folder.Write("folder/inside", "");
  ASSERT_TRUE(MakeNamedPipe(folder / "pipe"));
}

/// The status that the library raises for the project in a folder; 0 when it loads.
HRESULT LoadStatus(const ProjectFolder& folder) {
  const auto writer = [](const WCHAR*, CVellum&, CMMCObjectSet::Transform, CMMCObjectSet::Variables) { return false; };
  const auto factory = [](const WCHAR*) { return CMMCObjectSet::Transform(); };
  CMMCObjectSet set(writer);
  CFile file(Wide(folder / kProjectName), CFile::modeRead);
  CVellum archive(&file, CArchive::load);
  archive.m_strFileName = platform::FullPath(Wide(folder / kProjectName));
  const auto raised = Raised<COleException>([&] { set.SerializeProjectFile(archive, factory); });
  return raised ? raised->m_sc : S_OK;
}

std::string StatusText(DWORD status) {
  char text[16];
  std::snprintf(text, sizeof text, "0x%08X", status);
  return text;
}

class BadProjects : public testing::TestWithParam<BadProject> {};

TEST_P(BadProjects, AreExplainedAndLeaveTheOldImage) {
  const BadProject& bad = GetParam();
  const ProjectFolder folder;
  WriteFiles(folder);
  folder.WriteProject(bad.text);
  folder.Write(kImageName, "old image");
  const std::string listing = folder.Listing();
  const std::string complaint = std::string("console.xml:") + bad.complaint;

  ExpectFailure(folder.Compile(), complaint, StatusText(bad.status));
  ExpectFailure(folder.Show(kProjectName), complaint, StatusText(bad.status));
  EXPECT_EQ(folder.Listing(), listing);
  EXPECT_EQ(ReadBytes(folder / kImageName), "old image");
  EXPECT_EQ(StatusText(static_cast<DWORD>(LoadStatus(folder))), StatusText(bad.status)) << "raised by the library";
}

INSTANTIATE_TEST_SUITE_P(Command, BadProjects, testing::ValuesIn(kBadProjects),
                         [](const auto& info) { return std::string(info.param.name); });

struct EndlessProject {
  const char* name;
  std::string text;
  const char* complaint;
};

std::ostream& operator<<(std::ostream& out, const EndlessProject& endless) { return out << endless.name; }

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
};

class EndlessProjects : public testing::TestWithParam<EndlessProject> {};

TEST_P(EndlessProjects, AScriptWithoutFileIsRefusedBeforeTheLoad) {
  const ProjectFolder folder;
  folder.WriteProject(GetParam().text);
  const std::string complaint = std::string("console.xml:") + GetParam().complaint;
  ExpectFailure(folder.Compile(), complaint, "0x8007000D");
  ExpectFailure(folder.Show(kProjectName), complaint, "0x8007000D");
  EXPECT_EQ(folder.Listing(), "console.xml\n");
}

INSTANTIATE_TEST_SUITE_P(Command, EndlessProjects, testing::ValuesIn(kEndlessProjects),
                         [](const auto& info) { return std::string(info.param.name); });

}  // namespace
}  // namespace ondrel::test
