// Project files that are refused: what is raised, and that the set is exactly as it was before.

#include <gtest/gtest.h>

#include <functional>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include <ondrel/MMCObjectSet.h>

#include "support/archive_bytes.h"
#include "support/faulty_file.h"
#include "support/live_handles.h"
#include "support/model/icon_fixtures.h"
#include "support/model/set_forms.h"
#include "support/object_set_probe.h"
#include "support/print_text.h"
#include "support/raised.h"
#include "support/statuses.h"

namespace ondrel::test {
namespace {

constexpr const char* kNode = R"(<Node Cookie="1" Name="N" Icon="0" Type="List"><MenuScript/></Node>)";
constexpr const char* kDialogElement =
    R"(<Dialog Cookie="2" Name="D" Icon="0" Type="Dialog"><MenuScript/><StyleSheet/></Dialog>)";
constexpr const char* kFileElement = R"(<File Cookie="3" Name="f.js"/>)";

std::string Nodes(const std::string& inside) { return "<NodeGroup>" + inside + "</NodeGroup>"; }
std::string Dialogs(const std::string& inside) { return "<DialogGroup>" + inside + "</DialogGroup>"; }
std::string Files(const std::string& inside) { return "<FileGroup>" + inside + "</FileGroup>"; }
std::string Project(const std::string& inside) { return "<Project>" + inside + "</Project>"; }

/// A set with every kind of object; each test loads into it, modified and unmodified.
class ProjectRefused : public testing::Test {
 protected:
  void SetUp() override {
    m_icon = WriteIcon(m_folder, "icon.ico", {SolidIcon(32, 0x00112233)});
    ASSERT_EQ(m_set.AddNode(-1, 1, CMMCObjectParams(1, _T("Top"), CMMCObjectParams::eHTML)), S_OK);
    ASSERT_EQ(m_set.AddNode(1, 7, CMMCObjectParams(7, _T("Below"), CMMCObjectParams::eList)), S_OK);
    ASSERT_EQ(m_set.AddDialog(2, CMMCObjectParams(2, _T("About"), CMMCObjectParams::eDialog)), S_OK);
    ASSERT_EQ(CMMCObjectSetProbe::InsertIconFile(m_set, m_icon, 40), S_OK);
    ASSERT_EQ(CMMCObjectSetProbe::InsertIconFile(m_set, 41, CMMCObjectIcon()), S_OK);
    ASSERT_EQ(CMMCObjectSetProbe::InsertCodeFile(m_set, _T("C:\\p\\old.js"), 50, Unchanged), S_OK);
    ASSERT_EQ(CMMCObjectSetProbe::InsertCodeFile(m_set, 51, {'x', 'y'}), S_OK);
    HBITMAP smallIcon = nullptr;
    HBITMAP large = nullptr;
    m_set.GetIconBitmapImages(0, smallIcon, large);
    DeleteObject(smallIcon);
    DeleteObject(large);
  }

  /// Loads with the flag set and clear; what is raised must be an `Exception` both times, and the set as before.
  template <class Exception>
  std::vector<Exception> RaisedByLoading(const std::string& bytes,
                                         const CMMCObjectSet::TransformFactory& factory = UnchangedFor) {
    std::vector<Exception> raised;
    for (const int modified : {0, 1}) {
      CMMCObjectSetProbe::SetModifiedFlag(m_set, modified);
      const std::string before = Observed(m_set);
      const CMMCObjectIcon* iconBefore = nullptr;
      m_set.GetIconFile(40, &iconBefore);
      const auto handles = CountLiveHandles();
      if (auto caught = Raised<Exception>(
              [&] { LoadProject(m_set, bytes, Wide(m_folder.Path()) + _T("\\project.xml"), factory); })) {
        raised.push_back(std::move(*caught));
      }
      EXPECT_EQ(Observed(m_set), before) << bytes;
      const CMMCObjectIcon* iconAfter = nullptr;
      m_set.GetIconFile(40, &iconAfter);
      EXPECT_EQ(iconAfter, iconBefore) << "the icons are the same objects";
      EXPECT_EQ(CountLiveHandles().icons, handles.icons) << bytes;
    }
    EXPECT_EQ(raised.size(), 2U) << "nothing was raised for " << bytes;
    return raised;
  }

  void ExpectStatus(const std::string& bytes, HRESULT status) {
    for (const COleException& raised : RaisedByLoading<COleException>(bytes)) {
      EXPECT_EQ(raised.m_sc, status) << std::hex << "got 0x" << static_cast<DWORD>(raised.m_sc) << " for " << bytes;
    }
  }

  TemporaryFolder m_folder;
  CString m_icon;
  CMMCObjectSet m_set{LeaveToSet};
};

TEST_F(ProjectRefused, AnEmptyFile) { ExpectStatus("", kInvalidData); }

TEST_F(ProjectRefused, TextThatIsNotWellFormed) {
  for (const char* const text : {" ", "no XML", "<Project>", "<Project></project>", "<Project/><Project/>",
                                 "<Project a=1/>", "<Project>&nothing;</Project>", "<Project/>text", "<a:>"}) {
    ExpectStatus(text, kInvalidData);
  }
}

TEST_F(ProjectRefused, BinaryData) {
  ExpectStatus(std::string("\0\x01\x02\x03", 4), kInvalidData);
  ExpectStatus(std::string("<Project/>\0", 11), kInvalidData);
  ExpectStatus(std::string("\xFF\xFE<\0/", 5), kInvalidData);
}

TEST_F(ProjectRefused, AMarkBeforeTheText) {
  // The three bytes are read as three letters before the root element.
  ExpectStatus("\xEF\xBB\xBF<Project/>", kInvalidData);
}

TEST_F(ProjectRefused, EntitiesThatGrowOrLeadOutside) {
  ExpectStatus("<!DOCTYPE Project [<!ENTITY e SYSTEM \"file:///etc/passwd\">]><Project>&e;</Project>", kInvalidData);
  std::string bomb = "<!DOCTYPE Project [<!ENTITY a \"aaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaa\">";
  for (char name = 'b'; name < 'n'; ++name) {
    bomb += std::string("<!ENTITY ") + name + " \"";
    for (int index = 0; index < 10; ++index) bomb += std::string("&") + static_cast<char>(name - 1) + ";";
    bomb += "\">";
  }
  ExpectStatus(bomb + "]><Project>&m;</Project>", kInvalidData);
}

TEST_F(ProjectRefused, ARootElementOfAnotherName) {
  for (const char* const root :
       {"<project/>", "<PROJECT/>", "<Nodes/>", "<Projects/>", "<Projec/>", "<x:Project xmlns:x='u'/>"}) {
    ExpectStatus(root, kInvalidData);
  }
  ExpectStatus("<Nodes>" + Project(Nodes(kNode)) + "</Nodes>", kInvalidData);
}

TEST_F(ProjectRefused, AFileWithoutNameAndPath) {
  ExpectStatus(Project(Files(R"(<File Cookie="3"/>)")), kInvalidData);
  ExpectStatus(Project(Files(R"(<Icon Cookie="3"/>)")), kInvalidData);
  ExpectStatus(Project(Files(R"(<File Cookie="3" name="a" PATH="b"/>)")), kInvalidData);
}

TEST_F(ProjectRefused, AFileWithoutCookie) {
  ExpectStatus(Project(Files(R"(<File Name="a"/>)")), kInvalidData);
  ExpectStatus(Project(Files(R"(<File Path="a"/>)")), kInvalidData);
  ExpectStatus(Project(Files(R"(<Icon Name="a"/>)")), kInvalidData);
}

TEST_F(ProjectRefused, ACookieThatIsNoNumber) {
  ExpectStatus(Project(Files(R"(<File Cookie="three" Name="a"/>)")), kTypeMismatch);
  ExpectStatus(Project(Files(R"(<File Cookie="" Name="a"/>)")), kTypeMismatch);
  ExpectStatus(Project(Files(R"(<Icon Cookie="x" Name="a"/>)")), kTypeMismatch);
  ExpectStatus(Project(Files(R"(<File Cookie="9223372036854775808" Name="a"/>)")), kOverflow);
}

TEST_F(ProjectRefused, AFileThatStandsTwice) {
  ExpectStatus(Project(Files(std::string(kFileElement) + R"(<File Cookie="4" Name="f.js"/>)")), kAlreadyExists);
  ExpectStatus(Project(Files(std::string(kFileElement) + R"(<File Cookie="3" Name="g.js"/>)")), kAlreadyExists);
  const std::string icon = R"(<Icon Cookie="3" Name="icon.ico"/>)";
  ExpectStatus(Project(Files(icon + R"(<Icon Cookie="4" Name="icon.ico"/>)")), kAlreadyExists);
  WriteIcon(m_folder, "other.ico", {SolidIcon(32, 0)});
  ExpectStatus(Project(Files(icon + R"(<Icon Cookie="3" Name="other.ico"/>)")), kAlreadyExists);
}

TEST_F(ProjectRefused, AnIconFileThatCannotBeRead) {
  const std::string before = Nodes(kNode) + Dialogs(kDialogElement);
  ExpectStatus(Project(before + Files(R"(<Icon Cookie="3" Name="missing.ico"/>)")), kFileNotFound);
  ExpectStatus(Project(before + Files(R"(<Icon Cookie="4" Name="icon.ico"/><Icon Cookie="3" Name="missing.ico"/>)")),
               kFileNotFound);
}

TEST_F(ProjectRefused, ANodeWithoutARequiredAttribute) {
  for (const char* const node : {R"(<Node Name="N" Icon="0" Type="List"><MenuScript/></Node>)",
                                 R"(<Node Cookie="1" Icon="0" Type="List"><MenuScript/></Node>)",
                                 R"(<Node Cookie="1" Name="N" Type="List"><MenuScript/></Node>)",
                                 R"(<Node Cookie="1" Name="N" Icon="0"><MenuScript/></Node>)",
                                 R"(<Node Cookie="1" Name="N" Icon="0" Type="List"/>)",
                                 R"(<Node Cookie="1" Name="N" Icon="0" Type="HTML"><MenuScript/></Node>)"}) {
    ExpectStatus(Project(Nodes(node)), kInvalidData);
    // Later in the walk, after others were added.
    ExpectStatus(Project(Nodes(std::string(R"(<Node Cookie="9" Name="N" Icon="0" Type="List"><MenuScript/><Nodes>)") +
                               R"(<Node Cookie="8" Name="N" Icon="0" Type="List"><MenuScript/></Node>)" + node +
                               "</Nodes></Node>")),
                 kInvalidData);
  }
}

TEST_F(ProjectRefused, ANodeWhoseCookieIsNoNumber) {
  ExpectStatus(Project(Nodes(R"(<Node Cookie="one" Name="N" Icon="0" Type="List"><MenuScript/></Node>)")),
               kTypeMismatch);
}

TEST_F(ProjectRefused, ANodeThatStandsTwice) {
  ExpectStatus(Project(Nodes(std::string(kNode) + kNode)), kAlreadyExists);
}

TEST_F(ProjectRefused, ADialogThatStandsTwice) {
  ExpectStatus(Project(Dialogs(std::string(kDialogElement) + kDialogElement)), kAlreadyExists);
  ExpectStatus(
      Project(Dialogs(std::string(kDialogElement) +
                      R"(<Dialog Cookie="5" Name="D" Icon="0" Type="Dialog"><MenuScript/><StyleSheet/></Dialog>)")),
      kAlreadyExists);
  ExpectStatus(Project(Nodes(kNode) + Dialogs(R"(<Dialog Cookie="1" Name="D" Icon="0" Type="Dialog">)"
                                              R"(<MenuScript/><StyleSheet/></Dialog>)")),
               kAlreadyExists);
}

TEST_F(ProjectRefused, ADialogWithoutARequiredPart) {
  ExpectStatus(Project(Dialogs(R"(<Dialog Cookie="5" Name="D" Type="Dialog"><MenuScript/><StyleSheet/></Dialog>)")),
               kInvalidData);
  ExpectStatus(Project(Dialogs(R"(<Dialog Cookie="5" Name="D" Icon="0" Type="Dialog"><MenuScript/></Dialog>)")),
               kInvalidData);
}

TEST_F(ProjectRefused, AnEmptyFactory) {
  RaisedByLoading<std::bad_function_call>(Project(Nodes(kNode) + Dialogs(kDialogElement) + Files(kFileElement)),
                                          nullptr);
  // Without code files nobody asks it.
  EXPECT_NO_THROW(LoadProject(m_set, Project(Nodes(kNode)), _T("C:\\p\\project.xml"), nullptr));
}

TEST_F(ProjectRefused, WhateverTheFactoryRaises) {
  int asked = 0;
  const auto raised = RaisedByLoading<std::domain_error>(
      Project(Nodes(kNode) + Dialogs(kDialogElement) +
              Files(std::string(kFileElement) + R"(<File Cookie="4" Name="g.js"/>)")),
      [&](const WCHAR*) -> CMMCObjectSet::Transform {
        if (++asked % 2 == 0) throw std::domain_error("no transform for it");
        return Unchanged;
      });
  ASSERT_FALSE(raised.empty());
  EXPECT_STREQ(raised[0].what(), "no transform for it");
}

TEST_F(ProjectRefused, AFileThatCannotBeReadToItsEnd) {
  const std::string before = Observed(m_set);
  const std::string bytes = Project(Nodes(kNode));
  FaultyFile file(bytes.data(), static_cast<UINT>(bytes.size()));
  file.FailRead(1);
  CVellum archive(&file, CArchive::load);
  EXPECT_THROW(m_set.SerializeProjectFile(archive, UnchangedFor), CFileException);
  EXPECT_EQ(Observed(m_set), before);
}

// The text is refused by its first bytes, and longer than what is read at once.
TEST_F(ProjectRefused, AFileThatIsNoProjectAndCannotBeReadToItsEnd) {
  const std::string before = Observed(m_set);
  const std::string bytes = "no project" + std::string(std::size_t{3} << 20, 'x');
  int reads = 0;
  {
    FaultyFile whole(bytes.data(), static_cast<UINT>(bytes.size()));
    CVellum archive(&whole, CArchive::load);
    const auto raised = Raised<COleException>([&] { m_set.SerializeProjectFile(archive, UnchangedFor); });
    ASSERT_TRUE(raised);
    EXPECT_EQ(raised->m_sc, kInvalidData);
    EXPECT_EQ(whole.GetPosition(), bytes.size()) << "was read to its end";
    reads = whole.Reads();
  }
  ASSERT_GT(reads, 2);
  for (const int failing : {1, 2, reads / 2, reads - 1}) {
    FaultyFile file(bytes.data(), static_cast<UINT>(bytes.size()));
    file.FailRead(failing);
    CVellum archive(&file, CArchive::load);
    const auto raised = Raised<CFileException>([&] { m_set.SerializeProjectFile(archive, UnchangedFor); });
    ASSERT_TRUE(raised) << failing;
    EXPECT_EQ(raised->m_cause, CFileException::hardIO) << failing;
  }
  EXPECT_EQ(Observed(m_set), before);
}

/// A file that claims a length of its own.
class ClaimingFile final : public FaultyFile {
 public:
  ClaimingFile(const std::string& bytes, ULONGLONG claim)
      : FaultyFile(bytes.data(), static_cast<UINT>(bytes.size())), m_claim(claim) {}
  ULONGLONG GetLength() const override { return m_claim; }

 private:
  const ULONGLONG m_claim;
};

TEST_F(ProjectRefused, AFileThatClaimsMoreThanATextHoldsIsNotRead) {
  const std::string before = Observed(m_set);
  for (const ULONGLONG claim : {0x80000000ULL, 0xFFFFFFFFULL, 0x100000000ULL, 0xFFFFFFFFFFFFFFFFULL}) {
    ClaimingFile file("<Project/>", claim);
    CVellum archive(&file, CArchive::load);
    EXPECT_THROW(m_set.SerializeProjectFile(archive, UnchangedFor), CMemoryException) << claim;
    EXPECT_EQ(file.Reads(), 0) << claim;
  }
  EXPECT_EQ(Observed(m_set), before);
  ClaimingFile file("<Project/>", 0x7FFFFFFF);
  CVellum archive(&file, CArchive::load);
  m_set.SerializeProjectFile(archive, UnchangedFor);
  EXPECT_TRUE(m_set.GetChildNodes(-1).empty()) << "what is there was read";
  EXPECT_LE(file.LargestRead(), 1U << 20) << "no more room was made on the word of the claim";
}

TEST_F(ProjectRefused, ATruncatedProject) {
  const std::string whole = Project(Nodes(kNode) + Dialogs(kDialogElement) + Files(kFileElement));
  for (std::size_t length = 0; length < whole.size(); ++length) ExpectStatus(whole.substr(0, length), kInvalidData);
}

TEST_F(ProjectRefused, TheSetIsUsableAfterARefusal) {
  ExpectStatus(Project(Nodes(kNode) + Files("<File/>")), kInvalidData);
  __int64 cookie = 0;
  EXPECT_EQ(m_set.AddNewNode(1, _T("New"), CMMCObjectParams::eList), 8);
  EXPECT_EQ(m_set.AddCodeFile(_T("C:\\p\\old.js"), Unchanged, cookie), kAlreadyExists);
  EXPECT_EQ(m_set.AddIconFile(m_icon, cookie), kAlreadyExists);
  LoadProject(m_set, Project(Nodes(kNode)));
  EXPECT_EQ(m_set.GetChildNodes(-1), std::list<__int64>{1});
  EXPECT_TRUE(m_set.GetDialogs().empty());
}

}  // namespace
}  // namespace ondrel::test
