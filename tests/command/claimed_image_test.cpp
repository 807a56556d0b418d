// Object images that claim counts and lengths without end, shown.
#include <gtest/gtest.h>

#include <map>

#include "project_folder.h"
#include "support/claimed_images.h"

namespace ondrel::test {
namespace {

TEST(ClaimedImage, IsRefusedInOneLine) {
  std::map<std::string, ClaimedImage> images;  // the greatest claim of each place
  for (const ClaimedImage& image : ClaimedImages()) images[image.place] = image;
  EXPECT_GE(images.size(), 15U);
  const ProjectFolder folder;
  for (const auto& [place, image] : images) {
    SCOPED_TRACE(place + " of " + image.claim);
    folder.Write(kImageName, image.bytes);
    ExpectFailure(folder.Show(kImageName), "console.img: it ", "archive cause " + std::to_string(image.cause));
  }
}

}  // namespace
}  // namespace ondrel::test
