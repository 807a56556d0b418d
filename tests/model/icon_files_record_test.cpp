// The record of one icon file in an object image.

#include <gtest/gtest.h>

#include <string>

#include <ondrel/MMCObjectSet.h>

#include "support/archive_bytes.h"
#include "support/model/icon_fixtures.h"
#include "support/model/set_forms.h"
#include "support/object_set_probe.h"
#include "support/print_text.h"
#include "support/raised.h"
#include "support/statuses.h"

namespace ondrel::test {
namespace {

constexpr __int64 kFile = 0x0102030405060708;

std::string Record() { return FromHex("08 07 06 05 04 03 02 01") + TinyIconBytes(); }

void Load(CMMCObjectSet& set, const std::string& record) {
  LoadingArchive archive(record);
  set.DeserializeIconFile(*archive);
}

TEST(IconFilesRecord, IsTheCookieAndTheFourBitmaps) {
  CMMCObjectSet set(LeaveToSet);
  LoadingArchive archive(Record() + "rest");
  set.DeserializeIconFile(*archive);
  EXPECT_EQ(archive.Unused(), 4U);
  EXPECT_EQ(set.GetIconFiles(), std::list<__int64>{kFile});
  const std::string stored = Stored([&](CVellum& storing) { set.SerializeIconFile(kFile, storing); });
  EXPECT_EQ(Hex(stored), Hex(Record()));
}

TEST(IconFilesRecord, ALoadedFileHasImagesButNoHandlesPathOrIndex) {
  CMMCObjectSet set(LeaveToSet);
  Load(set, Record());
  const CMMCObjectIcon* icon = nullptr;
  ASSERT_TRUE(set.GetIconFile(kFile, &icon));
  EXPECT_EQ(icon->GetColourBitmap(true).bmWidth, 2);
  EXPECT_EQ(icon->GetIcon(32, 32), nullptr);
  CString path;
  EXPECT_FALSE(set.GetFilePath(kFile, path));
  int image = 0;
  EXPECT_FALSE(set.GetIconFileImage(kFile, image));
  EXPECT_FALSE(set.IsModified());
}

TEST(IconFilesRecord, LoadingDoesNotClearTheModifiedFlag) {
  CMMCObjectSet set(LeaveToSet);
  CMMCObjectSetProbe::SetModifiedFlag(set, 1);
  Load(set, Record());
  EXPECT_TRUE(set.IsModified());
}

TEST(IconFilesRecord, TheSameRecordASecondTimeIsRefused) {
  CMMCObjectSet set(LeaveToSet);
  Load(set, Record());
  const std::string before = Observed(set);
  const auto raised = Raised<COleException>([&] { Load(set, Cookie(kFile) + SolidIconBytes(4, 2, 0x00FFFFFF)); });
  ASSERT_TRUE(raised);
  EXPECT_EQ(raised->m_sc, kAlreadyExists);
  EXPECT_EQ(Observed(set), before);
}

TEST(IconFilesRecord, AnUnknownCookieWritesNothingAndRaisesNothing) {
  const CMMCObjectSet set(LeaveToSet);
  EXPECT_EQ(Hex(Stored([&](CVellum& archive) { set.SerializeIconFile(kFile, archive); })), "");
  LoadingArchive loading("12345678");
  EXPECT_NO_THROW(set.SerializeIconFile(kFile, *loading)) << "the direction is not looked at";
  EXPECT_EQ(loading.Unused(), 8U);
}

TEST(IconFilesRecord, StoringAKnownCookieOnALoadingArchiveRaisesReadOnly) {
  CMMCObjectSet set(LeaveToSet);
  Load(set, Record());
  LoadingArchive archive("12345678");
  archive->m_strFileName = _T("image.bin");
  const auto raised = Raised<CArchiveException>([&] { set.SerializeIconFile(kFile, *archive); });
  ASSERT_TRUE(raised);
  EXPECT_EQ(raised->m_cause, CArchiveException::readOnly);
  EXPECT_EQ(raised->m_strFileName, CString(_T("image.bin")));
}

TEST(IconFilesRecord, LoadingOnAStoringArchiveRaisesWriteOnly) {
  CMMCObjectSet set(LeaveToSet);
  CMemFile file;
  CVellum archive(&file, CArchive::store);
  archive.m_strFileName = _T("image.bin");
  const auto raised = Raised<CArchiveException>([&] { set.DeserializeIconFile(archive); });
  ASSERT_TRUE(raised);
  EXPECT_EQ(raised->m_cause, CArchiveException::writeOnly);
  EXPECT_EQ(raised->m_strFileName, CString(_T("image.bin")));
  EXPECT_TRUE(set.GetIconFiles().empty());
}

TEST(IconFilesRecord, ARecordThatEndsEarlyLeavesTheSetAsItWas) {
  const std::string record = Record();
  CMMCObjectSet set(LeaveToSet);
  for (std::size_t length = 0; length < record.size(); ++length) {
    const auto raised = Raised<CArchiveException>([&] { Load(set, record.substr(0, length)); });
    ASSERT_TRUE(raised) << length << " bytes";
    EXPECT_EQ(raised->m_cause, CArchiveException::endOfFile) << length << " bytes";
    EXPECT_TRUE(set.GetIconFiles().empty()) << length << " bytes";
  }
}

TEST(IconFilesRecord, APathOfThatCookieIsNoObstacle) {
  const TemporaryFolder folder;
  CMMCObjectSet set(LeaveToSet);
  ASSERT_EQ(CMMCObjectSetProbe::InsertCodeFile(set, _T("a.js"), kFile, Unchanged), S_OK);
  EXPECT_NO_THROW(Load(set, Record())) << "only other icons count";
}

}  // namespace
}  // namespace ondrel::test
