// Icon files that give no icon, by the statuses of Windows: the system's own, whatever they are, and success where it
// has none.

#include <gtest/gtest.h>

#include <string>

#include <ondrel/MMCObjectIcon.h>

#include "support/live_handles.h"
#include "support/model/icon_fixtures.h"

namespace ondrel::test {
namespace {

/// The status of the last error that the system leaves for a file without an icon.
HRESULT SystemStatus(const CString& path) {
  HICON large = nullptr;
  HICON smallIcon = nullptr;
  SetLastError(ERROR_SUCCESS);
  const UINT extracted = ExtractIconExW(path, 0, &large, &smallIcon, 1);
  const DWORD reason = GetLastError();
  EXPECT_TRUE(extracted == 0 || extracted == UINT_MAX) << extracted << " icons";
  return HRESULT_FROM_WIN32(reason);
}

TEST(IconFromFile, AFileWithoutAnIconHasTheSystemsStatusAndLeavesTheIconEmpty) {
  const TemporaryFolder folder;
  for (const std::string& bytes : {std::string("no icon at all, but longer than a header"), std::string()}) {
    const CString path = Wide(folder.Write("text.ico", bytes));
    const HRESULT status = SystemStatus(path);
    const auto before = CountLiveHandles();
    CMMCObjectIcon icon;
    SetLastError(ERROR_SUCCESS);
    EXPECT_EQ(icon.Construct(path), status);
    ExpectEmpty(icon);
    EXPECT_EQ(CountLiveHandles().icons, before.icons);
    EXPECT_EQ(CountLiveHandles().bitmaps, before.bitmaps);
  }
}

TEST(IconFromFile, AMissingFolderIsToldAsAMissingFileAndLeavesTheIconEmpty) {
  const TemporaryFolder folder;
  CMMCObjectIcon icon;
  EXPECT_EQ(icon.Construct(Wide(folder / "missing/missing.ico")), static_cast<HRESULT>(0x80070002));
  ExpectEmpty(icon);
}

}  // namespace
}  // namespace ondrel::test
