// Decoders of icons that are not ours: icotool and ImageMagick. icotool gives PNG images out as they are stored;
// LodePNG, which shares nothing with the library that ours and ImageMagick use, decodes those and all that icotool
// makes.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

namespace ondrel::test {

enum class Decoder { icotool, imageMagick };
inline constexpr Decoder kDecoders[] = {Decoder::icotool, Decoder::imageMagick};

const char* NameOf(Decoder decoder);

/// An image as a decoder gives it.
struct ForeignImage {
  /// Four bytes: red, green, blue, alpha.
  const std::uint8_t* Pixel(int x, int y) const {
    return reinterpret_cast<const std::uint8_t*>(rgba.data()) + 4 * (y * width + x);
  }

  int width = 0;  ///< 0 for an image that the decoder left out.
  int height = 0;
  std::string rgba;  ///< Rows from the top one down.
  std::string file;  ///< The PNG file that icotool took out or made; of ImageMagick empty.
};

/// The images of each icon file, in its order.
std::vector<std::vector<ForeignImage>> DecodeIconFiles(Decoder decoder,
                                                       const std::vector<std::filesystem::path>& files);

/// Decodes with LodePNG. Raises std::runtime_error for what it refuses.
ForeignImage DecodePng(const std::string& bytes);

/// The one image of each file of one kind that ImageMagick knows by its ending.
std::vector<ForeignImage> DecodePictures(const std::vector<std::filesystem::path>& files);

}  // namespace ondrel::test
