// Icon files that the process may not read, or that would keep it waiting: permissions and pipes as Windows has none.
#include <filesystem>

#include <gtest/gtest.h>
#include <sys/stat.h>

#include "graphics/icon_reading.h"
#include "support/posix/process.h"

namespace ondrel::test {
namespace {

TEST(PosixIconAccess, UnreadableFileIsDenied) {
  const TemporaryFolder folder;
  const std::filesystem::path path = folder.Write("a.ico", IconFileBytes({PatternPicture(32, 32, 4)}));
  std::filesystem::permissions(path, std::filesystem::perms::none);
  const Unprivileged user;
  EXPECT_TRUE(FailedWith(ExtractIcons(path), kFileUnreadable, ERROR_ACCESS_DENIED));
}

TEST(PosixIconAccess, PipeIsDeniedWithoutWaiting) {
  const TemporaryFolder folder;
  const std::filesystem::path path = folder / "pipe.ico";
  ASSERT_EQ(mkfifo(path.c_str(), 0600), 0);
  EXPECT_TRUE(FailedWith(ExtractIcons(path), kFileUnreadable, ERROR_ACCESS_DENIED));
}

}  // namespace
}  // namespace ondrel::test
