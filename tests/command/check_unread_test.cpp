// What a load passes over without a word, and `ondrel check` tells; and what a save loses besides.
#include <sstream>

#include <gtest/gtest.h>

#include <ondrel/MMCObjectSet.h>
#include <ondrel/platform/program.h>
#include <ondrel/platform/xml_scan.h>

#include "checked_project.h"

namespace ondrel::test {
namespace {

constexpr std::string_view kList = R"(<Project><NodeGroup><Node Cookie="1" Name="t" Icon="0" Type="List">)";
constexpr std::string_view kListEnd = "</Node></NodeGroup></Project>";

const RemarkCase kUnreadParts[] = {
    {"AnUnknownElement",
     {kList, "<MenuScript/>", "<Note><Deep x='1'>text</Deep><!-- c --></Note>", kListEnd},
     "3: warning: the element \"Note\" in node 1 is not read, with all that is in it, and not kept by a save; remove "
     "it, or correct its name [element-unread]"},
    {"AnElementInTheProject",
     {"<Project>", "<Node/>", "</Project>"},
     "2: warning: the element \"Node\" in the Project is not read, with all that is in it, and not kept by a save; put "
     "it directly into a NodeGroup or the Nodes of a node [element-unread]"},
    {"ANodeInANode",
     {kList, "<MenuScript/>", R"(<Node Cookie="2" Name="a" Icon="0" Type="List"><MenuScript/></Node>)", kListEnd},
     "3: warning: the element \"Node\" in node 1 is not read, with all that is in it, and not kept by a save; put it "
     "directly into a NodeGroup or the Nodes of a node [element-unread]"},
    {"ADialogAmongNodes",
     {kList, "<MenuScript/><Nodes>", "<Dialog/>", "</Nodes>", kListEnd},
     "3: warning: the element \"Dialog\" in the Nodes of node 1 is not read, with all that is in it, and not kept by a "
     "save; put it directly into a DialogGroup [element-unread]"},
    {"AScriptInAMenuScript",
     {kList, "<MenuScript>", R"(<Script File="7"/>)", "</MenuScript>", kListEnd},
     "3: warning: the element \"Script\" in the MenuScript of node 1 is not read, with all that is in it, and not kept "
     "by a save; put it directly into Scripts [element-unread]"},
    {"AnUnknownAttribute",
     {kList, "<MenuScript/>", R"(<Scripts Order="1"/>)", kListEnd},
     "3: warning: the attribute \"Order\" of the Scripts of node 1 is not read and not kept by a save; remove it, or "
     "correct its name [attribute-unread]"},
    {"AnAttributeOfOtherCase",
     {R"(<Project><DialogGroup>)",
      R"(<Dialog Cookie="2" Name="a" name="A" Icon="0" Type="HTML"><MenuScript/><StyleSheet/></Dialog>)",
      "</DialogGroup></Project>"},
     "2: warning: the attribute \"name\" of dialog 2 is not read and not kept by a save; remove it, or correct its "
     "name "
     "[attribute-unread]"},
    {"Text",
     {"<Project>", "<NodeGroup/>  ", "stray <![CDATA[text]]>", "</Project>"},
     "3: warning: text in the Project is not read and not kept by a save; remove it [text-unread]"},
    {"ASecondMenuScript",
     {kList, "<MenuScript/>", R"(<MenuScript File="7"/>)", kListEnd},
     "3: warning: node 1 has another MenuScript, which is not read and not kept by a save; remove one of the two "
     "[element-repeated]"},
    {"ASecondStyleSheet",
     {"<Project><DialogGroup>", R"(<Dialog Cookie="2" Name="a" Icon="0" Type="HTML"><MenuScript/><StyleSheet/>)",
      "<StyleSheet/>", "</Dialog></DialogGroup></Project>"},
     "3: warning: dialog 2 has another StyleSheet, which is not read and not kept by a save; remove one of the two "
     "[element-repeated]"},
    {"ASecondFileGroup",
     {"<Project><FileGroup/>", "<FileGroup><File/><Icon/></FileGroup>", "</Project>"},
     "2: warning: another FileGroup is not read, with all files in it, and not kept by a save; move its files into the "
     "one in line 1 [file-group-skipped]"},
    {"TheStyleSheetOfAList",
     {kList, "<MenuScript/>", R"(<StyleSheet File="x"/>)", kListEnd},
     "3: warning: node 1 is of a type without a view: its StyleSheet is not read, not kept by a save and not held by "
     "an "
     "image; remove it, or give the type HTML [view-unread]"},
    {"TheRenderQueriesOfAList",
     {kList, "<MenuScript/>", "<RenderQueries>", "<Query/><Query/>", "</RenderQueries>", kListEnd},
     "4: warning: node 1 is of a type without a view: its RenderQueries is not read, not kept by a save and not held "
     "by "
     "an image; remove it, or give the type HTML [view-unread]"},
    {"AScriptThatIsNoNumber",
     {kList, "<MenuScript/><Scripts>", R"(<Script File="a.js"/>)", R"(<Script File="77"/></Scripts>)", kListEnd},
     "3: warning: a Script of node 1 has the File \"a.js\", which is no whole number: it and all scripts behind it are "
     "not read and not kept by a save; give it a code file's cookie [scripts-cut]"},
};

class UnreadPart : public testing::TestWithParam<RemarkCase> {};

// The library's load and save, and what the text has before and after.

class PartRecorder : public platform::XmlScanHandler {
 public:
  void OnStartElement(const CString& name, const std::vector<Attribute>& attributes, int) override {
    parts += '<' + platform::ToUtf8(name);
    for (const Attribute& attribute : attributes) {
      parts += ' ' + platform::ToUtf8(attribute.name) + "=\"" + platform::ToUtf8(attribute.value) + '"';
    }
    parts += ">\n";
  }
  void OnEndElement(const CString& name, int) override { parts += "</" + platform::ToUtf8(name) + ">\n"; }
  void OnPassage(platform::XmlPassage passage, int) override {
    parts += "passage " + std::to_string(static_cast<int>(passage)) + '\n';
  }

  std::string parts;
};

/// The elements and attributes of a text in their order, one a line, and that there are comments and the like.
std::string PartsOf(const std::string& text) {
  PartRecorder recorder;
  platform::XmlFault fault;
  EXPECT_EQ(platform::ScanXml(platform::PathFromUtf8(text), recorder, fault), S_OK) << fault.reason;
  return recorder.parts;
}

/// The text that the library saves of a project of ASCII text that it loaded.
std::string SavedAnew(const std::string& text, const std::filesystem::path& place) {
  const auto factory = [](const WCHAR*) { return CMMCObjectSet::Transform(); };
  CMMCObjectSet set([](const WCHAR*, CVellum&, CMMCObjectSet::Transform, CMMCObjectSet::Variables) { return false; });
  CMemFile file(text.data(), static_cast<UINT>(text.size()));
  CVellum loading(&file, CArchive::load);
  loading.m_strFileName = platform::FullPath(Wide(place));
  set.SerializeProjectFile(loading, factory);
  CMemFile saved;
  CVellum storing(&saved, CArchive::store);
  storing.m_strFileName = loading.m_strFileName;
  set.SerializeProjectFile(storing, factory);
  storing.Close();
  return {reinterpret_cast<const char*>(saved.GetBytes()), static_cast<std::size_t>(saved.GetLength())};
}

std::string Joined(const std::vector<std::string_view>& lines) {
  std::string text;
  for (const std::string_view line : lines) text.append(line).append("\n");
  return text;
}

/// The command tells the loss alone, and it is one: nothing that the save wrote has it.
void ExpectLoss(const RemarkCase& lost) {
  ExpectRemarkAlone(lost, {"--losses"});
  const CheckedProject folder({});
  const std::string text = Joined(lost.lines);
  EXPECT_NE(PartsOf(text), PartsOf(SavedAnew(text, folder / kProjectName)));
}

TEST_P(UnreadPart, IsTold) { ExpectRemarkAlone(GetParam()); }
TEST_P(UnreadPart, IsLostByASave) { ExpectLoss(GetParam()); }
INSTANTIATE_TEST_SUITE_P(Check, UnreadPart, testing::ValuesIn(kUnreadParts),
                         [](const auto& info) { return info.param.name; });

const RemarkCase kFurtherLosses[] = {
    {"AComment",
     {"<Project>", "<!-- a", "-->", "</Project>"},
     "2: warning: a comment is not kept by a save; put it elsewhere [comment]"},
    {"ACommentBeforeTheProject",
     {R"(<?xml version="1.0"?>)", "<!-- a -->", "<Project/>"},
     "2: warning: a comment is not kept by a save; put it elsewhere [comment]"},
    {"AProcessingInstruction",
     {"<Project/>", "<?go on?>"},
     "2: warning: a processing instruction is not kept by a save; put it elsewhere [instruction]"},
    {"ADocumentType",
     {"", R"(<!DOCTYPE Project [ <!ENTITY a "b"> <!-- in it -->]>)", "<Project/>"},
     "2: warning: the document type is not kept by a save, and its entities become what they stand for; do without it "
     "[document-type]"},
    {"ChildQueriesOfADialog",
     {"<Project><DialogGroup>", R"(<Dialog Cookie="2" Name="a" Icon="0" Type="Dialog"><ChildQueries>)",
      R"(<Query Tag="a" File="1"/><Query Tag="b" File="1"/></ChildQueries><MenuScript/><StyleSheet/></Dialog>)",
      "</DialogGroup></Project>"},
     "3: warning: dialog 2 is of the type Dialog: its ChildQueries are read but not kept by a save; remove them, or "
     "give "
     "another type [child-queries-unsaved]"},
    {"APathBesideAName",
     {"<Project><FileGroup>", R"(<File Cookie="1" Name="a.js" Path="b.js"/>)", "</FileGroup></Project>"},
     "2: warning: code file \"a.js\" has a Name and a Path, and its Path is not read and not kept by a save; remove "
     "one "
     "of the two [path-unread]"},
    {"AnUnknownType",
     {R"(<Project><NodeGroup>)", R"(<Node Cookie="1" Name="t" Icon="0" Type="Tree"><MenuScript/></Node>)",
      "</NodeGroup></Project>"},
     "2: warning: node 1 is of no known type, and a save writes \"Oops!!\" for it; give it the type List, HTML or "
     "Dialog [unknown-type]"},
    {"ANegativeNode",
     {kList, "<MenuScript/><Nodes>", R"(<Node Cookie="-2" Name="t" Icon="0" Type="List"><MenuScript/></Node>)",
      "</Nodes>", kListEnd},
     "3: error: node -2 would be lost: neither a save nor an image holds a node of a negative cookie; give it a cookie "
     "of 0 or more [node-lost]"},
    {"ASecondTopNode",
     {R"(<Project><NodeGroup><Node Cookie="1" Name="t" Icon="0" Type="List"><MenuScript/></Node>)",
      R"(<Node Cookie="2" Name="t" Icon="0" Type="List"><MenuScript/></Node></NodeGroup></Project>)"},
     "2: error: node 2 stands at the top beside node 1: an image refuses that, and a save would keep node 1 alone; put "
     "it below node 1 [second-top-node]"},
    {"AScriptOfCookieZero",
     {kList, R"(<MenuScript/><Scripts><Script File="0"/></Scripts>)", kListEnd},
     "2: error: a Script of node 1 has the cookie 0: a save writes it without File, and no load comes back from that; "
     "give it a code file's cookie, or remove it [script-cookie-zero]"},
};

class Loss : public testing::TestWithParam<RemarkCase> {};
TEST_P(Loss, IsOneAndIsTold) { ExpectLoss(GetParam()); }
INSTANTIATE_TEST_SUITE_P(Check, Loss, testing::ValuesIn(kFurtherLosses),
                         [](const auto& info) { return info.param.name; });

// As a save writes it.
const std::string kWholeProject = Lines({
    R"(<?xml version="1.0" encoding="utf-8" standalone="yes"?>)",
    R"(<Project><NodeGroup><Node Cookie="4" Name="&lt;&quot;&#xF6;" Icon="-7" Type="HTML">)",
    R"(<ChildQueries><Query Tag="Disks" File="9"/><Query Tag="" File="0"/></ChildQueries><MenuScript File="8"/>)",
    R"(<Scripts><Script File="8"/><Script File="9"/></Scripts><StyleSheet File="9"/>)",
    R"(<RenderQueries><Query Tag="Sum" File="8"/></RenderQueries><Nodes>)",
    R"(<Node Cookie="0" Name="a" Icon="0" Type="List"><ChildQueries/><MenuScript/><Scripts/></Node>)",
    R"(<Node Cookie="2" Name="b" Icon="0" Type="Dialog"><MenuScript/><Scripts/><StyleSheet/><RenderQueries/></Node>)",
    R"(</Nodes></Node></NodeGroup><DialogGroup>)",
    R"(<Dialog Cookie="-3" Name="Ask" Icon="0" Type="Dialog"><MenuScript/><Scripts/><StyleSheet/><RenderQueries/></Dialog>)",
    R"(</DialogGroup><FileGroup><Icon Cookie="-7" Name="a.ico"/><File Cookie="9" Path="A:\elsewhere\b.js"/>)",
    R"(<File Cookie="8" Name="a.js"/></FileGroup></Project>)",
});

TEST(CheckLosses, AProjectWithoutLossesIsSavedWhole) {
  const CheckedProject folder({});
  folder.WriteProject(kWholeProject);
  const CommandResult result = folder.Check({"--losses"});
  ExpectSuccess(result);
  EXPECT_EQ(result.output, "console.xml: nothing was found\n");
  EXPECT_EQ(PartsOf(SavedAnew(kWholeProject, folder / kProjectName)), PartsOf(kWholeProject));
}

TEST(CheckLosses, CommentsAreNoReasonToWarn) {
  CheckedProject({"<!DOCTYPE Project><?go on?>", "<Project><!-- a --></Project>"})
      .ExpectRemarks({}, "console.xml: nothing was found", 0);
}

TEST(CheckLosses, AreToldInTheOrderOfTheLines) {
  CheckedProject({"<Project><!-- a -->", "<NodeGroup>",
                  R"(<Node Cookie="-2" Name="t" Icon="0" Type="List"><MenuScript/></Node>)", "<!-- b -->",
                  "</NodeGroup></Project>"})
      .ExpectRemarks({"1: warning: a comment is not kept by a save; put it elsewhere [comment]",
                      "3: error: node -2 would be lost: neither a save nor an image holds a node of a negative cookie; "
                      "give it a cookie of 0 or more [node-lost]",
                      "4: warning: a comment is not kept by a save; put it elsewhere [comment]"},
                     "1 error, 2 warnings", 1, {"--losses"});
}

TEST(CheckLosses, OfAnImageAreNone) {
  const CheckedProject folder({R"(<Project><FileGroup><File Cookie="8" Name="a.js"/></FileGroup></Project>)"});
  ExpectSuccess(folder.Compile());
  EXPECT_EQ(folder.Run({"check", "--losses", kImageName}).output, "console.img: nothing was found\n");
}

}  // namespace
}  // namespace ondrel::test
