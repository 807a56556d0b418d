// Blocks of memory that grow: small ones, large ones, and from one to the other.
#include <ondrel/platform/os_block.h>

#include <limits>
#include <utility>

#include <gtest/gtest.h>

namespace ondrel::test {
namespace {

using platform::OsBlock;

constexpr std::size_t kMebibyte = std::size_t{1024} * 1024;

/// A byte of its own for each place near another.
std::byte ByteAt(std::size_t place) { return static_cast<std::byte>(place * 131 + place / 256); }

void Fill(const OsBlock& block, std::size_t from, std::size_t to) {
  for (std::size_t place = from; place < to; ++place) block.Bytes()[place] = ByteAt(place);
}

/// The first place whose byte is another than Fill's; `end` when there is none.
std::size_t FirstWrong(const OsBlock& block, std::size_t end) {
  std::size_t place = 0;
  while (place < end && block.Bytes()[place] == ByteAt(place)) ++place;
  return place;
}

TEST(OsBlock, HasNoBytesAtFirst) {
  const OsBlock block;
  EXPECT_EQ(block.Bytes(), nullptr);
  EXPECT_EQ(block.Size(), 0U);
}

TEST(OsBlock, KeepsWhatIsInUseAsItGrows) {
  OsBlock block;
  std::size_t used = 0;
  for (const std::size_t size : {std::size_t{1}, std::size_t{100}, kMebibyte, 4 * kMebibyte - 1, 4 * kMebibyte,
                                 4 * kMebibyte + 1, 7 * kMebibyte, 33 * kMebibyte}) {
    ASSERT_TRUE(block.Grow(used, size)) << size;
    EXPECT_EQ(block.Size(), size);
    EXPECT_EQ(FirstWrong(block, used), used) << size;
    Fill(block, used, size);
    used = size;
  }
  EXPECT_EQ(FirstWrong(block, used), used);
}

TEST(OsBlock, ThatCannotGrowIsAsItWas) {
  for (const std::size_t given : {std::size_t{1000}, 5 * kMebibyte}) {
    OsBlock block;
    ASSERT_TRUE(block.Grow(0, given));
    Fill(block, 0, given);
    for (const std::size_t impossible :
         {std::numeric_limits<std::size_t>::max(), std::numeric_limits<std::size_t>::max() / 2}) {
      EXPECT_FALSE(block.Grow(given, impossible));
      EXPECT_EQ(block.Size(), given);
      EXPECT_EQ(FirstWrong(block, given), given);
    }
    EXPECT_TRUE(block.Grow(given, given + 1));
    EXPECT_EQ(FirstWrong(block, given), given);
  }
}

TEST(OsBlock, ThatIsMovedLeavesNone) {
  OsBlock block;
  ASSERT_TRUE(block.Grow(0, 10));
  Fill(block, 0, 10);
  const OsBlock owner(std::move(block));
  EXPECT_EQ(block.Bytes(), nullptr);  // NOLINT(bugprone-use-after-move): what is left behind is told
  EXPECT_EQ(block.Size(), 0U);
  EXPECT_EQ(owner.Size(), 10U);
  EXPECT_EQ(FirstWrong(owner, 10), 10U);
}

}  // namespace
}  // namespace ondrel::test
