// PNG images of every form, written with libpng from random samples.
#pragma once

#include <string>
#include <vector>

namespace ondrel::test {

struct PngForm {
  int colourType = 0;            ///< As the format numbers it: 0, 2, 3, 4 or 6.
  int bits = 8;                  ///< Of a sample.
  bool hasTransparency = false;  ///< A colour of it is transparent, or its palette has alpha.
  bool interlaced = false;
  bool hasGamma = false;  ///< It states a gamma far from that of screens.

  std::string Name() const;
};

/// Every form that the format allows.
std::vector<PngForm> AllPngForms();

std::string PngBytes(const PngForm& form, int width, int height, unsigned seed);

}  // namespace ondrel::test
