// Comparing what our reader makes of icons with what another decoder makes of them, and counting it.
#pragma once

#include <map>
#include <string>

#include "decoders/foreign_decoders.h"
#include "icons/icon_image.h"

namespace ondrel::test {

/// A file for our reader, and the icon file for the other decoders that holds the same icon: mostly the same file.
struct ComparedIcon {
  std::filesystem::path ours;
  std::filesystem::path theirs;
};

/// As both, of icon files.
std::vector<ComparedIcon> BothTheSame(const std::vector<std::filesystem::path>& files);

/// How many images were compared, by their kind: "4 bits", "PNG" and so on.
class ImageCounts {
 public:
  int Total() const;
  int Of(const std::string& kind) const;
  void Add(const std::string& kind) { ++m_counts[kind]; }
  /// Like "12 images (4 bits 5, PNG 7)".
  std::string Text() const;

 private:
  std::map<std::string, int> m_counts;
};

/// Decodes every image of these icons and expects the same pixels from both. Prints the counts, and what had to be left
/// out and why.
ImageCounts CompareWith(Decoder decoder, const std::vector<ComparedIcon>& icons);

/// Decodes the one image of each of these icons and expects the pixels of the picture that it was made of.
ImageCounts CompareWithPictures(const std::vector<std::filesystem::path>& icons,
                                const std::vector<std::filesystem::path>& pictures);

}  // namespace ondrel::test
