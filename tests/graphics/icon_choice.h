// Icon files of several images, and which of them is to be shown.
#pragma once

#include <string>
#include <vector>

#include "graphics/icon_reading.h"

namespace ondrel::test {

struct Choice {
  const char* name;
  std::vector<IconPicture> pictures;
  std::size_t large;      ///< The picture expected at 32 x 32.
  std::size_t smallIcon;  ///< And at 16 x 16.
};

inline Extraction ExtractChoice(const Choice& choice) {
  return ExtractIconsOf(IconFileBytes({choice.pictures.begin(), choice.pictures.end()}));
}

/// A picture of one colour, so that scaling cannot blur which of them is shown.
inline IconPicture Square(int size, int bits, std::uint32_t colour) { return SolidPicture(size, size, bits, colour); }

inline std::string NameOfChoice(const testing::TestParamInfo<Choice>& info) { return info.param.name; }

}  // namespace ondrel::test
