// Icons as only a damaged or hostile object image has them: colours, masks and the geometry of both do not match. What
// each shows in its first two columns and rows is written beside it.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "support/model/hand_bytes.h"

namespace ondrel::test {

struct MismatchedIcon {
  std::string name;
  std::string bitmaps;  ///< Of the large image: colours and mask.
  /// The pixels 0,0 and 1,0 and 0,1 and 1,1: 1 to 4 for a colour of FourColours, `K` for the key, `.` for black.
  std::string pixels;
};

/// The first four pixels of the colours: blue, green, red and a byte that is never drawn.
inline std::string FourColours() { return FromHex("11 12 13 14  21 22 23 24  31 32 33 34  41 42 43 44"); }

/// Another number of planes than a bitmap's 1.
inline std::string WithPlanes(std::string bitmap, unsigned planes) { return bitmap.replace(16, 2, Word(planes)); }

/// Each two pixels wide, as its colours state it.
inline std::vector<MismatchedIcon> MismatchedIcons() {
  constexpr std::int64_t kMost = 0x7FFFFFFF;
  constexpr std::int64_t kLeast = -kMost - 1;
  const std::string colours = BitmapBytes(2, 2, 8, 32, FourColours());
  const std::string allMasked = FromHex("C0 00 C0 00");
  const std::string mask = BitmapBytes(2, 2, 2, 1, FromHex("40 00  80 00"));
  std::vector<MismatchedIcon> icons = {
      {"nothing is wrong", colours + mask, "1KK4"},
      {"mask without bytes", colours + BitmapBytes(2, 2, 2, 1, ""), "1234"},
      {"mask of one row's bytes", colours + BitmapBytes(2, 2, 2, 1, FromHex("C0 00")), "KK34"},
      {"mask a byte short", colours + BitmapBytes(2, 2, 2, 1, FromHex("C0 00 C0")), "KKKK"},
      {"mask with bytes behind", colours + BitmapBytes(2, 2, 2, 1, FromHex("40 00 80 00 FF FF FF")), "1KK4"},
      {"mask of one column", colours + BitmapBytes(1, 2, 2, 1, allMasked), "K2K4"},
      {"mask of one row", colours + BitmapBytes(2, 1, 2, 1, allMasked), "KK34"},
      {"mask larger than the colours", colours + BitmapBytes(9, 9, 1, 1, FromHex("40 80 FF FF FF FF")), "1KK4"},
      {"mask of the largest size", colours + BitmapBytes(kMost, kMost, 2, 1, FromHex("40 00 80 00")), "1KK4"},
      {"mask of no size", colours + BitmapBytes(0, 0, 2, 1, allMasked), "1234"},
      {"mask of a negative width", colours + BitmapBytes(-2, 2, 2, 1, allMasked), "1234"},
      {"mask of the least height", colours + BitmapBytes(2, kLeast, 2, 1, allMasked), "1234"},
      {"mask rows over each other", colours + BitmapBytes(2, 2, 0, 1, FromHex("40")), "1K3K"},
      {"mask rows backwards", colours + BitmapBytes(2, 2, -1, 1, allMasked), "1234"},
      {"mask rows farthest apart", colours + BitmapBytes(2, 2, kMost, 1, allMasked), "KK34"},
      {"mask rows farthest backwards", colours + BitmapBytes(2, 2, kLeast, 1, allMasked), "1234"},
      {"mask of 32 bits, cut in a pixel", colours + BitmapBytes(2, 2, 8, 32, FromHex("01 00 00 00  00 00 01")), "K234"},
      {"mask without planes", colours + WithPlanes(mask, 0), "1KK4"},
      {"mask of all planes", colours + WithPlanes(mask, 0xFFFF), "1KK4"},
      {"colours without bytes", BitmapBytes(2, 2, 8, 32, "") + mask, ".KK."},
      {"colours of one pixel's bytes", BitmapBytes(2, 2, 8, 32, FourColours().substr(0, 4)) + mask, "1KK."},
      {"colours a byte short", BitmapBytes(2, 2, 8, 32, FourColours().substr(0, 15)) + mask, "1KK."},
      {"colours with bytes behind", BitmapBytes(2, 2, 8, 32, FourColours() + "more") + mask, "1KK4"},
      {"rows of one pixel", BitmapBytes(2, 2, 4, 32, FourColours()) + mask, "1KK3"},
      {"rows over each other", BitmapBytes(2, 2, 0, 32, FourColours()) + mask, "1KK2"},
      {"rows backwards", BitmapBytes(2, 2, -8, 32, FourColours()) + mask, ".KK."},
      {"rows farthest apart", BitmapBytes(2, 2, kMost, 32, FourColours()) + mask, "1KK."},
      {"rows of an odd length", BitmapBytes(2, 2, 9, 32, FourColours().insert(8, "-")) + mask, "1KK4"},
      {"higher than its bytes", BitmapBytes(2, kMost, 8, 32, FourColours()) + mask, "1KK4"},
      {"two planes", WithPlanes(colours, 2) + mask, "1KK4"},
  };
  for (const unsigned depth : {0U, 2U, 4U, 8U, 16U, 24U, 64U, 0xFFFFU}) {
    const std::string bits = std::to_string(depth) + " bits";
    icons.push_back({"mask of " + bits, colours + BitmapBytes(2, 2, 2, depth, std::string(64, '\xFF')), "1234"});
    icons.push_back({"colours of " + bits, BitmapBytes(2, 2, 8, depth, FourColours()) + mask, ".KK."});
  }
  return icons;
}

}  // namespace ondrel::test
