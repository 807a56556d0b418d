// Object images of about a hundred bytes that claim counts and lengths without end.
#include <gtest/gtest.h>

#include <algorithm>

#include "support/archive_bytes.h"
#include "support/claimed_images.h"
#include "support/model/set_forms.h"
#include "support/raised.h"

namespace ondrel::test {
namespace {

constexpr std::size_t kLargestImage = 220;  // bytes, of which three empty bitmaps take 72

TEST(ImageClaims, CountsAndLengthsBeyondTheDataAreRefused) {
  const std::vector<ClaimedImage> images = ClaimedImages();
  EXPECT_GT(images.size(), 300U);
  for (const auto& [place, claim, image, cause] : images) {
    const auto& bytes = image;  // some compilers let no lambda take the part itself
    ASSERT_LE(bytes.size(), kLargestImage) << place;
    CMMCObjectSet set(LeaveToSet);
    const auto raised = Raised<CArchiveException>([&] { LoadImage(set, bytes); });
    ASSERT_TRUE(raised) << place << " of " << claim;
    EXPECT_EQ(raised->m_cause, cause) << place << " of " << claim;
  }
}

}  // namespace
}  // namespace ondrel::test
