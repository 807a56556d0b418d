// Image strips that no bitmap can be made of, on Windows because memory is short; and depths that Windows rounds.

#include <gtest/gtest.h>

#include <string>

#include <ondrel/MMCObjectSet.h>

#include "support/live_handles.h"
#include "support/model/icon_fixtures.h"
#include "support/model/icon_strips.h"
#include "support/model/set_forms.h"
#include "support/windows/import_patch.h"

namespace ondrel::test {
namespace {

/// While it lives, bitmap number `number` (from 1) cannot be made.
class FailingBitmap {
 public:
  explicit FailingBitmap(int number) : m_patch("CreateBitmap", MakeOrFail) {
    left = number;
    current = this;
  }
  ~FailingBitmap() { current = nullptr; }

 private:
  static HBITMAP WINAPI MakeOrFail(int width, int height, UINT planes, UINT depth, const void* bits) {
    if (--left != 0) return current->m_patch.Original<decltype(CreateBitmap)>()(width, height, planes, depth, bits);
    SetLastError(ERROR_NOT_ENOUGH_MEMORY);
    return nullptr;
  }

  static inline int left = 0;
  static inline const FailingBitmap* current = nullptr;
  ImportPatch m_patch;
};

TEST(IconFilesStrips, AFailureOfOneStripGivesNullHandlesAndTheReason) {
  for (const int failing : {1, 2}) {
    CMMCObjectSet set(LeaveToSet);
    InsertRecord(set, 1, SolidIconBytes(2, 2, 0x00010101));
    const auto before = CountLiveHandles();
    HBITMAP smallIcon = reinterpret_cast<HBITMAP>(&set);
    HBITMAP large = reinterpret_cast<HBITMAP>(&set);
    DWORD reason = ERROR_SUCCESS;
    {
      const FailingBitmap failure(failing);
      SetLastError(ERROR_SUCCESS);
      set.GetIconBitmapImages(kKey, smallIcon, large);
      reason = GetLastError();
    }
    EXPECT_EQ(smallIcon, nullptr) << failing;
    EXPECT_EQ(large, nullptr) << failing;
    EXPECT_EQ(reason, static_cast<DWORD>(ERROR_NOT_ENOUGH_MEMORY)) << failing;
    EXPECT_EQ(CountLiveHandles().bitmaps, before.bitmaps) << failing;
    EXPECT_EQ(IndexOf(set, 1), 0) << "the indices are noted before the handles are made";
  }
}

TEST(IconFilesStrips, DepthsThatThePlatformRoundsAreNotReadBeyondTheStrip) {
  CMMCObjectSet set(LeaveToSet);
  const std::string colour = BitmapBytes(64, 64, 16, 2, std::string(64 * 16, '\x11'));
  InsertRecord(set, 1, colour + std::string(24, '\0') + colour + std::string(24, '\0'));
  const Strips strips(set);
  ASSERT_NE(strips.smallIcon.get(), nullptr);
  ASSERT_NE(strips.large.get(), nullptr);
  EXPECT_EQ(Geometry(strips.smallIcon).bmWidth, 64);
  EXPECT_EQ(Geometry(strips.smallIcon).bmBitsPixel, 4);
  EXPECT_EQ(Pixels(strips.smallIcon), std::string(64 * 32, '\0'));
  EXPECT_EQ(Pixels(strips.large), std::string(64 * 32, '\0'));
}

}  // namespace
}  // namespace ondrel::test
