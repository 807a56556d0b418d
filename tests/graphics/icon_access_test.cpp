// Icon files that the process may not read, or that would keep it waiting.
#include <filesystem>

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include "graphics/icon_reading.h"

namespace ondrel::test {
namespace {

// While it lives, the process has the rights of an ordinary user, whom permissions bind.
class OrdinaryUser {
 public:
  OrdinaryUser() : m_before(geteuid()) {
    constexpr uid_t kNobody = 65534;
    if (m_before == 0) {
      EXPECT_EQ(seteuid(kNobody), 0);
    }
  }
  ~OrdinaryUser() { EXPECT_EQ(seteuid(m_before), 0); }
  OrdinaryUser(const OrdinaryUser&) = delete;
  OrdinaryUser& operator=(const OrdinaryUser&) = delete;

 private:
  uid_t m_before;
};

TEST(IconAccess, UnreadableFileIsDenied) {
  const TemporaryFolder folder;
  const std::filesystem::path path = folder.Write("a.ico", IconFileBytes({PatternPicture(32, 32, 4)}));
  std::filesystem::permissions(path, std::filesystem::perms::none);
  const OrdinaryUser user;
  EXPECT_TRUE(FailedWith(ExtractIcons(path), kFileUnreadable, ERROR_ACCESS_DENIED));
}

TEST(IconAccess, PipeIsDeniedWithoutWaiting) {
  const TemporaryFolder folder;
  const std::filesystem::path path = folder / "pipe.ico";
  ASSERT_EQ(mkfifo(path.c_str(), 0600), 0);
  EXPECT_TRUE(FailedWith(ExtractIcons(path), kFileUnreadable, ERROR_ACCESS_DENIED));
}

}  // namespace
}  // namespace ondrel::test
