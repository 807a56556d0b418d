// The project file that a set is saved as.

#include <gtest/gtest.h>

#include <string>

#include <ondrel/MMCObjectSet.h>

#include "support/archive_bytes.h"
#include "support/model/icon_fixtures.h"
#include "support/model/set_forms.h"
#include "support/object_set_probe.h"
#include "support/raised.h"
#include "support/statuses.h"

namespace ondrel::test {
namespace {

constexpr std::string_view kDeclaration = R"(<?xml version="1.0" encoding="utf-8" standalone="yes"?>)";

/// The text without its indentation: line ends and tabs stand raw between elements only.
std::string Flat(const std::string& text) {
  std::string flat;
  for (const char unit : text) {
    if (unit != '\r' && unit != '\n' && unit != '\t') flat.push_back(unit);
  }
  return flat;
}

CMMCObjectParams Record(__int64 cookie, LPCWSTR name, CMMCObjectParams::_eTypeNode type) {
  return CMMCObjectParams(cookie, name, type);
}

TEST(ProjectDocument, AnEmptySetHasAllThreeGroups) {
  CMMCObjectSet set(LeaveToSet);
  EXPECT_EQ(Flat(SavedProject(set)),
            std::string(kDeclaration) + "<Project><NodeGroup/><DialogGroup/><FileGroup/></Project>");
}

TEST(ProjectDocument, TheTextIsUtf8WithoutAMarkAndIndentedByTabs) {
  CMMCObjectSet set(LeaveToSet);
  ASSERT_EQ(set.AddNode(-1, 0, Record(0, _T("Disks"), CMMCObjectParams::eList)), S_OK);
  const std::string text = SavedProject(set);
  EXPECT_EQ(text.rfind(kDeclaration, 0), 0U) << text;
  EXPECT_EQ(text.find("<?xml", 1), std::string::npos) << "the declaration stands once";
  EXPECT_NE(text.find("\r\n<Project>\r\n\t<NodeGroup>\r\n\t\t<Node "), std::string::npos) << text;
  EXPECT_EQ(text.find('\0'), std::string::npos);
}

TEST(ProjectDocument, EveryKindOfObjectStandsInItsGroupInTheOrderOfTheSet) {
  const TemporaryFolder folder;
  CMMCObjectSet set(LeaveToSet);
  CMMCObjectParams top = Record(4, _T("Top"), CMMCObjectParams::eHTML);
  top.SetIcon(70);
  top.SetMenuScript(71);
  top.SetStyleSheet(72);
  top.SetScripts({73, 74});
  top.SetChildQueries({{_T("Disks"), 75}});
  top.SetRenderQueries({{_T("Shares"), 76}, {_T("Users"), 0}});
  ASSERT_EQ(set.AddNode(-1, 4, top), S_OK);
  ASSERT_EQ(set.AddNode(4, 6, Record(6, _T("Second"), CMMCObjectParams::eUnknown)), S_OK);
  ASSERT_EQ(set.AddNode(4, 5, Record(5, _T("First"), CMMCObjectParams::eList)), S_OK);
  ASSERT_EQ(set.AddDialog(9, Record(9, _T("A"), CMMCObjectParams::eDialog)), S_OK);
  ASSERT_EQ(set.AddDialog(8, Record(8, _T("B"), CMMCObjectParams::eDialog)), S_OK);
  const CString icon = WriteIcon(folder, "icon.ico", {SolidIcon(32, 0)});
  const CString directory = Wide(folder.Path()) + _T("\\");
  // Saved through a file name beside the icons, so that they have short names.
  const CString second = directory + _T("icon.ico");
  ASSERT_EQ(CMMCObjectSetProbe::InsertIconFile(set, second, 1), S_OK);
  ASSERT_EQ(CMMCObjectSetProbe::InsertIconFile(set, directory + _T("\\icon.ico"), 2), S_OK);
  ASSERT_EQ(CMMCObjectSetProbe::InsertCodeFile(set, _T("b.js"), 3, Unchanged), S_OK);
  ASSERT_EQ(CMMCObjectSetProbe::InsertCodeFile(set, _T("B.js"), 30, Unchanged), S_OK);
  ASSERT_EQ(CMMCObjectSetProbe::InsertCodeFile(set, _T("a.js"), 31, Unchanged), S_OK);

  EXPECT_EQ(Flat(SavedProject(set, directory + _T("project.xml"))),
            std::string(kDeclaration) +
                R"(<Project>)"
                R"(<NodeGroup>)"
                R"(<Node Cookie="4" Name="Top" Icon="70" Type="HTML">)"
                R"(<ChildQueries><Query Tag="Disks" File="75"/></ChildQueries>)"
                R"(<MenuScript File="71"/>)"
                R"(<Scripts><Script File="73"/><Script File="74"/></Scripts>)"
                R"(<StyleSheet File="72"/>)"
                R"(<RenderQueries><Query Tag="Shares" File="76"/><Query Tag="Users" File="0"/></RenderQueries>)"
                R"(<Nodes>)"
                R"(<Node Cookie="5" Name="First" Icon="0" Type="List"><ChildQueries/><MenuScript/><Scripts/></Node>)"
                R"(<Node Cookie="6" Name="Second" Icon="0" Type="Oops!!"><ChildQueries/><MenuScript/><Scripts/></Node>)"
                R"(</Nodes>)"
                R"(</Node>)"
                R"(</NodeGroup>)"
                R"(<DialogGroup>)"
                R"(<Dialog Cookie="8" Name="B" Icon="0" Type="Dialog">)"
                R"(<MenuScript/><Scripts/><StyleSheet/><RenderQueries/></Dialog>)"
                R"(<Dialog Cookie="9" Name="A" Icon="0" Type="Dialog">)"
                R"(<MenuScript/><Scripts/><StyleSheet/><RenderQueries/></Dialog>)"
                R"(</DialogGroup>)"
                R"(<FileGroup>)"
                R"(<Icon Cookie="2" Name="\icon.ico"/>)"
                R"(<Icon Cookie="1" Name="icon.ico"/>)"
                R"(<File Cookie="30" Path="B.js"/>)"
                R"(<File Cookie="31" Path="a.js"/>)"
                R"(<File Cookie="3" Path="b.js"/>)"
                R"(</FileGroup>)"
                R"(</Project>)");
}

TEST(ProjectDocument, OfSeveralTopNodesOnlyTheFirstIsSaved) {
  CMMCObjectSet set(LeaveToSet);
  ASSERT_EQ(set.AddNode(-1, 2, Record(2, _T("Second"), CMMCObjectParams::eDialog)), S_OK);
  ASSERT_EQ(set.AddNode(-1, 1, Record(1, _T("First"), CMMCObjectParams::eDialog)), S_OK);
  ASSERT_EQ(set.AddNode(1, 3, Record(3, _T("Below"), CMMCObjectParams::eDialog)), S_OK);
  ASSERT_EQ(set.AddNode(2, 4, Record(4, _T("Lost"), CMMCObjectParams::eDialog)), S_OK);
  const std::string text = SavedProject(set);
  EXPECT_NE(text.find("First"), std::string::npos);
  EXPECT_NE(text.find("Below"), std::string::npos);
  EXPECT_EQ(text.find("Second"), std::string::npos) << text;
  EXPECT_EQ(text.find("Lost"), std::string::npos) << text;
}

TEST(ProjectDocument, FilesInMemoryAreNotSaved) {
  CMMCObjectSet set(LeaveToSet);
  ASSERT_EQ(CMMCObjectSetProbe::InsertCodeFile(set, 5, {'x'}), S_OK);
  ASSERT_EQ(CMMCObjectSetProbe::InsertIconFile(set, 6, CMMCObjectIcon()), S_OK);
  EXPECT_NE(Flat(SavedProject(set)).find("<FileGroup/>"), std::string::npos);
}

TEST(ProjectDocument, CookiesAreSignedDecimalNumbers) {
  CMMCObjectSet set(LeaveToSet);
  ASSERT_EQ(CMMCObjectSetProbe::InsertCodeFile(set, _T("a"), 0x7FFFFFFFFFFFFFFF, Unchanged), S_OK);
  ASSERT_EQ(CMMCObjectSetProbe::InsertCodeFile(set, _T("b"), -0x7FFFFFFFFFFFFFFF - 1, Unchanged), S_OK);
  EXPECT_NE(Flat(SavedProject(set))
                .find(R"(<File Cookie="9223372036854775807" Path="a"/>)"
                      R"(<File Cookie="-9223372036854775808" Path="b"/>)"),
            std::string::npos)
      << SavedProject(set);
}

TEST(ProjectDocument, TextIsWrittenWithoutHarmAndNonAsciiAsUtf8) {
  CMMCObjectSet set(LeaveToSet);
  // A pair of surrogates, two letters beyond ASCII, and what XML gives a meaning.
  ASSERT_EQ(set.AddNode(-1, 0, Record(0, _T("<&\">\t\u00E9\u20AC\U0001F600"), CMMCObjectParams::eDialog)), S_OK);
  const std::string text = SavedProject(set);
  const std::size_t name = text.find("Name=\"");
  ASSERT_NE(name, std::string::npos) << text;
  const std::string value = text.substr(name + 6, text.find('"', name + 6) - name - 6);
  EXPECT_NE(value.find("&lt;&amp;&quot;"), std::string::npos) << value;
  EXPECT_NE(value.find("\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80"), std::string::npos) << value;
}

TEST(ProjectDocument, TabsAndLineEndsAreReferencesWhereverTheyStandInALongText) {
  // Between them a character that is no letter of any text, alone and before letters. Of so many, some stand at every
  // place in the blocks that a writer hands to its output.
  constexpr int kRepetitions = 5000;
  CString name;
  std::string written;
  for (int repetition = 0; repetition < kRepetitions; ++repetition) {
    for (const WCHAR unit :
         {WCHAR{0xFDD0}, WCHAR{'t'}, WCHAR{'\t'}, WCHAR{0xFDD0}, WCHAR{0xFDD0}, WCHAR{'\r'}, WCHAR{'\n'}, WCHAR{'m'}}) {
      name += unit;
    }
    written += "\xEF\xB7\x90t&#9;\xEF\xB7\x90\xEF\xB7\x90&#13;&#10;m";
  }
  CMMCObjectSet set(LeaveToSet);
  ASSERT_EQ(set.AddNewNode(-1, name, CMMCObjectParams::eList), 0);
  const std::string text = SavedProject(set);
  const std::size_t start = text.find(" Name=\"");
  ASSERT_NE(start, std::string::npos);
  EXPECT_TRUE(text.substr(start, 7 + written.size() + 1) == " Name=\"" + written + '"') << text.substr(start, 200);
}

TEST(ProjectDocument, SavingClearsTheModifiedFlagAndChangesNothingElse) {
  CMMCObjectSet set(LeaveToSet);
  ASSERT_EQ(set.AddNewNode(-1, _T("Top"), CMMCObjectParams::eList), 0);
  ASSERT_EQ(set.AddNewDialog(_T("About")), 1);
  ASSERT_TRUE(set.IsModified());
  std::string before = Observed(set);
  SavedProject(set);
  EXPECT_FALSE(set.IsModified());
  CMMCObjectSetProbe::SetModifiedFlag(set, 1);
  EXPECT_EQ(Observed(set), before);
}

TEST(ProjectDocument, TheFactoryIsNotUsedForSaving) {
  CMMCObjectSet set(LeaveToSet);
  ASSERT_EQ(CMMCObjectSetProbe::InsertCodeFile(set, _T("a.js"), 1, Unchanged), S_OK);
  EXPECT_NO_THROW(SavedProject(set)) << "it is empty here";
}

TEST(ProjectDocument, AListedDialogThatIsNotInTheIndexIsRefusedAndTheFlagStays) {
  CMMCObjectSet set(LeaveToSet);
  ASSERT_EQ(set.AddNewDialog(_T("About")), 0);
  CMMCObjectSetProbe::ForgetObject(set, 0);
  std::string saved;
  const auto raised = Raised<COleException>([&] { saved = SavedProject(set); });
  ASSERT_TRUE(raised);
  EXPECT_EQ(raised->m_sc, kNotFound);
  EXPECT_EQ(saved, "");
  EXPECT_TRUE(set.IsModified());
}

TEST(ProjectDocument, AListedNodeThatIsNotInTheIndexIsRefused) {
  CMMCObjectSet set(LeaveToSet);
  ASSERT_EQ(set.AddNewNode(-1, _T("Top"), CMMCObjectParams::eList), 0);
  ASSERT_EQ(set.AddNewNode(0, _T("Below"), CMMCObjectParams::eList), 1);
  CMMCObjectSetProbe::ForgetObject(set, 1);
  const auto raised = Raised<COleException>([&] { SavedProject(set); });
  ASSERT_TRUE(raised);
  EXPECT_EQ(raised->m_sc, kNotFound);
}

/// Saving a node of that name is refused, and nothing is written.
void ExpectNameRefused(const CString& name) {
  CMMCObjectSet set(LeaveToSet);
  ASSERT_EQ(set.AddNewNode(-1, name, CMMCObjectParams::eList), 0);
  CMemFile file;
  CVellum archive(&file, CArchive::store);
  const auto raised = Raised<COleException>([&] { set.SerializeProjectFile(archive, nullptr); });
  ASSERT_TRUE(raised);
  EXPECT_LT(raised->m_sc, 0);
  archive.Close();
  EXPECT_EQ(BytesOf(file), "");
  EXPECT_TRUE(set.IsModified());
}

TEST(ProjectDocument, CharactersThatNoXmlCanCarryAreRefusedAndNothingIsWritten) {
  for (const WCHAR unit : {WCHAR{1}, WCHAR{0x1F}, WCHAR{0xFFFF}}) ExpectNameRefused(CString(unit, 1));
}

TEST(ProjectDocument, HalvesOfSurrogatePairsAreRefusedAndNothingIsWritten) {
  for (const WCHAR unit : {WCHAR{0xD800}, WCHAR{0xDFFF}}) ExpectNameRefused(CString(unit, 1));
}

}  // namespace
}  // namespace ondrel::test
