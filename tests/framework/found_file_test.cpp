// Files that are told by whatever name they have.
#include <filesystem>

#include <gtest/gtest.h>

#include "support/temporary_folder.h"

#include <ondrel/platform/program.h>

namespace ondrel::test {
namespace {

using platform::FoundFile;

TEST(FoundFile, IsKnownByEachOfItsNames) {
  const TemporaryFolder folder;
  folder.Write("a.js", "same");
  folder.Write("sub/b.js", "same");
  std::filesystem::create_hard_link(folder / "a.js", folder / "sub/linked.js");
  const FoundFile file(Wide(folder / "a.js"));
  EXPECT_TRUE(file.IsThere());
  for (const char* const name : {"a.js", "./a.js", "sub/../a.js", "sub/linked.js"}) {
    EXPECT_TRUE(file.IsAt(Wide(folder / name))) << name;
  }
  for (const char* const name : {"sub/b.js", "sub", "gone.js", "gone/a.js"}) {
    EXPECT_FALSE(file.IsAt(Wide(folder / name))) << name;
  }
}

TEST(FoundFile, ThatIsNotThereIsNowhere) {
  const TemporaryFolder folder;
  const CString path = Wide(folder / "a.js");
  const FoundFile file(path);
  EXPECT_FALSE(file.IsThere());
  folder.Write("a.js", "made later");
  EXPECT_FALSE(file.IsAt(path));
  EXPECT_FALSE(FoundFile(CString()).IsThere());
}

TEST(FoundFile, MayBeAFolder) {
  const TemporaryFolder folder;
  std::filesystem::create_directory(folder / "sub");
  const FoundFile found(Wide(folder / "sub"));
  EXPECT_TRUE(found.IsThere());
  EXPECT_TRUE(found.IsAt(Wide(folder / "sub/../sub")));
  EXPECT_FALSE(found.IsAt(Wide(folder.Path())));
}

TEST(BeginReading, TellsTheLengthOfASmallFileOrNothing) {
  const TemporaryFolder folder;
  folder.Write("a.js", "12345");
  const CString path = Wide(folder / "a.js");
  const ULONGLONG length = platform::BeginReading(path);
  EXPECT_TRUE(length == 5 || length == 0) << length;  // 0 where the system cannot be asked
  EXPECT_FALSE(platform::IsLeftToDisk(path));         // it was just written
  for (const char* const name : {"gone.js", "gone/a.js", ""}) {
    EXPECT_EQ(platform::BeginReading(Wide(folder / name)), 0U) << name;
    EXPECT_FALSE(platform::IsLeftToDisk(Wide(folder / name))) << name;
  }
}

}  // namespace
}  // namespace ondrel::test
