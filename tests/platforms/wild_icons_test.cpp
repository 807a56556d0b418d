// Icons of other makers, compiled by both builds: the large images are the same. They are what can be compared under
// Wine, which shrinks them for the small ones and swaps red and blue of PNG images; and only those that are stored in
// their size, because how an image is scaled is each system's own.
#include <gtest/gtest.h>

#include <cstring>
#include <iostream>

#include <ondrel/MMCObjectSet.h>

#include "icons/icon_source.h"
#include "icons/png_image.h"
#include "platforms/definitions.h"
#include "platforms/two_platforms.h"
#include "support/model/set_forms.h"
#include "support/posix/icon_corpus.h"

namespace ondrel::test {
namespace {

namespace fs = std::filesystem;

bool HasComparableImage(const fs::path& file) {
  platform::IconSource source;
  const platform::IconStatus status = platform::ReadIconSource(Wide(file), source);
  EXPECT_TRUE(status.IsSuccess()) << file << ": the file's status is " << status.file << ", the icon's " << status.icon;
  if (!status.IsSuccess()) return false;
  const platform::IconEntry& chosen = platform::ChooseIconEntry(source.entries, platform::kLargeIconSize);
  return chosen.width == platform::kLargeIconSize && chosen.height == platform::kLargeIconSize &&
         !platform::IsPngImage(chosen.image);
}

void LoadCompiled(const Platform& platform, const TemporaryFolder& folder, CMMCObjectSet& set) {
  const std::string image = platform.Name() + ".img";
  const CommandResult result = platform.Run("ondrel", {"compile", kDefinition, "-o", image}, folder.Path());
  ASSERT_EQ(result.exitCode, 0) << platform.Name() << ": " << Told(result);
  LoadImage(set, ReadBytes(folder / image));
}

::testing::AssertionResult SameLargeImages(const CMMCObjectIcon& left, const CMMCObjectIcon& right) {
  const tagBITMAP& leftColour = left.GetColourBitmap(true);
  const tagBITMAP& rightColour = right.GetColourBitmap(true);
  for (const tagBITMAP* const colour : {&leftColour, &rightColour}) {
    if (colour->bmWidth != 32 || colour->bmHeight != 32 || colour->bmBitsPixel != 32 || colour->bmWidthBytes != 128) {
      return ::testing::AssertionFailure() << "an image of " << colour->bmWidth << " x " << colour->bmHeight
                                           << " pixels with " << colour->bmBitsPixel << " bits";
    }
  }
  constexpr DWORD kNoColour = 0x01000000;
  for (int y = 0; y < 32; ++y) {
    for (int x = 0; x < 32; ++x) {
      const int offset = y * leftColour.bmWidthBytes + x * 4;
      if (std::memcmp(static_cast<const BYTE*>(leftColour.bmBits) + offset,
                      static_cast<const BYTE*>(rightColour.bmBits) + offset, 4) != 0) {
        return ::testing::AssertionFailure() << "the colours differ at " << x << ", " << y;
      }
      if ((left.GetPixel(true, x, y, kNoColour) == kNoColour) != (right.GetPixel(true, x, y, kNoColour) == kNoColour)) {
        return ::testing::AssertionFailure() << "the masks differ at " << x << ", " << y;
      }
    }
  }
  return ::testing::AssertionSuccess();
}

// How many files were compared.
void CompareLargeImages(std::vector<fs::path> files, int& compared) {
  const std::size_t offered = files.size();
  std::erase_if(files, [](const fs::path& file) { return !HasComparableImage(file); });
  const TemporaryFolder folder;
  WriteDefinitionOf(folder, files);
  CMMCObjectSet native(LeaveToSet);
  CMMCObjectSet windows(LeaveToSet);
  ASSERT_NO_FATAL_FAILURE(LoadCompiled(Platforms()[0], folder, native));
  ASSERT_NO_FATAL_FAILURE(LoadCompiled(Platforms()[1], folder, windows));
  for (std::size_t index = 0; index < files.size(); ++index) {
    const auto cookie = static_cast<__int64>(index) + 1;
    const CMMCObjectIcon* nativeIcon = nullptr;
    const CMMCObjectIcon* windowsIcon = nullptr;
    ASSERT_TRUE(native.GetIconFile(cookie, &nativeIcon)) << files[index];
    ASSERT_TRUE(windows.GetIconFile(cookie, &windowsIcon)) << files[index];
    EXPECT_TRUE(SameLargeImages(*nativeIcon, *windowsIcon)) << files[index];
    ++compared;
  }
  std::cout << compared << " files compared, " << offered - files.size()
            << " without an image of 32 x 32 pixels that is no PNG image" << std::endl;
}

TEST(WildIcons, OfIconFilesHaveTheSameLargeImages) {
  std::vector<fs::path> files = WholeIconCorpus().IconFiles();
  const std::vector<fs::path>& taken = WholeIconCorpus().ProgramIcons();
  files.insert(files.end(), taken.begin(), taken.end());
  int compared = 0;
  CompareLargeImages(files, compared);
  EXPECT_GE(compared, 250);
}

TEST(WildIcons, OfProgramsHaveTheSameLargeImages) {
  std::vector<fs::path> files;
  for (const ProgramWithIcon& program : WholeIconCorpus().Programs()) files.push_back(program.path);
  int compared = 0;
  CompareLargeImages(files, compared);
  EXPECT_GE(compared, 38);
}

}  // namespace
}  // namespace ondrel::test
