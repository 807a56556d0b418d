// Images of icons made of bitmap files. ImageMagick writes and reads those in forms that neither it nor icotool knows
// in icons: with 16 bits, with the oldest header and with the longest.
#include <gtest/gtest.h>

#include <map>

#include "decoders/icon_comparison.h"
#include "support/icon_bytes.h"
#include "support/posix/package_tools.h"
#include "support/temporary_folder.h"

namespace ondrel::test {
namespace {

namespace fs = std::filesystem;

// A bitmap file is a header of 14 bytes and then what an image of an icon is, but for the mask and for the height,
// which is stated twice as high there.
constexpr std::size_t kFileHeaderBytes = 14;
constexpr char kOldestHeaderBytes = 12;
constexpr std::size_t kOldestHeightOffset = 6;
constexpr std::size_t kHeightOffset = 8;
constexpr std::size_t kBitsOffset = 14;
constexpr std::size_t kCompressionOffset = 16;

struct Size {
  int width;
  int height;
};
constexpr Size kSizes[] = {{16, 16}, {32, 32}, {17, 33}, {33, 17}, {19, 7}, {48, 48}, {100, 99}};

struct Form {
  std::string name;
  std::string format;  ///< As ImageMagick names it.
  std::vector<std::string> options;
  std::string kind;
};

std::vector<Form> Forms() {
  std::vector<Form> forms;
  for (const std::string format : {"BMP2", "BMP3", "BMP"}) {
    forms.push_back({format + "-1", format, {"+dither", "-colors", "2"}, "1 bit"});
    forms.push_back({format + "-4", format, {"+dither", "-colors", "16"}, "4 bits"});
    forms.push_back({format + "-8", format, {"+dither", "-colors", "200"}, "8 bits"});
    forms.push_back({format + "-24", format, {"-type", "TrueColor"}, "24 bits"});
    if (format != "BMP2") forms.push_back({format + "-16", format, {"-define", "bmp:subtype=RGB555"}, "16 bits"});
  }
  return forms;
}

// The files' names.
std::vector<std::string> DrawBitmaps(const TemporaryFolder& folder, const Form& form) {
  std::vector<std::string> arguments = {"-seed", "1"};
  std::vector<std::string> names;
  for (const Size& size : kSizes) {
    const std::string pixels = std::to_string(size.width) + "x" + std::to_string(size.height);
    arguments.insert(arguments.end(), {"(", "-size", pixels, "plasma:fractal", "-alpha", "off"});
    arguments.insert(arguments.end(), form.options.begin(), form.options.end());
    arguments.emplace_back(")");
    names.push_back(form.name + "-" + std::to_string(names.size()) + ".bmp");
  }
  arguments.insert(arguments.end(), {"-compress", "none", form.format + ":" + form.name + "-%d.bmp"});
  RunTool(kConvert, arguments, folder.Path());
  return names;
}

// ImageMagick marks 16 bits as having masks of their own, which are those that go without saying.
void TakeMasksForGranted(std::string& bitmap) {
  std::string header = bitmap.substr(kFileHeaderBytes);
  if (header[0] == kOldestHeaderBytes || header[kBitsOffset] != 16) return;
  bitmap[kFileHeaderBytes + kCompressionOffset] = 0;
}

std::string IconOf(const std::string& bitmap, const Size& size) {
  std::string image = bitmap.substr(kFileHeaderBytes);
  const std::size_t heightOffset = image[0] == kOldestHeaderBytes ? kOldestHeightOffset : kHeightOffset;
  image.at(heightOffset) = static_cast<char>(2 * size.height);
  const auto maskBytes = static_cast<std::size_t>((size.width + 31) / 32 * 4 * size.height);
  image.append(maskBytes, '\0');
  return IconFileBytes({{static_cast<std::uint8_t>(size.width), static_cast<std::uint8_t>(size.height), 0, image}});
}

TEST(BitmapImages, OfEveryDepthAndHeaderAreTheSame) {
  const TemporaryFolder folder;
  std::vector<fs::path> icons;
  std::vector<fs::path> bitmaps;
  std::map<std::string, int> expected;
  for (const Form& form : Forms()) {
    const std::vector<std::string> names = DrawBitmaps(folder, form);
    for (std::size_t index = 0; index < names.size(); ++index) {
      std::string bitmap = ReadBytes(folder / names[index]);
      TakeMasksForGranted(bitmap);
      bitmaps.push_back(folder.Write(names[index], bitmap));
      icons.push_back(folder.Write(names[index] + ".ico", IconOf(bitmap, kSizes[index])));
      ++expected[form.kind];
    }
  }
  const ImageCounts compared = CompareWithPictures(icons, bitmaps);
  for (const auto& [kind, count] : expected) EXPECT_EQ(compared.Of(kind), count) << kind;
}

}  // namespace
}  // namespace ondrel::test
