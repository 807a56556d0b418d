// The head of an object image: versions, the top-level node's count, and what is left when they are refused.

#include <gtest/gtest.h>

#include <string>

#include <ondrel/MMCObjectSet.h>

#include "support/archive_bytes.h"
#include "support/model/hand_bytes.h"
#include "support/model/set_forms.h"
#include "support/object_set_probe.h"
#include "support/print_text.h"
#include "support/raised.h"

namespace ondrel::test {
namespace {

constexpr __int64 kMore = 0x5A5A;

/// A set with something of everything, modified.
void Fill(CMMCObjectSet& set) {
  ASSERT_EQ(set.AddNewNode(-1, _T("Top"), CMMCObjectParams::eList), 0);
  ASSERT_EQ(set.AddNewDialog(_T("About")), 1);
  ASSERT_EQ(CMMCObjectSetProbe::InsertCodeFile(set, _T("a.js"), 2, Unchanged), S_OK);
  ASSERT_EQ(CMMCObjectSetProbe::InsertCodeFile(set, 3, {'x'}), S_OK);
  ASSERT_EQ(CMMCObjectSetProbe::InsertIconFile(set, 4, CMMCObjectIcon()), S_OK);
}

/// Checks that an image is refused with this cause, and that the set is as it was.
void ExpectRefused(const std::string& image, int cause) {
  CMMCObjectSet set(LeaveToSet);
  Fill(set);
  const std::string before = Observed(set);
  LoadingArchive archive(image);
  archive->m_strFileName = _T("image.bin");
  const auto raised = Raised<CArchiveException>([&] { set.SerializeObjects(*archive, 0, 1); });
  ASSERT_TRUE(raised) << Hex(image);
  EXPECT_EQ(raised->m_cause, cause) << Hex(image);
  EXPECT_EQ(raised->m_strFileName, CString()) << "no file name is told";
  EXPECT_EQ(Observed(set), before) << Hex(image);
}

TEST(ImageHeader, AnEmptySetIsTwoVersionsAndFiveZeroCounts) {
  CMMCObjectSet set(LeaveToSet);
  EXPECT_EQ(Hex(SavedImage(set)), Hex(FromHex("01 00 00 00  01 00 00 00"
                                              "00 00 00 00 00 00 00 00"
                                              "00 00 00 00 00 00 00 00"
                                              "00 00 00 00 00 00 00 00"
                                              "00 00 00 00 00 00 00 00"
                                              "00 00 00 00 00 00 00 00")));
}

TEST(ImageHeader, TheExportedVersionsAreThoseOfTheImage) {
  EXPECT_EQ(CMMCObjectSet::m_nCurrentVersion, 1U);
  EXPECT_EQ(CMMCObjectParams::n_nCurrentVersion, 1U);
}

TEST(ImageHeader, AnotherVersionOfTheSetIsRefused) {
  for (const std::int64_t version : {0, 2, -1, 0x100, 0x10001}) {
    ExpectRefused(Long(version) + Long(1) + std::string(40, '\0'), CArchiveException::badSchema);
  }
}

TEST(ImageHeader, AnotherVersionOfTheRecordsIsRefused) {
  for (const std::int64_t version : {0, 2, -1, 0x100, 0x10001}) {
    ExpectRefused(Long(1) + Long(version) + std::string(40, '\0'), CArchiveException::badSchema);
  }
}

TEST(ImageHeader, MoreThanOneTopLevelNodeIsRefused) {
  for (const std::uint64_t count : {2ULL, 3ULL, 0x100000000ULL, 0x7FFFFFFFFFFFFFFFULL, 0xFFFFFFFFFFFFFFFFULL}) {
    ExpectRefused(Long(1) + Long(1) + Count(count) + std::string(40, '\0'), CArchiveException::badSchema);
  }
}

TEST(ImageHeader, AHeadThatEndsEarlyIsRefused) {
  const std::string head = Long(1) + Long(1) + Count(0);
  for (std::size_t length = 0; length < head.size(); ++length) {
    ExpectRefused(head.substr(0, length), CArchiveException::endOfFile);
  }
}

TEST(ImageHeader, AProjectFileIsNoImage) {
  ExpectRefused("<?xml version=\"1.0\"?><Project/>", CArchiveException::badSchema);
}

TEST(ImageHeader, AnAcceptedHeadEmptiesTheSet) {
  CMMCObjectSet set(LeaveToSet);
  Fill(set);
  const auto raised = Raised<CArchiveException>([&] { LoadImage(set, Long(1) + Long(1) + Count(0)); });
  ASSERT_TRUE(raised);
  EXPECT_EQ(raised->m_cause, CArchiveException::endOfFile);
  EXPECT_EQ(Observed(set), "unmodified\n");
}

TEST(ImageHeader, NoTopLevelNodeGivesASetOfDialogsAndFilesAlone) {
  CMMCObjectSet set(LeaveToSet);
  LoadImage(set, Long(1) + Long(1) + Count(0) +                                         // no nodes
                     Count(1) + Cookie(9) + ShortText("About") + Cookie(0) + Long(0) +  // one dialog, of type List
                     Count(0) + Cookie(0) + Count(0) +                                  //
                     Count(0) +                                                         // no icon files
                     Count(1) + Cookie(kMore) + ByteVector("abc") +                     // one code file
                     Count(0));
  EXPECT_TRUE(set.GetChildNodes(-1).empty());
  EXPECT_EQ(set.GetDialog(_T("About")), 9);
  EXPECT_EQ(set.GetCodeFiles(), std::list<__int64>{kMore});
}

TEST(ImageHeader, ASetWithTwoTopLevelNodesIsNotStored) {
  CMMCObjectSet set(LeaveToSet);
  ASSERT_EQ(set.AddNewNode(-1, _T("First"), CMMCObjectParams::eList), 0);
  ASSERT_EQ(set.AddNewNode(-1, _T("Second"), CMMCObjectParams::eList), 1);
  CMemFile file;
  CVellum archive(&file, CArchive::store);
  const auto raised = Raised<CArchiveException>([&] { set.SerializeObjects(archive, 0, 1); });
  ASSERT_TRUE(raised);
  EXPECT_EQ(raised->m_cause, CArchiveException::badSchema);
  EXPECT_EQ(raised->m_strFileName, CString());
  archive.Close();
  EXPECT_EQ(Hex(BytesOf(file)), "") << "refused before anything is written";
  EXPECT_TRUE(set.IsModified());
}

TEST(ImageHeader, ATopLevelNodeWithANegativeCookieIsNotThere) {
  CMMCObjectSet set(LeaveToSet);
  ASSERT_EQ(set.AddNode(-1, -7, CMMCObjectParams(-7, _T("Hidden"), CMMCObjectParams::eList)), S_OK);
  EXPECT_EQ(Hex(SavedImage(set)), Hex(Long(1) + Long(1) + std::string(40, '\0')));
}

}  // namespace
}  // namespace ondrel::test
