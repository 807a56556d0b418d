// Every colour type of PNG images in every depth that it may have.
#pragma once

#include "support/png_bytes.h"

namespace ondrel::test {

struct PngKind {
  const char* name;  ///< Of the colour type, as a part of a test's name.
  PngColour colour;
  int depth;
};

inline constexpr PngKind kPngKinds[] = {
    {"Grey", PngColour::grey, 1},
    {"Grey", PngColour::grey, 2},
    {"Grey", PngColour::grey, 4},
    {"Grey", PngColour::grey, 8},
    {"Grey", PngColour::grey, 16},
    {"TrueColour", PngColour::trueColour, 8},
    {"TrueColour", PngColour::trueColour, 16},
    {"Palette", PngColour::palette, 1},
    {"Palette", PngColour::palette, 2},
    {"Palette", PngColour::palette, 4},
    {"Palette", PngColour::palette, 8},
    {"GreyAlpha", PngColour::greyAlpha, 8},
    {"GreyAlpha", PngColour::greyAlpha, 16},
    {"TrueColourAlpha", PngColour::trueColourAlpha, 8},
    {"TrueColourAlpha", PngColour::trueColourAlpha, 16},
};

}  // namespace ondrel::test
