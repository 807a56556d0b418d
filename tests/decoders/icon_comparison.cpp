// The rules by which an image of ours equals one of another decoder.
//
// Both decoders give colours with an alpha. Where an image has no alpha of its own, that is the mask: 255 where it is
// opaque, else 0. Where it has one, in 32 bits and in PNG images, it is the image's; the mask of 32-bit images is then
// not to be seen, except that both take it for the alpha when all alpha is 0.
#include "decoders/icon_comparison.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <iostream>

#include "icons/dib_image.h"
#include "icons/icon_source.h"
#include "icons/png_image.h"
#include "support/temporary_folder.h"

namespace ondrel::test {
namespace {

namespace fs = std::filesystem;
using platform::IconEntry;
using platform::IconImage;

bool HasAlpha(const IconEntry& entry, const IconImage& image) {
  if (platform::IsPngImage(entry.image)) return true;
  if (entry.bitsPerPixel != 32) return false;
  for (std::size_t offset = 3; offset < image.colour.size(); offset += 4) {
    if (image.colour[offset] != 0) return true;
  }
  return false;
}

std::string KindOf(const IconEntry& entry, const IconImage& image) {
  if (platform::IsPngImage(entry.image)) return "PNG";
  if (entry.bitsPerPixel == 32 && !HasAlpha(entry, image)) return "32 bits without alpha";
  return std::to_string(entry.bitsPerPixel) + (entry.bitsPerPixel == 1 ? " bit" : " bits");
}

std::string PixelText(const std::uint8_t* rgba) {
  char text[32];
  std::snprintf(text, sizeof text, "#%02X%02X%02X alpha %d", rgba[0], rgba[1], rgba[2], rgba[3]);
  return text;
}

::testing::AssertionResult SamePixels(const IconEntry& entry, const IconImage& ours, const ForeignImage& theirs) {
  if (ours.width != theirs.width || ours.height != theirs.height) {
    return ::testing::AssertionFailure() << "we read " << ours.width << " x " << ours.height << " pixels, they "
                                         << theirs.width << " x " << theirs.height;
  }
  const bool hasAlpha = HasAlpha(entry, ours);
  for (int y = 0; y < ours.height; ++y) {
    for (int x = 0; x < ours.width; ++x) {
      const BYTE* const bgra = ours.Pixel(x, y);
      const BYTE masked = ours.IsTransparent(x, y) ? 0 : 255;
      const std::uint8_t rgba[4] = {bgra[2], bgra[1], bgra[0], hasAlpha ? bgra[3] : masked};
      if (!std::equal(std::begin(rgba), std::end(rgba), theirs.Pixel(x, y))) {
        return ::testing::AssertionFailure() << "at " << x << ", " << y << " we read " << PixelText(rgba) << ", they "
                                             << PixelText(theirs.Pixel(x, y));
      }
    }
  }
  return ::testing::AssertionSuccess();
}

/// The mask of a PNG image has the pixels whose alpha is 0, no other.
::testing::AssertionResult MaskIsAlpha(const IconImage& image) {
  for (int y = 0; y < image.height; ++y) {
    for (int x = 0; x < image.width; ++x) {
      if (image.IsTransparent(x, y) != (image.Pixel(x, y)[3] == 0)) {
        return ::testing::AssertionFailure() << "at " << x << ", " << y << " the mask is not the alpha";
      }
    }
  }
  return ::testing::AssertionSuccess();
}

/// Whether a PNG image states a gamma of 1, that of light and not of screens.
bool StatesGammaOfLight(platform::Bytes image) {
  constexpr BYTE kGammaOfLight[] = {'g', 'A', 'M', 'A', 0x00, 0x01, 0x86, 0xA0};
  return std::search(image.begin(), image.end(), std::begin(kGammaOfLight), std::end(kGammaOfLight)) != image.end();
}

/// What keeps a decoder from giving an image as it is; empty when nothing does.
std::string FaultOf(Decoder decoder, const IconEntry& entry) {
  constexpr LONG kMostStatedSize = 256;
  const bool isPng = platform::IsPngImage(entry.image);
  if (decoder == Decoder::imageMagick && !isPng && std::max(entry.width, entry.height) > kMostStatedSize) {
    return "it cuts images to the size that a directory can state, 256 x 256";
  }
  if (decoder == Decoder::imageMagick && isPng && StatesGammaOfLight(entry.image)) {
    return "it brightens PNG images by the gamma that they state, which those of icons are shown without";
  }
  if (decoder == Decoder::icotool && entry.bitsPerPixel == 24 && entry.width % 4 == 1 && entry.height > 1) {
    return "it loses its place in rows of 24 bits that are padded with one byte";
  }
  return {};
}

bool SameBytes(platform::Bytes left, const std::string& right) {
  return left.size() == right.size() && std::memcmp(left.data(), right.data(), left.size()) == 0;
}

void CompareImage(const IconEntry& entry, const ForeignImage& theirs, ImageCounts& compared) {
  IconImage ours;
  const bool isPng = platform::IsPngImage(entry.image);
  ASSERT_EQ(isPng ? platform::DecodePngImage(entry.image, ours) : platform::DecodeDibImage(entry.image, ours),
            ERROR_SUCCESS);
  EXPECT_EQ(entry.width, ours.width);
  EXPECT_EQ(entry.height, ours.height);
  EXPECT_TRUE(SamePixels(entry, ours, theirs));
  if (isPng) {
    EXPECT_TRUE(MaskIsAlpha(ours));
  }
  compared.Add(KindOf(entry, ours));
}

/// What our reader finds in a file; nothing when it does not succeed, which it is expected to.
platform::IconSource Read(const fs::path& file) {
  platform::IconSource source;
  const platform::IconStatus status = platform::ReadIconSource(Wide(file), source);
  EXPECT_TRUE(status.IsSuccess()) << "the file's status is " << status.file << ", the icon's " << status.icon;
  if (!status.IsSuccess()) source.entries.clear();
  return source;
}

}  // namespace

std::vector<ComparedIcon> BothTheSame(const std::vector<fs::path>& files) {
  std::vector<ComparedIcon> icons;
  for (const fs::path& file : files) icons.push_back({file, file});
  return icons;
}

int ImageCounts::Total() const {
  int total = 0;
  for (const auto& [kind, count] : m_counts) total += count;
  return total;
}

int ImageCounts::Of(const std::string& kind) const {
  const auto found = m_counts.find(kind);
  return found == m_counts.end() ? 0 : found->second;
}

std::string ImageCounts::Text() const {
  std::string kinds;
  for (const auto& [kind, count] : m_counts) kinds += (kinds.empty() ? "" : ", ") + kind + " " + std::to_string(count);
  return std::to_string(Total()) + " images" + (kinds.empty() ? "" : " (" + kinds + ")");
}

ImageCounts CompareWith(Decoder decoder, const std::vector<ComparedIcon>& icons) {
  std::vector<fs::path> files;
  for (const ComparedIcon& icon : icons) files.push_back(icon.theirs);
  const std::vector<std::vector<ForeignImage>> decoded = DecodeIconFiles(decoder, files);

  ImageCounts compared;
  std::map<std::string, int> leftOut;
  for (std::size_t index = 0; index < icons.size(); ++index) {
    SCOPED_TRACE(icons[index].ours.string());
    const platform::IconSource source = Read(icons[index].ours);
    EXPECT_EQ(source.entries.size(), decoded[index].size());
    for (std::size_t image = 0; image < std::min(source.entries.size(), decoded[index].size()); ++image) {
      const IconEntry& entry = source.entries[image];
      SCOPED_TRACE("image " + std::to_string(image + 1));
      if (const std::string fault = FaultOf(decoder, entry); !fault.empty()) {
        ++leftOut[fault];
        continue;
      }
      const ForeignImage& theirs = decoded[index][image];
      CompareImage(entry, theirs, compared);
      if (decoder == Decoder::icotool && platform::IsPngImage(entry.image)) {
        EXPECT_TRUE(SameBytes(entry.image, theirs.file)) << "icotool gives out other bytes than we find";
      }
    }
  }
  std::cout << NameOf(decoder) << ": " << icons.size() << " files, " << compared.Text() << std::endl;
  for (const auto& [fault, count] : leftOut) {
    std::cout << "  " << count << " images left out of " << NameOf(decoder) << ": " << fault << std::endl;
  }
  return compared;
}

ImageCounts CompareWithPictures(const std::vector<fs::path>& icons, const std::vector<fs::path>& pictures) {
  const std::vector<ForeignImage> decoded = DecodePictures(pictures);
  ImageCounts compared;
  for (std::size_t index = 0; index < icons.size(); ++index) {
    SCOPED_TRACE(icons[index].string());
    const platform::IconSource source = Read(icons[index]);
    EXPECT_EQ(source.entries.size(), 1U);
    if (source.entries.empty()) continue;
    CompareImage(source.entries[0], decoded[index], compared);
  }
  std::cout << "Pictures: " << icons.size() << " files, " << compared.Text() << std::endl;
  return compared;
}

}  // namespace ondrel::test
