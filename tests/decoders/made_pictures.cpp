// The pictures, drawn by one run of ImageMagick for each kind.
#include "decoders/made_pictures.h"

#include "support/posix/package_tools.h"

namespace ondrel::test {
namespace {

enum class Alpha { none, hard, soft };

constexpr int kAllColours = 0;
constexpr int kMostColours[] = {2, 16, 200, kAllColours};  // a hole counts as one
constexpr Alpha kAlphas[] = {Alpha::none, Alpha::hard, Alpha::soft};

// Sizes of icons, sizes that are no multiple of what rows are padded to, and the smallest.
constexpr const char* kDrawnSizes[] = {"16x16", "24x24", "32x32", "48x48", "64x64",  "17x33",
                                       "33x17", "1x1",   "7x3",   "8x255", "100x99", "256x256"};

void Append(std::vector<std::string>& arguments, const std::vector<std::string>& more) {
  arguments.insert(arguments.end(), more.begin(), more.end());
}

/// ImageMagick's arguments that draw a picture and put it at the end of its list.
std::vector<std::string> Drawing(const char* size, int mostColours, Alpha alpha) {
  std::vector<std::string> arguments = {"(", "-size", size, "plasma:fractal"};
  if (alpha == Alpha::none) {
    Append(arguments, {"-alpha", "off"});
  } else {
    Append(arguments, {"(", "-size", size, "plasma:black-white"});
    if (alpha == Alpha::hard) Append(arguments, {"-threshold", "50%"});
    Append(arguments, {")", "-alpha", "off", "-compose", "CopyOpacity", "-composite"});
  }
  if (mostColours != kAllColours) Append(arguments, {"+dither", "-colors", std::to_string(mostColours)});
  Append(arguments, {")"});
  return arguments;
}

const std::vector<std::string> kSeed = {"-seed", "1"};  // the same pictures in every run

}  // namespace

DrawnPictures::DrawnPictures() {
  for (const int mostColours : kMostColours) {
    for (const Alpha alpha : kAlphas) {
      const std::string kind = std::to_string(m_kinds.size());
      std::vector<std::string> arguments = kSeed;
      for (const char* const size : kDrawnSizes) Append(arguments, Drawing(size, mostColours, alpha));
      Append(arguments, {"-write", kind + ".ico", "-compress", "none", "-write", "plain-" + kind + ".ico"});
      Append(arguments, {"-depth", "8", kind + "-%d.png"});
      RunTool(kConvert, arguments, m_folder.Path());

      m_icons.push_back(m_folder / (kind + ".ico"));
      m_icons.push_back(m_folder / ("plain-" + kind + ".ico"));
      std::vector<std::string>& pictures = m_kinds.emplace_back();
      for (std::size_t index = 0; index < std::size(kDrawnSizes); ++index) {
        pictures.push_back(kind + "-" + std::to_string(index) + ".png");
      }
    }
  }

  std::vector<std::string> arguments = kSeed;
  Append(arguments, Drawing("256x256", kAllColours, Alpha::soft));
  Append(arguments, {"-define", "icon:auto-resize=256,128,96,64,48,40,32,24,20,16", "shrunk.ico"});
  RunTool(kConvert, arguments, m_folder.Path());
  m_icons.push_back(m_folder / "shrunk.ico");
}

const DrawnPictures& AllDrawnPictures() {
  static const DrawnPictures pictures;
  return pictures;
}

}  // namespace ondrel::test
