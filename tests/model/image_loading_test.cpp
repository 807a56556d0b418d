// Loading and storing an object image: what a failure raises, and what it leaves.

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

using Cookies = std::list<__int64>;

/// The head of an image with so many top-level nodes.
std::string Head(std::uint64_t topNodes) { return Long(1) + Long(1) + Count(topNodes); }
/// A record of type List with nothing but a name.
std::string ListRecord(std::int64_t cookie, std::string_view name) {
  return Cookie(cookie) + ShortText(name) + Cookie(0) + Long(0) + Count(0) + Cookie(0) + Count(0);
}
std::string Node(std::int64_t cookie, std::uint64_t children) { return ListRecord(cookie, "N") + Count(children); }

void ExpectAlreadyExists(CMMCObjectSet& set, const std::string& image) {
  const auto raised = Raised<COleException>([&] { LoadImage(set, image, 0, 0); });
  ASSERT_TRUE(raised) << Hex(image);
  EXPECT_EQ(raised->m_sc, kAlreadyExists);
}

TEST(ImageLoading, ANodeThatStandsTwiceIsRefusedAndTheReadOnesStay) {
  CMMCObjectSet set(LeaveToSet);
  ExpectAlreadyExists(set, Head(1) + Node(1, 3) + Node(2, 0) + Node(3, 1) + Node(2, 0) + Node(4, 0));
  EXPECT_EQ(set.GetChildNodes(-1), Cookies{1});
  EXPECT_EQ(set.GetChildNodes(1), (Cookies{2, 3}));
  EXPECT_EQ(set.GetChildNodes(3), Cookies{});
}

TEST(ImageLoading, ADialogThatStandsTwiceIsRefusedAndTheReadOnesStay) {
  CMMCObjectSet set(LeaveToSet);
  ExpectAlreadyExists(set, Head(0) + Count(3) + ListRecord(1, "A") + ListRecord(1, "B") + ListRecord(2, "C"));
  EXPECT_EQ(set.GetDialogs(), Cookies{1});
  ExpectAlreadyExists(set, Head(0) + Count(2) + ListRecord(1, "A") + ListRecord(2, "A"));
  EXPECT_EQ(set.GetDialogs(), Cookies{1});
  ExpectAlreadyExists(set, Head(1) + Node(1, 0) + Count(1) + ListRecord(1, "A"));
  EXPECT_EQ(set.GetChildNodes(-1), Cookies{1});
  EXPECT_TRUE(set.GetDialogs().empty());
}

TEST(ImageLoading, AnIconFileThatStandsTwiceIsRefusedAndTheReadOnesStay) {
  CMMCObjectSet set(LeaveToSet);
  ExpectAlreadyExists(set, Head(0) + Count(0) + Count(3) + Cookie(1) + TinyIconBytes() + Cookie(1) + TinyIconBytes() +
                               Cookie(2) + TinyIconBytes());
  EXPECT_EQ(set.GetIconFiles(), Cookies{1});
}

TEST(ImageLoading, ACodeFileThatStandsTwiceIsRefusedAndTheReadOnesStay) {
  CMMCObjectSet set(LeaveToSet);
  ExpectAlreadyExists(
      set, Head(0) + Count(0) + Count(0) + Count(2) + Cookie(1) + ByteVector("a") + Cookie(1) + ByteVector("b"));
  EXPECT_EQ(set.GetCodeFiles(), Cookies{1});
  ExpectAlreadyExists(set, Head(0) + Count(0) + Count(0) + Count(1) + Cookie(1) + ByteVector("a") + Count(1) +
                               Cookie(1) + ByteVector("b"));
  EXPECT_EQ(set.GetCodeFiles(), Cookies{1}) << "both sections become one table";
}

TEST(ImageLoading, AFailureLeavesWhatWasReadAndNothingOfTheFormerSet) {
  CMMCObjectSet set(LeaveToSet);
  ASSERT_EQ(set.AddNewNode(-1, _T("Old"), CMMCObjectParams::eList), 0);
  ASSERT_EQ(CMMCObjectSetProbe::InsertCodeFile(set, _T("old.js"), 2, Unchanged), S_OK);
  const std::string image = Head(1) + Node(7, 0) + Count(1) + ListRecord(8, "D") + Count(1) + Cookie(9) +
                            TinyIconBytes() + Count(2) + Cookie(10) + ByteVector("x") + Cookie(11);
  EXPECT_THROW(LoadImage(set, image), CArchiveException);
  EXPECT_EQ(set.GetChildNodes(-1), Cookies{7});
  EXPECT_EQ(set.GetDialogs(), Cookies{8});
  EXPECT_EQ(set.GetIconFiles(), Cookies{9});
  EXPECT_EQ(set.GetCodeFiles(), Cookies{10});
  CString path;
  EXPECT_FALSE(set.GetFilePath(2, path));
}

TEST(ImageLoading, ChildrenBelongToTheNodeThatTheyFollow) {
  CMMCObjectSet set(LeaveToSet);
  LoadImage(set, Head(1) + Node(1, 2) + Node(5, 2) + Node(9, 0) + Node(8, 0) + Node(2, 1) + Node(3, 0) +
                     std::string(4 * 8, '\0'));
  EXPECT_EQ(set.GetChildNodes(-1), Cookies{1});
  EXPECT_EQ(set.GetChildNodes(1), (Cookies{2, 5}));
  EXPECT_EQ(set.GetChildNodes(5), (Cookies{8, 9}));
  EXPECT_EQ(set.GetChildNodes(2), Cookies{3});
}

TEST(ImageLoading, ANegativeCookieIsLoadedAndNotListed) {
  CMMCObjectSet set(LeaveToSet);
  LoadImage(set, Head(1) + Node(-7, 0) + std::string(4 * 8, '\0'));
  CMMCObjectParams* params = nullptr;
  EXPECT_TRUE(set.GetParams(-7, params));
  EXPECT_TRUE(set.GetChildNodes(-1).empty());
}

TEST(ImageLoading, ImageIndicesStay) {
  CMMCObjectSet set(LeaveToSet);
  LoadImage(set, Head(0) + Count(0) + Count(1) + Cookie(9) + TinyIconBytes() + Count(0) + Count(0));
  HBITMAP smallIcon = nullptr;
  HBITMAP large = nullptr;
  set.GetIconBitmapImages(0, smallIcon, large);
  DeleteObject(smallIcon);
  DeleteObject(large);
  LoadImage(set, Head(0) + std::string(4 * 8, '\0'));
  EXPECT_TRUE(set.GetIconFiles().empty());
  int image = -99;
  EXPECT_TRUE(set.GetIconFileImage(9, image));
  EXPECT_EQ(image, 0);
}

TEST(ImageLoading, AListedNodeThatIsNotInTheIndexEndsStoringAsGeneric) {
  CMMCObjectSet set(LeaveToSet);
  ASSERT_EQ(set.AddNewNode(-1, _T("Top"), CMMCObjectParams::eList), 0);
  ASSERT_EQ(set.AddNewNode(0, _T("Below"), CMMCObjectParams::eList), 1);
  CMMCObjectSetProbe::ForgetObject(set, 1);
  CMMCObjectSetProbe::SetModifiedFlag(set, 1);
  const auto raised = Raised<CArchiveException>([&] { SavedImage(set, 0, 1); });
  ASSERT_TRUE(raised);
  EXPECT_EQ(raised->m_cause, CArchiveException::genericException);
  EXPECT_EQ(raised->m_strFileName, CString());
  EXPECT_TRUE(set.IsModified());
}

TEST(ImageLoading, AListedDialogThatIsNotInTheIndexEndsStoringAsGeneric) {
  CMMCObjectSet set(LeaveToSet);
  ASSERT_EQ(set.AddNewDialog(_T("About")), 0);
  CMMCObjectSetProbe::ForgetObject(set, 0);
  const auto raised = Raised<CArchiveException>([&] { SavedImage(set); });
  ASSERT_TRUE(raised);
  EXPECT_EQ(raised->m_cause, CArchiveException::genericException);
}

TEST(ImageLoading, ACodeFileThatCannotBeReadEndsStoringWithItsFileException) {
  const TemporaryFolder folder;
  CMMCObjectSet set(LeaveToSet);
  ASSERT_EQ(CMMCObjectSetProbe::InsertCodeFile(set, Wide(folder / "missing.js"), 1, Unchanged), S_OK);
  CMMCObjectSetProbe::SetModifiedFlag(set, 1);
  EXPECT_THROW(SavedImage(set, 0, 1), CFileException);
  EXPECT_TRUE(set.IsModified());
}

TEST(ImageLoading, OneNodeReadOnAStoringArchiveRaisesWriteOnly) {
  CMMCObjectSet set(LeaveToSet);
  CMemFile file;
  CVellum archive(&file, CArchive::store);
  archive.m_strFileName = _T("image.bin");
  const auto raised = Raised<CArchiveException>([&] { CMMCObjectSetProbe::DeserializeNode(set, -1, archive); });
  ASSERT_TRUE(raised);
  EXPECT_EQ(raised->m_cause, CArchiveException::writeOnly);
  EXPECT_EQ(raised->m_strFileName, CString(_T("image.bin")));
}

TEST(ImageLoading, OneNodeStoredOnALoadingArchiveRaisesReadOnly) {
  CMMCObjectSet set(LeaveToSet);
  ASSERT_EQ(set.AddNewNode(-1, _T("Top"), CMMCObjectParams::eList), 0);
  LoadingArchive archive("12345678");
  archive->m_strFileName = _T("image.bin");
  const auto raised = Raised<CArchiveException>([&] { CMMCObjectSetProbe::SerializeNode(set, 0, *archive); });
  ASSERT_TRUE(raised);
  EXPECT_EQ(raised->m_cause, CArchiveException::readOnly);
  EXPECT_EQ(raised->m_strFileName, CString(_T("image.bin")));
}

TEST(ImageLoading, AnUnknownNodeIsNotStored) {
  CMMCObjectSet set(LeaveToSet);
  CMemFile file;
  CVellum archive(&file, CArchive::store);
  const auto raised = Raised<CArchiveException>([&] { CMMCObjectSetProbe::SerializeNode(set, 5, archive); });
  ASSERT_TRUE(raised);
  EXPECT_EQ(raised->m_cause, CArchiveException::genericException);
  archive.Close();
  EXPECT_EQ(Hex(BytesOf(file)), "");
}

TEST(ImageLoading, NodesAreAddedBelowTheParentThatIsGiven) {
  CMMCObjectSet set(LeaveToSet);
  LoadingArchive archive(Node(3, 1) + Node(4, 0));
  CMMCObjectSetProbe::DeserializeNode(set, 77, *archive);
  EXPECT_EQ(set.GetChildNodes(77), Cookies{3});
  EXPECT_EQ(set.GetChildNodes(3), Cookies{4});
  EXPECT_FALSE(set.IsModified());
  EXPECT_EQ(Hex(Stored([&](CVellum& storing) { CMMCObjectSetProbe::SerializeNode(set, 3, storing); })),
            Hex(Node(3, 1) + Node(4, 0)));
}

}  // namespace
}  // namespace ondrel::test
