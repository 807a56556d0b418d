// The record of one code file in an object image: its cookie and its transformed bytes.

#include <gtest/gtest.h>

#include <functional>
#include <list>
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
#include "support/raised.h"
#include "support/statuses.h"
#include "support/temporary_folder.h"

namespace ondrel::test {
namespace {

std::vector<char> CodeBytes(std::string_view text) { return {text.begin(), text.end()}; }
std::string Text(const std::vector<char>& bytes) { return {bytes.begin(), bytes.end()}; }

class CodeFilesRecord : public testing::Test {
 protected:
  void InsertOnDisk(std::string_view bytes) {
    const CString path = Wide(m_folder.Write("a.js", bytes));
    ASSERT_EQ(CMMCObjectSetProbe::InsertCodeFile(m_set, path, kFile, Unchanged), S_OK);
  }
  std::string StoredRecord(const CMMCObjectSet::Transform& transform, const CMMCObjectSet::Variables& variables = {}) {
    return Stored([&](CVellum& archive) { m_set.SerializeCodeFile(kFile, archive, transform, variables); });
  }

  TemporaryFolder m_folder;
  CMMCObjectSet m_set{LeaveToSet};
};

TEST_F(CodeFilesRecord, IsTheCookieAndTheBytesOfTheTransform) {
  InsertOnDisk("abc");
  const auto twice = [](std::vector<char> bytes, CMMCObjectSet::Variables) {
    bytes.insert(bytes.end(), {'1', '2'});
    return bytes;
  };
  EXPECT_EQ(Hex(StoredRecord(twice)), Hex(kCookieBytes + FromHex("05 00 00 00  61 62 63 31 32")));
}

TEST_F(CodeFilesRecord, TheBytesAreTakenAsTheyAre) {
  std::string all;
  for (int value = 0; value < 256; ++value) all.push_back(static_cast<char>(value));
  all += "\r\n\x1A";
  InsertOnDisk(all);
  std::string given;
  StoredRecord([&](std::vector<char> bytes, CMMCObjectSet::Variables) {
    given = Text(bytes);
    return bytes;
  });
  EXPECT_EQ(Hex(given), Hex(all));
}

TEST_F(CodeFilesRecord, AFileOfSomeBlocksIsReadWhole) {
  std::string bytes;
  for (int index = 0; index < 100000; ++index) bytes.push_back(static_cast<char>(index * 31 + index / 256));
  InsertOnDisk(bytes);
  EXPECT_TRUE(StoredRecord(Unchanged) == kCookieBytes + ByteVector(bytes));
}

TEST_F(CodeFilesRecord, AnEmptyFileIsTheTransformOfNothing) {
  InsertOnDisk("");
  EXPECT_EQ(Hex(StoredRecord(Unchanged)), Hex(kCookieBytes + FromHex("00 00 00 00")));
  EXPECT_EQ(Hex(StoredRecord([](std::vector<char> bytes, CMMCObjectSet::Variables) {
              EXPECT_TRUE(bytes.empty());
              return std::vector<char>{'x'};
            })),
            Hex(kCookieBytes + FromHex("01 00 00 00 78")));
}

TEST_F(CodeFilesRecord, TheTransformIsTheArgumentNotTheOneThatIsKept) {
  InsertOnDisk("abc");
  EXPECT_EQ(Hex(StoredRecord([](std::vector<char>, CMMCObjectSet::Variables) { return std::vector<char>{'z'}; })),
            Hex(kCookieBytes + FromHex("01 00 00 00 7A")));
}

TEST_F(CodeFilesRecord, TheTransformIsGivenTheVariables) {
  InsertOnDisk("abc");
  CMMCObjectSet::Variables variables;
  variables[CString(_T("Folder"))] = CComVariant(LONGLONG{77});
  CMMCObjectSet::Variables given;
  StoredRecord(
      [&](std::vector<char> bytes, CMMCObjectSet::Variables passed) {
        given = std::move(passed);
        return bytes;
      },
      variables);
  ASSERT_EQ(given.size(), 1U);
  ASSERT_EQ(given.count(CString(_T("FOLDER"))), 1U) << "names are found without regard to case";
  EXPECT_EQ(given.begin()->second.vt, VT_I8);
  EXPECT_EQ(given.begin()->second.llVal, 77);
}

TEST_F(CodeFilesRecord, AnEmptyTransformRaisesBadFunctionCall) {
  InsertOnDisk("abc");
  EXPECT_THROW(StoredRecord(nullptr), std::bad_function_call);
}

TEST_F(CodeFilesRecord, WhatTheTransformRaisesPassesOn) {
  InsertOnDisk("abc");
  EXPECT_THROW(StoredRecord([](std::vector<char>, CMMCObjectSet::Variables) -> std::vector<char> {
                 throw std::domain_error("no such variable");
               }),
               std::domain_error);
}

TEST_F(CodeFilesRecord, ACookieWithoutAFileOnDiskRaisesGenericAfterTheCookieIsWritten) {
  ASSERT_EQ(CMMCObjectSetProbe::InsertCodeFile(m_set, kFile, CodeBytes("in memory")), S_OK);
  CMemFile file;
  CVellum archive(&file, CArchive::store);
  archive.m_strFileName = _T("image.bin");
  const auto raised = Raised<CArchiveException>([&] { m_set.SerializeCodeFile(kFile, archive, Unchanged, {}); });
  ASSERT_TRUE(raised);
  EXPECT_EQ(raised->m_cause, CArchiveException::genericException);
  EXPECT_EQ(raised->m_strFileName, CString()) << "no file name is told";
  archive.Close();
  EXPECT_EQ(Hex(BytesOf(file)), Hex(kCookieBytes));
}

TEST_F(CodeFilesRecord, AMissingFileRaisesItsFileException) {
  const CString path = Wide(m_folder / "missing.js");
  ASSERT_EQ(CMMCObjectSetProbe::InsertCodeFile(m_set, path, kFile, Unchanged), S_OK);
  const auto raised = Raised<CFileException>([&] { StoredRecord(Unchanged); });
  ASSERT_TRUE(raised);
  EXPECT_EQ(raised->m_cause, CFileException::fileNotFound);
  EXPECT_EQ(raised->m_lOsError, static_cast<LONG>(ERROR_FILE_NOT_FOUND));
  EXPECT_EQ(raised->m_strFileName, path);
}

TEST_F(CodeFilesRecord, AFolderRaisesItsFileException) {
  ASSERT_EQ(CMMCObjectSetProbe::InsertCodeFile(m_set, Wide(m_folder.Path()), kFile, Unchanged), S_OK);
  const auto raised = Raised<CFileException>([&] { StoredRecord(Unchanged); });
  ASSERT_TRUE(raised);
  EXPECT_EQ(raised->m_cause, CFileException::accessDenied);
}

TEST_F(CodeFilesRecord, BackslashesLeadToTheFileToo) {
  m_folder.Write("sub/b.js", "xyz");
  const CString path = Wide(m_folder.Path()) + _T("\\sub\\b.js");
  ASSERT_EQ(CMMCObjectSetProbe::InsertCodeFile(m_set, path, kFile, Unchanged), S_OK);
  EXPECT_EQ(Hex(StoredRecord(Unchanged)), Hex(kCookieBytes + FromHex("03 00 00 00 78 79 7A")));
}

TEST_F(CodeFilesRecord, StoringOnALoadingArchiveRaisesReadOnlyBeforeAnythingElse) {
  LoadingArchive archive(kCookieBytes);
  archive->m_strFileName = _T("image.bin");
  // The cookie names no file, but the direction is looked at first.
  const auto raised = Raised<CArchiveException>([&] { m_set.SerializeCodeFile(kFile, *archive, Unchanged, {}); });
  ASSERT_TRUE(raised);
  EXPECT_EQ(raised->m_cause, CArchiveException::readOnly);
  EXPECT_EQ(raised->m_strFileName, CString(_T("image.bin")));
  EXPECT_EQ(archive.Unused(), 8U);
}

TEST_F(CodeFilesRecord, LoadingOnAStoringArchiveRaisesWriteOnly) {
  CMemFile file;
  CVellum archive(&file, CArchive::store);
  archive.m_strFileName = _T("image.bin");
  const auto raised = Raised<CArchiveException>([&] { m_set.DeserializeCodeFile(archive); });
  ASSERT_TRUE(raised);
  EXPECT_EQ(raised->m_cause, CArchiveException::writeOnly);
  EXPECT_EQ(raised->m_strFileName, CString(_T("image.bin")));
}

TEST_F(CodeFilesRecord, ReadBackItIsAFileInMemoryListedAfterThoseOnDisk) {
  InsertOnDisk("abc");
  LoadingArchive archive(Cookie(3) + ByteVector("xyz") + "rest");
  m_set.DeserializeCodeFile(*archive);
  EXPECT_EQ(archive.Unused(), 4U);
  EXPECT_EQ(m_set.GetCodeFiles(), (std::list<__int64>{kFile, 3}));
  std::vector<char> contents;
  ASSERT_TRUE(m_set.GetCodeFileContents(3, contents));
  EXPECT_EQ(Text(contents), "xyz");
  CString path;
  EXPECT_FALSE(m_set.GetFilePath(3, path));
  EXPECT_FALSE(m_set.IsModified());
}

TEST_F(CodeFilesRecord, ReadingTheSameCookieTwiceIsRefused) {
  LoadingArchive archive(Cookie(3) + ByteVector("first") + Cookie(3) + ByteVector("second"));
  m_set.DeserializeCodeFile(*archive);
  const auto raised = Raised<COleException>([&] { m_set.DeserializeCodeFile(*archive); });
  ASSERT_TRUE(raised);
  EXPECT_EQ(raised->m_sc, kAlreadyExists);
  std::vector<char> contents;
  ASSERT_TRUE(m_set.GetCodeFileContents(3, contents));
  EXPECT_EQ(Text(contents), "first");
}

TEST_F(CodeFilesRecord, ARecordThatEndsEarlyLeavesTheSetAsItWas) {
  const std::string record = Cookie(3) + ByteVector("some bytes");
  for (std::size_t length = 0; length < record.size(); ++length) {
    LoadingArchive archive(record.substr(0, length));
    const auto raised = Raised<CArchiveException>([&] { m_set.DeserializeCodeFile(*archive); });
    ASSERT_TRUE(raised) << length << " bytes";
    EXPECT_EQ(raised->m_cause, CArchiveException::endOfFile) << length << " bytes";
    EXPECT_TRUE(m_set.GetCodeFiles().empty()) << length << " bytes";
  }
}

}  // namespace
}  // namespace ondrel::test
