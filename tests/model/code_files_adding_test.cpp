// Adding code files to a set, finding them, and what a refusal leaves.

#include <gtest/gtest.h>

#include <list>
#include <string>
#include <vector>

#include <ondrel/MMCObjectSet.h>

#include "support/archive_bytes.h"
#include "support/model/set_forms.h"
#include "support/object_set_probe.h"
#include "support/print_text.h"
#include "support/statuses.h"

namespace ondrel::test {
namespace {

std::vector<char> Bytes(std::string_view text) { return {text.begin(), text.end()}; }

class CodeFilesAdding : public testing::Test {
 protected:
  HRESULT Insert(LPCWSTR path, __int64 cookie) {
    return CMMCObjectSetProbe::InsertCodeFile(m_set, path, cookie, Unchanged);
  }
  HRESULT Insert(__int64 cookie, std::string_view contents) {
    return CMMCObjectSetProbe::InsertCodeFile(m_set, cookie, Bytes(contents));
  }

  CMMCObjectSet m_set{LeaveToSet};
};

TEST_F(CodeFilesAdding, ANewFileGetsACookieAndKeepsItsPathAsGiven) {
  __int64 cookie = 0;
  ASSERT_EQ(m_set.AddCodeFile(_T("c:/x\\..\\A.js "), Unchanged, cookie), S_OK) << "the file need not be there";
  EXPECT_GT(cookie, 0);
  EXPECT_TRUE(m_set.IsModified());
  EXPECT_EQ(m_set.GetCodeFiles(), std::list<__int64>{cookie});
  CString path;
  ASSERT_TRUE(m_set.GetFilePath(cookie, path));
  EXPECT_EQ(path, CString(_T("c:/x\\..\\A.js ")));
  std::vector<char> contents = Bytes("kept");
  EXPECT_FALSE(m_set.GetCodeFileContents(cookie, contents)) << "a file on disk has no contents here";
  EXPECT_EQ(contents, Bytes("kept"));
}

TEST_F(CodeFilesAdding, TheSamePathASecondTimeIsRefused) {
  __int64 first = 0;
  ASSERT_EQ(m_set.AddCodeFile(_T("a.js"), Unchanged, first), S_OK);
  CMMCObjectSetProbe::SetModifiedFlag(m_set, 0);
  const std::string before = Observed(m_set);
  __int64 second = 99;
  EXPECT_EQ(m_set.AddCodeFile(_T("a.js"), Unchanged, second), kAlreadyExists);
  EXPECT_EQ(second, 0);
  EXPECT_EQ(Observed(m_set), before) << "and the modified flag stays clear";
}

TEST_F(CodeFilesAdding, PathsThatDifferInCaseAreTwoFiles) {
  __int64 first = 0;
  __int64 second = 0;
  EXPECT_EQ(m_set.AddCodeFile(_T("a.js"), Unchanged, first), S_OK);
  EXPECT_EQ(m_set.AddCodeFile(_T("A.js"), Unchanged, second), S_OK);
  EXPECT_NE(first, second);
  EXPECT_EQ(m_set.GetCodeFiles(), (std::list<__int64>{second, first})) << "A before a";
}

TEST_F(CodeFilesAdding, TwoSpellingsOfOneFileAreTwoFiles) {
  EXPECT_EQ(Insert(_T("x\\a.js"), 1), S_OK);
  EXPECT_EQ(Insert(_T("x/a.js"), 2), S_OK);
  EXPECT_EQ(Insert(_T("x\\.\\a.js"), 3), S_OK);
}

TEST_F(CodeFilesAdding, FilesOnDiskAreListedByPathThenThoseInMemoryByCookie) {
  ASSERT_EQ(Insert(20, "b"), S_OK);
  ASSERT_EQ(Insert(10, "a"), S_OK);
  ASSERT_EQ(Insert(_T("b.js"), 1), S_OK);
  ASSERT_EQ(Insert(_T("a.js"), 30), S_OK);
  ASSERT_EQ(Insert(_T("B.js"), 2), S_OK);
  EXPECT_EQ(m_set.GetCodeFiles(), (std::list<__int64>{2, 30, 1, 10, 20}));
}

TEST_F(CodeFilesAdding, ACookieOfBothKindsIsListedTwice) {
  ASSERT_EQ(Insert(_T("a.js"), 5), S_OK);
  EXPECT_EQ(Insert(5, "in memory"), S_OK);
  EXPECT_EQ(m_set.GetCodeFiles(), (std::list<__int64>{5, 5}));
  std::vector<char> contents;
  EXPECT_TRUE(m_set.GetCodeFileContents(5, contents));
  EXPECT_EQ(contents, Bytes("in memory"));
}

TEST_F(CodeFilesAdding, ContentsAreCopiedOutAndReplaceWhatWasThere) {
  ASSERT_EQ(Insert(5, std::string_view("a\0b", 3)), S_OK);
  std::vector<char> contents = Bytes("something longer");
  ASSERT_TRUE(m_set.GetCodeFileContents(5, contents));
  EXPECT_EQ(contents, Bytes(std::string_view("a\0b", 3)));
  contents[0] = 'z';
  std::vector<char> again;
  ASSERT_TRUE(m_set.GetCodeFileContents(5, again));
  EXPECT_EQ(again[0], 'a');
}

TEST_F(CodeFilesAdding, AFileInMemoryHasNoPath) {
  ASSERT_EQ(Insert(5, "x"), S_OK);
  CString path = _T("kept");
  EXPECT_FALSE(m_set.GetFilePath(5, path));
  EXPECT_EQ(path, CString(_T("kept")));
}

TEST_F(CodeFilesAdding, InsertingDoesNotTouchTheModifiedFlag) {
  ASSERT_EQ(Insert(_T("a.js"), 5), S_OK);
  ASSERT_EQ(Insert(6, "x"), S_OK);
  EXPECT_FALSE(m_set.IsModified());
}

TEST_F(CodeFilesAdding, ACookieThatIsTakenIsRefusedAndThePathIsFreeAgain) {
  ASSERT_EQ(Insert(_T("a.js"), 5), S_OK);
  const std::string before = Observed(m_set);
  EXPECT_EQ(Insert(_T("b.js"), 5), kAlreadyExists);
  EXPECT_EQ(Observed(m_set), before);
  EXPECT_EQ(Insert(_T("b.js"), 6), S_OK);
}

TEST_F(CodeFilesAdding, ATakenPathKeepsItsCookieAndTheOtherCookieIsFree) {
  ASSERT_EQ(Insert(_T("a.js"), 5), S_OK);
  EXPECT_EQ(Insert(_T("a.js"), 6), kAlreadyExists);
  EXPECT_EQ(m_set.GetCodeFiles(), std::list<__int64>{5});
  EXPECT_EQ(Insert(_T("b.js"), 6), S_OK);
}

TEST_F(CodeFilesAdding, ContentsOfATakenCookieAreDropped) {
  ASSERT_EQ(Insert(5, "first"), S_OK);
  EXPECT_EQ(Insert(5, "second"), kAlreadyExists);
  std::vector<char> contents;
  ASSERT_TRUE(m_set.GetCodeFileContents(5, contents));
  EXPECT_EQ(contents, Bytes("first"));
}

TEST_F(CodeFilesAdding, UnknownCookiesAreNotFound) {
  std::vector<char> contents = Bytes("kept");
  EXPECT_FALSE(m_set.GetCodeFileContents(1, contents));
  EXPECT_EQ(contents, Bytes("kept"));
  CString path = _T("kept");
  EXPECT_FALSE(m_set.GetFilePath(1, path));
  EXPECT_EQ(path, CString(_T("kept")));
  EXPECT_TRUE(m_set.GetCodeFiles().empty());
}

TEST_F(CodeFilesAdding, AddingNeitherReadsTheFileNorCallsTheTransform) {
  int calls = 0;
  __int64 cookie = 0;
  EXPECT_EQ(m_set.AddCodeFile(
                _T("Z:\\nowhere\\a.js"),
                [&calls](std::vector<char> bytes, CMMCObjectSet::Variables) {
                  ++calls;
                  return bytes;
                },
                cookie),
            S_OK);
  m_set.GetCodeFiles();
  EXPECT_EQ(calls, 0);
}

}  // namespace
}  // namespace ondrel::test
