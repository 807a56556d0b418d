// Replacement files on Windows, where names do not differ by the case of a letter and every file has one.
#include <gtest/gtest.h>

#include "support/temporary_folder.h"

#include <ondrel/platform/program.h>

namespace ondrel::test {
namespace {

using platform::ReplacementFile;

TEST(WindowsReplacementFile, IsWrittenBesideItsPlace) {
  const TemporaryFolder folder;
  std::filesystem::create_directory(folder / "sub");
  const ReplacementFile file(Wide(folder / "sub/image.bin"));
  const std::string listing = folder.Listing();
  EXPECT_TRUE(std::string_view(listing).starts_with("sub\nsub/.image.bin.")) << listing;
  EXPECT_TRUE(std::string_view(listing).ends_with(".tmp\n")) << listing;
}

TEST(WindowsReplacementFile, KnowsItsPlaceInOtherLetters) {
  const TemporaryFolder folder;
  const ReplacementFile file(Wide(folder / "\xC3\xA9t\xC3\xA9.bin"));
  EXPECT_TRUE(file.SharesPlaceWith(ReplacementFile(Wide(folder / "\xC3\x89T\xC3\x89.BIN"))));
  EXPECT_FALSE(file.SharesPlaceWith(ReplacementFile(Wide(folder / "ete.bin"))));
}

}  // namespace
}  // namespace ondrel::test
