// Encoding of pictures when memory runs short. The allocations of libpng, which encodes, can be made to fail off
// Windows only.
#include <gtest/gtest.h>

#include <ondrel/platform/framework/exceptions.h>
#include <ondrel/platform/picture.h>

#include "support/failing_allocation.h"

namespace ondrel::test {
namespace {

using platform::EncodePng;
using platform::Picture;

/// More than libpng hands on at once.
Picture ManyPixels() {
  Picture picture(200, 200, Picture::Channels::rgba);
  BYTE value = 0;
  for (BYTE& byte : picture.bytes) byte = value = static_cast<BYTE>(value * 5 + 113);
  return picture;
}

class PosixPictureMemory : public testing::TestWithParam<Shortage> {};

TEST_P(PosixPictureMemory, RunningShortRaisesTheMemoryExceptionAndKeepsNothing) {
  const Picture picture = ManyPixels();
  const std::vector<BYTE> whole = EncodePng(picture);
  std::vector<BYTE> encoded;
  long failures = 0;
  for (bool hasFailed = true; hasFailed; ++failures) {
    const long held = CountHeldBlocks();
    bool isShort = false;
    {
      const FailingAllocation failing(failures, GetParam());
      try {
        encoded = EncodePng(picture);
      } catch (const CMemoryException&) {
        isShort = true;
      }
      hasFailed = failing.HasFailed();
    }
    EXPECT_EQ(isShort, hasFailed) << "allocation " << failures;
    if (isShort) {
      EXPECT_EQ(CountHeldBlocks(), held) << "allocation " << failures;
    }
  }
  EXPECT_GT(failures, 5) << "libpng's, and those of the growing file";
  EXPECT_EQ(encoded, whole);
}

INSTANTIATE_TEST_SUITE_P(Shortages, PosixPictureMemory, testing::Values(Shortage::lasting, Shortage::passing),
                         [](const auto& shortage) {
                           return shortage.param == Shortage::lasting ? "Lasting" : "Passing";
                         });

TEST(PosixPictureMemory, PicturesWithoutPixelsAreInvalid) {
  EXPECT_THROW(EncodePng(Picture(0, 1, Picture::Channels::rgb)), CInvalidArgException);
  EXPECT_THROW(EncodePng(Picture(1, 0, Picture::Channels::rgba)), CInvalidArgException);
}

}  // namespace
}  // namespace ondrel::test
