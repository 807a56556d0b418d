// What the two flags of an image's storing and loading do to the modified flag.

#include <gtest/gtest.h>

#include <string>

#include <ondrel/MMCObjectSet.h>

#include "support/model/hand_bytes.h"
#include "support/model/set_forms.h"
#include "support/object_set_probe.h"

namespace ondrel::test {
namespace {

const std::string kEmptyImage = Long(1) + Long(1) + std::string(40, '\0');

/// The modified flag after storing or loading with these flags, in a set that was `before`.
bool AfterStoring(bool before, int setModified, int clearModified) {
  CMMCObjectSet set(LeaveToSet);
  CMMCObjectSetProbe::SetModifiedFlag(set, before);
  SavedImage(set, setModified, clearModified);
  return set.IsModified();
}
bool AfterLoading(bool before, int setModified, int clearModified) {
  CMMCObjectSet set(LeaveToSet);
  CMMCObjectSetProbe::SetModifiedFlag(set, before);
  LoadImage(set, kEmptyImage, setModified, clearModified);
  return set.IsModified();
}

TEST(ImageFlags, WithoutFlagsStoringKeepsTheModifiedFlag) {
  EXPECT_FALSE(AfterStoring(false, 0, 0));
  EXPECT_TRUE(AfterStoring(true, 0, 0));
}

TEST(ImageFlags, WithoutFlagsLoadingClearsTheModifiedFlag) {
  EXPECT_FALSE(AfterLoading(false, 0, 0));
  EXPECT_FALSE(AfterLoading(true, 0, 0)) << "with everything else that the set held";
}

TEST(ImageFlags, TheFirstFlagSetsIt) {
  for (const bool before : {false, true}) {
    EXPECT_TRUE(AfterStoring(before, 1, 0));
    EXPECT_TRUE(AfterLoading(before, 1, 0));
    EXPECT_TRUE(AfterStoring(before, -1, 0)) << "any value but 0";
  }
}

TEST(ImageFlags, TheSecondFlagClearsIt) {
  for (const bool before : {false, true}) {
    EXPECT_FALSE(AfterStoring(before, 0, 1));
    EXPECT_FALSE(AfterLoading(before, 0, 1));
    EXPECT_FALSE(AfterStoring(before, 0, 0x100)) << "any value but 0";
  }
}

TEST(ImageFlags, OfBothTheSecondWins) {
  for (const bool before : {false, true}) {
    EXPECT_FALSE(AfterStoring(before, 1, 1));
    EXPECT_FALSE(AfterLoading(before, 1, 1));
  }
}

TEST(ImageFlags, AStoringThatFailsChangesNothing) {
  for (const bool before : {false, true}) {
    CMMCObjectSet set(LeaveToSet);
    ASSERT_EQ(CMMCObjectSetProbe::InsertCodeFile(set, _T("Z:\\nowhere\\a.js"), 1, Unchanged), S_OK);
    for (const int setModified : {0, 1}) {
      for (const int clearModified : {0, 1}) {
        CMMCObjectSetProbe::SetModifiedFlag(set, before);
        EXPECT_THROW(SavedImage(set, setModified, clearModified), CFileException);
        EXPECT_EQ(set.IsModified(), before) << setModified << ", " << clearModified;
      }
    }
  }
}

TEST(ImageFlags, ALoadingThatIsRefusedAtItsHeadChangesNothing) {
  for (const bool before : {false, true}) {
    for (const int setModified : {0, 1}) {
      for (const int clearModified : {0, 1}) {
        CMMCObjectSet set(LeaveToSet);
        CMMCObjectSetProbe::SetModifiedFlag(set, before);
        EXPECT_THROW(LoadImage(set, Long(2) + kEmptyImage.substr(4), setModified, clearModified), CArchiveException);
        EXPECT_EQ(set.IsModified(), before) << setModified << ", " << clearModified;
      }
    }
  }
}

TEST(ImageFlags, ALoadingThatFailsLaterLeavesTheFlagOfAnEmptySet) {
  for (const int setModified : {0, 1}) {
    for (const int clearModified : {0, 1}) {
      CMMCObjectSet set(LeaveToSet);
      CMMCObjectSetProbe::SetModifiedFlag(set, 1);
      EXPECT_THROW(LoadImage(set, kEmptyImage.substr(0, 47), setModified, clearModified), CArchiveException);
      EXPECT_FALSE(set.IsModified()) << setModified << ", " << clearModified;
    }
  }
}

}  // namespace
}  // namespace ondrel::test
