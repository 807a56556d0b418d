// The writer hook: it may write a code file's bytes itself, or leave them to the set.

#include <gtest/gtest.h>

#include <functional>
#include <stdexcept>
#include <string>
#include <vector>

#include <ondrel/MMCObjectSet.h>

#include "model/code_file_cookie.h"
#include "support/archive_bytes.h"
#include "support/model/hand_bytes.h"
#include "support/model/set_forms.h"
#include "support/object_set_probe.h"
#include "support/print_text.h"
#include "support/temporary_folder.h"

namespace ondrel::test {
namespace {

/// What the hook was called with, and what it does. A hook is a plain function, so this is kept for the thread.
struct Call {
  std::vector<CString> paths;
  std::vector<std::string> transformed;  // "in" through the transform that it was given
  std::vector<std::size_t> variables;
  std::string written;
  bool writes = false;
  bool raises = false;
};
thread_local Call t_call;

bool RecordingHook(const WCHAR* path, CVellum& archive, CMMCObjectSet::Transform transform,
                   CMMCObjectSet::Variables variables) {
  t_call.paths.emplace_back(path);
  t_call.variables.push_back(variables.size());
  if (t_call.raises) throw std::domain_error("the hook refuses");
  if (transform) {
    const std::vector<char> bytes = transform({'i', 'n'}, variables);
    t_call.transformed.emplace_back(bytes.begin(), bytes.end());
  }
  if (!t_call.writes) return false;
  archive.Write(std::vector<char>(t_call.written.begin(), t_call.written.end()));
  return true;
}

std::vector<char> Marked(std::vector<char> bytes, CMMCObjectSet::Variables) {
  bytes.insert(bytes.begin(), '*');
  return bytes;
}

class CodeFilesHook : public testing::Test {
 protected:
  void SetUp() override { t_call = {}; }

  void Insert(const CString& path) { ASSERT_EQ(CMMCObjectSetProbe::InsertCodeFile(m_set, path, kFile, Marked), S_OK); }
  std::string StoredRecord(const CMMCObjectSet::Transform& transform, const CMMCObjectSet::Variables& variables = {}) {
    return Stored([&](CVellum& archive) { m_set.SerializeCodeFile(kFile, archive, transform, variables); });
  }

  TemporaryFolder m_folder;
  CMMCObjectSet m_set{RecordingHook};
};

TEST_F(CodeFilesHook, AHookThatWritesMakesTheSetLeaveTheFileAlone) {
  Insert(_T("Z:\\nowhere\\a.js"));  // reading it would raise
  t_call.writes = true;
  t_call.written = "own";
  EXPECT_EQ(Hex(StoredRecord(Marked)), Hex(kCookieBytes + FromHex("03 00 00 00 6F 77 6E")));
  EXPECT_EQ(t_call.paths, std::vector<CString>{CString(_T("Z:\\nowhere\\a.js"))});
}

TEST_F(CodeFilesHook, AHookThatWritesNeedsNoTransform) {
  Insert(_T("Z:\\nowhere\\a.js"));
  t_call.writes = true;
  EXPECT_EQ(Hex(StoredRecord(nullptr)), Hex(kCookieBytes + FromHex("00 00 00 00")));
}

TEST_F(CodeFilesHook, AHookThatDoesNotWriteLeavesTheFileToTheSet) {
  Insert(Wide(m_folder.Write("a.js", "abc")));
  EXPECT_EQ(Hex(StoredRecord(Marked)), Hex(kCookieBytes + FromHex("04 00 00 00 2A 61 62 63")));
  EXPECT_EQ(t_call.paths.size(), 1U);
}

TEST_F(CodeFilesHook, AHookThatDoesNotWriteAndAnEmptyTransformRaiseBadFunctionCall) {
  Insert(Wide(m_folder.Write("a.js", "abc")));
  EXPECT_THROW(StoredRecord(nullptr), std::bad_function_call);
}

TEST_F(CodeFilesHook, TheHookIsGivenTheTransformAndTheVariablesAndTheSetKeepsItsOwn) {
  Insert(Wide(m_folder.Write("a.js", "abc")));
  CMMCObjectSet::Variables variables;
  variables[CString(_T("x\\"))] = CComVariant(LONGLONG{1});
  variables[CString(_T("y\\"))] = CComVariant(LONGLONG{2});
  std::size_t given = 0;
  StoredRecord(
      [&](std::vector<char> bytes, CMMCObjectSet::Variables passed) {
        given = passed.size();
        bytes.push_back('!');
        return bytes;
      },
      variables);
  EXPECT_EQ(t_call.transformed, std::vector<std::string>{"in!"});
  EXPECT_EQ(t_call.variables, std::vector<std::size_t>{2});
  EXPECT_EQ(given, 2U) << "the set's own call still has them";
}

TEST_F(CodeFilesHook, TheHookIsNotCalledForACookieWithoutAFile) {
  EXPECT_THROW(StoredRecord(Marked), CArchiveException);
  EXPECT_TRUE(t_call.paths.empty());
}

TEST_F(CodeFilesHook, WhatTheHookRaisesPassesOn) {
  Insert(Wide(m_folder.Write("a.js", "abc")));
  t_call.raises = true;
  EXPECT_THROW(StoredRecord(Marked), std::domain_error);
}

TEST_F(CodeFilesHook, AWholeImageAsksTheHookForEachFileOnDiskInPathOrder) {
  ASSERT_EQ(CMMCObjectSetProbe::InsertCodeFile(m_set, _T("b\\2.js"), 1, Marked), S_OK);
  ASSERT_EQ(CMMCObjectSetProbe::InsertCodeFile(m_set, _T("a\\1.js"), 2, Marked), S_OK);
  ASSERT_EQ(CMMCObjectSetProbe::InsertCodeFile(m_set, 3, {'m'}), S_OK);
  t_call.writes = true;
  t_call.written = "own";
  CMMCObjectSet loaded(LeaveToSet);
  LoadImage(loaded, SavedImage(m_set));
  EXPECT_EQ(t_call.paths, (std::vector<CString>{CString(_T("a\\1.js")), CString(_T("b\\2.js"))}));
  EXPECT_EQ(t_call.transformed, (std::vector<std::string>{"*in", "*in"})) << "each file's own transform";
  EXPECT_EQ(t_call.variables, (std::vector<std::size_t>{2, 2})) << "the directory map";
  std::vector<char> contents;
  ASSERT_TRUE(loaded.GetCodeFileContents(1, contents));
  EXPECT_EQ(std::string(contents.begin(), contents.end()), "own");
}

}  // namespace
}  // namespace ondrel::test
