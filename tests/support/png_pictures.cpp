// PNG files through png_image, the interface of libpng for programs that want nothing but pixels.
#include "support/png_pictures.h"

#include <png.h>

#include <algorithm>
#include <stdexcept>

namespace ondrel::test {
namespace {

constexpr std::size_t kSignatureBytes = 8;
constexpr std::size_t kNumberBytes = 4;
constexpr std::size_t kPixelBytes = 4;

/// What png_image keeps of a file is freed with it.
class SimpleImage {
 public:
  SimpleImage() {
    m_image.version = PNG_IMAGE_VERSION;
    m_image.format = PNG_FORMAT_RGBA;
  }
  ~SimpleImage() { png_image_free(&m_image); }
  SimpleImage(const SimpleImage&) = delete;
  SimpleImage& operator=(const SimpleImage&) = delete;

  png_image* operator->() { return &m_image; }
  png_image* Get() { return &m_image; }
  void Require(int done) const {
    if (done == 0) throw std::runtime_error(std::string("libpng: ") + m_image.message);
  }

 private:
  png_image m_image{};
};

std::uint32_t BigEndian(std::string_view bytes, std::size_t offset) {
  std::uint32_t value = 0;
  for (const char byte : bytes.substr(offset, kNumberBytes)) value = value << 8 | static_cast<unsigned char>(byte);
  return value;
}

}  // namespace

RgbaPicture::RgbaPicture(int itsWidth, int itsHeight, RgbaPixel colour)
    : width(itsWidth), height(itsHeight), pixels(static_cast<std::size_t>(width * height), colour) {}

RgbaPicture RgbaPicture::Columns(int left, int count) const {
  RgbaPicture part(count, height);
  for (int y = 0; y < height; ++y) {
    for (int x = 0; x < count; ++x) part.At(x, y) = At(left + x, y);
  }
  return part;
}

RgbaPicture DecodePng(std::string_view file) {
  SimpleImage image;
  image.Require(png_image_begin_read_from_memory(image.Get(), file.data(), file.size()));
  image->format = PNG_FORMAT_RGBA;
  RgbaPicture picture(static_cast<int>(image->width), static_cast<int>(image->height));
  image.Require(png_image_finish_read(image.Get(), nullptr, picture.pixels.data(), 0, nullptr));
  return picture;
}

std::string EncodePng(const RgbaPicture& picture) {
  SimpleImage image;
  image->width = static_cast<png_uint_32>(picture.width);
  image->height = static_cast<png_uint_32>(picture.height);
  std::string file(PNG_IMAGE_PNG_SIZE_MAX(*image.Get()), '\0');
  png_alloc_size_t size = file.size();
  image.Require(png_image_write_to_memory(image.Get(), file.data(), &size, 0, picture.pixels.data(),
                                          picture.width * static_cast<int>(kPixelBytes), nullptr));
  file.resize(size);
  return file;
}

std::vector<std::string> ChunkNames(std::string_view file) {
  std::vector<std::string> names;
  for (std::size_t offset = kSignatureBytes; offset < file.size();) {
    names.emplace_back(file.substr(offset + kNumberBytes, kNumberBytes));
    offset += 3 * kNumberBytes + BigEndian(file, offset);  // the length, the name, the data and a checksum
  }
  return names;
}

std::string HeaderText(std::string_view file) {
  const std::string_view header = file.substr(kSignatureBytes + 2 * kNumberBytes);
  return std::to_string(BigEndian(header, 0)) + " x " + std::to_string(BigEndian(header, kNumberBytes)) + ", " +
         std::to_string(header[2 * kNumberBytes]) + " bits, colour type " +
         std::to_string(header[2 * kNumberBytes + 1]);
}

testing::AssertionResult SamePicture(const RgbaPicture& actual, const RgbaPicture& expected) {
  if (actual.width != expected.width || actual.height != expected.height) {
    return testing::AssertionFailure() << "a picture of " << actual.width << " x " << actual.height << " pixels, not "
                                       << expected.width << " x " << expected.height;
  }
  for (int y = 0; y < actual.height; ++y) {
    for (int x = 0; x < actual.width; ++x) {
      if (actual.At(x, y) == expected.At(x, y)) continue;
      return testing::AssertionFailure() << "the pixel at " << x << ", " << y << " is "
                                         << testing::PrintToString(actual.At(x, y)) << ", not "
                                         << testing::PrintToString(expected.At(x, y));
    }
  }
  return testing::AssertionSuccess();
}

}  // namespace ondrel::test
