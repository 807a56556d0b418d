// Icon files that give no icon: the status says why, and the icon stays empty.

#include <gtest/gtest.h>

#include <string>

#include <ondrel/MMCObjectIcon.h>

#include "support/live_handles.h"
#include "support/model/icon_fixtures.h"
#include "support/statuses.h"

namespace ondrel::test {
namespace {

TEST(IconRefusals, AMissingFolderIsToldAndLeavesTheIconEmpty) {
  const TemporaryFolder folder;
  CMMCObjectIcon icon;
  EXPECT_EQ(icon.Construct(Wide(folder / "missing/missing.ico")), kPathNotFound);
  ExpectEmpty(icon);
}

TEST(IconRefusals, AFileWithoutAnIconIsToldAndLeavesTheIconEmpty) {
  const TemporaryFolder folder;
  CMMCObjectIcon icon;
  EXPECT_EQ(icon.Construct(Wide(folder.Write("text.ico", "no icon at all, but longer than a header"))), kNoIcon);
  ExpectEmpty(icon);
  EXPECT_EQ(icon.Construct(Wide(folder.Write("empty.ico", ""))), kNoIcon);
  ExpectEmpty(icon);
}

TEST(IconRefusals, ADamagedIconIsToldAndLeavesTheIconEmpty) {
  const TemporaryFolder folder;
  const std::string whole = IconFileBytes({SolidIcon(32, 0), SolidIcon(16, 0)});
  const auto before = CountLiveHandles();
  CMMCObjectIcon icon;
  EXPECT_EQ(icon.Construct(Wide(folder.Write("cut.ico", whole.substr(0, 100)))), kInvalidData);
  ExpectEmpty(icon);
  EXPECT_EQ(CountLiveHandles().icons, before.icons);
  EXPECT_EQ(CountLiveHandles().bitmaps, before.bitmaps);
}

}  // namespace
}  // namespace ondrel::test
