// The samples go to libpng as they are: no transformation of its takes part.
#include "decoders/png_forms.h"

#include <png.h>

#include <cstdint>
#include <random>
#include <utility>

namespace ondrel::test {
namespace {

int Channels(int colourType) {
  switch (colourType) {
    case PNG_COLOR_TYPE_RGB:
      return 3;
    case PNG_COLOR_TYPE_GRAY_ALPHA:
      return 2;
    case PNG_COLOR_TYPE_RGB_ALPHA:
      return 4;
    default:
      return 1;
  }
}

bool IsAllowed(int colourType, int bits) {
  switch (colourType) {
    case PNG_COLOR_TYPE_GRAY:
      return true;
    case PNG_COLOR_TYPE_PALETTE:
      return bits <= 8;
    default:
      return bits >= 8;
  }
}

/// Random samples. Many pixels are the key, which may be the transparent colour, or differ from it in the lowest bit
/// alone, which is lost when 16 bits become 8 and yet keeps a pixel opaque.
class Samples {
 public:
  Samples(unsigned seed, int bits) : m_random(seed), m_most((1U << bits) - 1), m_key(Any()) {}

  std::uint16_t Key() const { return m_key; }
  std::uint16_t Any() { return static_cast<std::uint16_t>(m_random() & m_most); }
  /// The samples of one pixel.
  std::vector<std::uint16_t> Pixel(int channels) {
    const unsigned kind = m_random() % 4;
    std::vector<std::uint16_t> samples(static_cast<std::size_t>(channels), m_key);
    if (kind == 0) return samples;
    if (kind == 1) samples.back() ^= 1;
    if (kind > 1) {
      for (std::uint16_t& sample : samples) sample = Any();
    }
    return samples;
  }

 private:
  std::mt19937 m_random;
  unsigned m_most;
  std::uint16_t m_key;
};

/// Appends samples to a row, the first one in the highest bits.
class RowWriter {
 public:
  explicit RowWriter(int bits) : m_bits(bits) {}

  void Add(std::uint16_t sample) {
    for (int bit = m_bits - 1; bit >= 0; --bit) {
      if (m_used % 8 == 0) m_bytes.push_back(0);
      m_bytes.back() = static_cast<png_byte>(m_bytes.back() | (sample >> bit & 1) << (7 - m_used % 8));
      ++m_used;
    }
  }
  std::vector<png_byte> TakeBytes() { return std::move(m_bytes); }

 private:
  int m_bits;
  std::size_t m_used = 0;
  std::vector<png_byte> m_bytes;
};

void Append(png_structp png, png_bytep bytes, std::size_t count) {
  static_cast<std::string*>(png_get_io_ptr(png))->append(reinterpret_cast<const char*>(bytes), count);
}

void WritePalette(png_structp png, png_infop info, const PngForm& form, Samples& samples) {
  const auto any = [&samples] { return static_cast<png_byte>(samples.Any() * 37 + samples.Any()); };
  std::vector<png_color> palette;
  std::vector<png_byte> alphas;
  for (int index = 0; index < 1 << form.bits; ++index) {
    palette.push_back({any(), any(), any()});
    alphas.push_back(index % 3 == 0 ? png_byte{0} : any());
  }
  png_set_PLTE(png, info, palette.data(), static_cast<int>(palette.size()));
  // The colours behind the last alpha are opaque.
  if (form.hasTransparency) png_set_tRNS(png, info, alphas.data(), static_cast<int>(alphas.size() / 2), nullptr);
}

}  // namespace

std::string PngForm::Name() const {
  return "type" + std::to_string(colourType) + "-bits" + std::to_string(bits) +
         (hasTransparency ? "-transparent" : "") + (interlaced ? "-interlaced" : "") + (hasGamma ? "-gamma" : "");
}

std::vector<PngForm> AllPngForms() {
  std::vector<PngForm> forms;
  for (const int colourType : {PNG_COLOR_TYPE_GRAY, PNG_COLOR_TYPE_RGB, PNG_COLOR_TYPE_PALETTE,
                               PNG_COLOR_TYPE_GRAY_ALPHA, PNG_COLOR_TYPE_RGB_ALPHA}) {
    for (const int bits : {1, 2, 4, 8, 16}) {
      if (!IsAllowed(colourType, bits)) continue;
      for (const bool interlaced : {false, true}) {
        const PngForm form{.colourType = colourType, .bits = bits, .interlaced = interlaced};
        forms.push_back(form);
        forms.push_back(form);
        forms.back().hasGamma = true;
        if ((colourType & PNG_COLOR_MASK_ALPHA) != 0) continue;
        forms.push_back(form);
        forms.back().hasTransparency = true;
      }
    }
  }
  return forms;
}

std::string PngBytes(const PngForm& form, int width, int height, unsigned seed) {
  std::string bytes;
  png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
  png_infop info = png_create_info_struct(png);
  png_set_write_fn(png, &bytes, Append, nullptr);
  png_set_IHDR(png, info, static_cast<png_uint_32>(width), static_cast<png_uint_32>(height), form.bits, form.colourType,
               form.interlaced ? PNG_INTERLACE_ADAM7 : PNG_INTERLACE_NONE, PNG_COMPRESSION_TYPE_DEFAULT,
               PNG_FILTER_TYPE_DEFAULT);
  png_set_filter(png, 0, PNG_ALL_FILTERS);
  if (form.hasGamma) png_set_gAMA(png, info, 1.0);

  Samples samples(seed, form.bits);
  if (form.colourType == PNG_COLOR_TYPE_PALETTE) {
    WritePalette(png, info, form, samples);
  } else if (form.hasTransparency) {
    png_color_16 key = {};
    key.red = key.green = key.blue = key.gray = samples.Key();
    png_set_tRNS(png, info, nullptr, 0, &key);
  }

  std::vector<std::vector<png_byte>> rows;
  for (int y = 0; y < height; ++y) {
    RowWriter row(form.bits);
    for (int x = 0; x < width; ++x) {
      for (const std::uint16_t sample : samples.Pixel(Channels(form.colourType))) row.Add(sample);
    }
    rows.push_back(row.TakeBytes());
  }
  std::vector<png_bytep> pointers;
  for (std::vector<png_byte>& row : rows) pointers.push_back(row.data());
  png_set_rows(png, info, pointers.data());
  png_write_png(png, info, PNG_TRANSFORM_IDENTITY, nullptr);
  png_destroy_write_struct(&png, &info);
  return bytes;
}

}  // namespace ondrel::test
