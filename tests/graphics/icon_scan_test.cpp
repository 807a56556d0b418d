// What a scan says of a file, beside what an extraction makes of it.
#include <ostream>

#include <gtest/gtest.h>

#include <ondrel/platform/icon_scan.h>

#include "support/icon_bytes.h"
#include "support/png_pictures.h"
#include "support/statuses.h"
#include "support/temporary_folder.h"

namespace ondrel::platform {

bool operator==(const IconOffer& left, const IconOffer& right) {
  return left.width == right.width && left.height == right.height && left.bitsPerPixel == right.bitsPerPixel &&
         left.isPng == right.isPng;
}

std::ostream& operator<<(std::ostream& out, const IconOffer& offer) {
  return out << offer.width << " x " << offer.height << ", " << offer.bitsPerPixel
             << (offer.isPng ? " bit, PNG" : " bit");
}

}  // namespace ondrel::platform

namespace ondrel::test {
namespace {

using platform::IconOffer;
using platform::IconScan;
using platform::ScanIcon;

HRESULT Scan(const std::string& bytes, IconScan& scan) {
  const TemporaryFolder folder;
  return ScanIcon(Wide(folder.Write("test.ico", bytes)), scan);
}

TEST(IconScan, TellsTheImagesInTheOrderOfTheFile) {
  IconScan scan;
  ASSERT_EQ(
      Scan(IconFileBytes({SolidPicture(48, 40, 8, 0), SolidPicture(16, 16, 4, 0), SolidPicture(32, 32, 24, 0)}), scan),
      S_OK);
  EXPECT_EQ(scan.container, platform::IconContainer::iconFile);
  EXPECT_EQ(scan.offers, (std::vector<IconOffer>{{48, 40, 8, false}, {16, 16, 4, false}, {32, 32, 24, false}}));
  EXPECT_EQ(scan.large, 2U);
  EXPECT_EQ(scan.smallIcon, 1U);
}

TEST(IconScan, ForgetsAnEarlierOne) {
  IconScan scan;
  ASSERT_EQ(Scan(IconFileBytes({SolidPicture(16, 16, 4, 0), SolidPicture(32, 32, 4, 0)}), scan), S_OK);
  ASSERT_EQ(Scan(IconFileBytes({SolidPicture(48, 48, 1, 0)}), scan), S_OK);
  EXPECT_EQ(scan.offers, (std::vector<IconOffer>{{48, 48, 1, false}}));
  EXPECT_EQ(scan.large, 0U);
  EXPECT_EQ(scan.smallIcon, 0U);
}

TEST(IconScan, BelievesTheImagesNotTheDirectory) {
  IconScan scan;
  ASSERT_EQ(Scan(IconFileBytes({{16, 16, 4, EncodePng(RgbaPicture(300, 200))},
                                {16, 16, 4, ImageBytes(SolidPicture(32, 32, 8, 0))}}),
                 scan),
            S_OK);
  EXPECT_EQ(scan.offers, (std::vector<IconOffer>{{300, 200, 32, true}, {32, 32, 8, false}}));
  EXPECT_EQ(scan.large, 1U);
  EXPECT_EQ(scan.smallIcon, 1U);
}

TEST(IconScan, OfADamagedImageTheDirectoryIsBelieved) {
  IconScan scan;
  ASSERT_EQ(Scan(IconFileBytes({{0, 24, 8, "no image"}, {32, 32, 4, ""}}), scan), S_OK);
  EXPECT_EQ(scan.offers, (std::vector<IconOffer>{{256, 24, 8, false}, {32, 32, 4, false}}));
  EXPECT_EQ(scan.large, 1U);
}

TEST(IconScan, FailsAsAnExtractionDoes) {
  const TemporaryFolder folder;
  IconScan scan;
  EXPECT_EQ(ScanIcon(Wide(folder / "gone.ico"), scan), kFileNotFound);
  EXPECT_EQ(ScanIcon(Wide(folder / "gone/a.ico"), scan), kPathNotFound);
  EXPECT_EQ(ScanIcon(Wide(folder.Path()), scan), kAccessDenied);
  EXPECT_EQ(Scan("", scan), kNoIcon);
  EXPECT_EQ(Scan("no icon", scan), kNoIcon);
  EXPECT_EQ(Scan(IconFileBytes({}), scan), kNoIcon);
  EXPECT_EQ(Scan(IconFileBytes({SolidPicture(32, 32, 32, 0)}, kCursorFileType), scan), kNoIcon);
  EXPECT_EQ(Scan(IconFileBytes({SolidPicture(32, 32, 32, 0)}).substr(0, 20), scan), kInvalidData);
}

}  // namespace
}  // namespace ondrel::test
