// Which of an icon's two handles fits a size.

#include <gtest/gtest.h>

#include <ondrel/MMCObjectIcon.h>
#include <ondrel/platform/framework.h>

#include "support/archive_bytes.h"
#include "support/model/icon_fixtures.h"

namespace ondrel::test {
namespace {

/// The width of a handle's colour image; 0 for no handle.
LONG WidthOf(HICON icon) {
  ICONINFO info = {};
  if (!GetIconInfo(icon, &info)) return 0;
  const platform::UniqueBitmap colour(info.hbmColor);
  const platform::UniqueBitmap mask(info.hbmMask);
  BITMAP geometry = {};
  return GetObjectW(colour.get(), sizeof geometry, &geometry) == 0 ? 0 : geometry.bmWidth;
}

class IconChoice : public testing::Test {
 protected:
  void SetUp() override {
    ASSERT_EQ(m_icon.Construct(WriteIcon(m_folder, "icon.ico", {SolidIcon(32, 0), SolidIcon(16, 0)})), S_OK);
    ASSERT_EQ(WidthOf(m_icon.GetIcon(32, 32)), 32);
  }

  LONG Chosen(int cx, int cy) const { return WidthOf(m_icon.GetIcon(cx, cy)); }

  TemporaryFolder m_folder;
  CMMCObjectIcon m_icon;
};

TEST_F(IconChoice, TheExactSizeIsTaken) {
  EXPECT_EQ(Chosen(32, 32), 32);
  EXPECT_EQ(Chosen(16, 16), 16);
}

TEST_F(IconChoice, TheAreaDecidesNotTheEdges) {
  EXPECT_EQ(Chosen(24, 24), 16) << "|1024 - 576| is more than |256 - 576|";
  EXPECT_EQ(Chosen(26, 26), 32) << "|1024 - 676| is less than |256 - 676|";
  EXPECT_EQ(Chosen(256, 1), 16);
  EXPECT_EQ(Chosen(1, 1024), 32);
}

TEST_F(IconChoice, ATieGoesToTheLargeOne) {
  EXPECT_EQ(Chosen(32, 20), 32) << "640 pixels lie in the middle";
  EXPECT_EQ(Chosen(640, 1), 32);
  EXPECT_EQ(Chosen(639, 1), 16);
  EXPECT_EQ(Chosen(641, 1), 32);
}

TEST_F(IconChoice, SizesFarAwayTakeTheNearerOne) {
  EXPECT_EQ(Chosen(1, 1), 16);
  EXPECT_EQ(Chosen(256, 256), 32);
}

TEST_F(IconChoice, AnAreaOfZeroGivesTheLargeOne) {
  EXPECT_EQ(Chosen(0, 0), 32);
  EXPECT_EQ(Chosen(16, 0), 32);
  EXPECT_EQ(Chosen(0, 16), 32);
}

TEST_F(IconChoice, ANegativeAreaTurnsTheComparisonAround) {
  // Both distances are negative then: -1040 / 16 and -272 / 16.
  EXPECT_EQ(Chosen(-1, 16), 32);
}

TEST_F(IconChoice, TheAreaIsA32BitProduct) {
  EXPECT_EQ(Chosen(65536, 65536), 32) << "wraps around to 0";
  EXPECT_EQ(Chosen(65537, -16776960), 16) << "wraps around to 256";
}

TEST_F(IconChoice, TheIconKeepsTheHandle) {
  const HICON chosen = m_icon.GetIcon(16, 16);
  EXPECT_EQ(m_icon.GetIcon(16, 16), chosen);
  EXPECT_NE(m_icon.GetIcon(32, 32), chosen);
}

TEST_F(IconChoice, AnIconFromAnImageHasNoHandle) {
  const std::string stored = Stored([&](CVellum& archive) { m_icon.Serialize(archive); });
  LoadingArchive archive(stored);
  CMMCObjectIcon loaded;
  loaded.Deserialize(*archive);
  ASSERT_EQ(loaded.GetColourBitmap(true).bmWidth, 32);
  EXPECT_EQ(loaded.GetIcon(32, 32), nullptr);
  EXPECT_EQ(loaded.GetIcon(16, 16), nullptr);
  EXPECT_EQ(loaded.GetIcon(0, 0), nullptr);
}

}  // namespace
}  // namespace ondrel::test
