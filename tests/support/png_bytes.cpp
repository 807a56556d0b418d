// Building of PNG images.
#include "support/png_bytes.h"

#include <zlib.h>

#include <algorithm>
#include <stdexcept>

namespace ondrel::test {
namespace {

void AppendBigEndian(std::string& bytes, std::uint32_t value, int size = 4) {
  while (size-- > 0) bytes += static_cast<char>(value >> (8 * size) & 0xFF);
}

std::size_t SamplesOfAPixel(PngColour colour) {
  switch (colour) {
    case PngColour::grey:
    case PngColour::palette:
      return 1;
    case PngColour::greyAlpha:
      return 2;
    case PngColour::trueColour:
      return 3;
    case PngColour::trueColourAlpha:
      return 4;
  }
  throw std::invalid_argument("no colour type");
}

std::uint32_t LargestSample(int depth) { return (1U << depth) - 1; }

/// A sample as one of 8 bits, rounded.
std::uint8_t EightBits(std::uint32_t sample, int depth) {
  const std::uint32_t largest = LargestSample(depth);
  return static_cast<std::uint8_t>((sample * 255 + largest / 2) / largest);
}

/// Every `stepX`th pixel of every `stepY`th row.
void AppendRows(std::string& rows, const PngPicture& picture, int startX, int startY, int stepX, int stepY) {
  if (startX >= picture.width) return;
  for (int y = startY; y < picture.height; y += stepY) {
    rows += '\0';  // no filter
    std::uint32_t byte = 0;
    int filled = 0;
    for (int x = startX; x < picture.width; x += stepX) {
      const PngSamples& samples = picture.samples[static_cast<std::size_t>(y * picture.width + x)];
      for (std::size_t part = 0; part < SamplesOfAPixel(picture.colour); ++part) {
        if (picture.depth >= 8) {
          AppendBigEndian(rows, samples[part], picture.depth / 8);
          continue;
        }
        byte = byte << picture.depth | samples[part];
        filled += picture.depth;
        if (filled == 8) {
          rows += static_cast<char>(byte);
          byte = 0;
          filled = 0;
        }
      }
    }
    if (filled != 0) rows += static_cast<char>(byte << (8 - filled));
  }
}

}  // namespace

PixelBytes PngPicture::Colour(int x, int y) const {
  const PngSamples& pixel = samples[static_cast<std::size_t>(y * width + x)];
  if (colour == PngColour::palette) return palette.at(pixel[0]);
  const std::size_t count = SamplesOfAPixel(colour);
  const bool isGrey = count <= 2;
  const bool hasAlpha = count % 2 == 0;
  const auto channel = [&](std::size_t part) { return EightBits(pixel[part], depth); };
  std::uint8_t alpha = hasAlpha ? channel(count - 1) : 0xFF;
  if (transparent && std::equal(pixel.begin(), pixel.begin() + static_cast<int>(count), transparent->begin()))
    alpha = 0;
  return {channel(isGrey ? 0 : 2), channel(isGrey ? 0 : 1), channel(0), alpha};
}

PngPicture PatternPng(int width, int height, PngColour colour, int depth) {
  PngPicture picture{.width = width, .height = height, .colour = colour, .depth = depth};
  const std::uint32_t largest = LargestSample(depth);
  if (colour == PngColour::palette) {
    for (std::uint32_t index = 0; index <= largest; ++index) {
      const auto alpha = static_cast<std::uint8_t>(index % 3 == 1 ? 0 : index % 3 == 2 ? 255 - index : 255);
      picture.palette.push_back({static_cast<std::uint8_t>(index * 37 + 11), static_cast<std::uint8_t>(index * 91 + 5),
                                 static_cast<std::uint8_t>(index * 53 + 200), alpha});
    }
  }
  for (int y = 0; y < height; ++y) {
    for (int x = 0; x < width; ++x) {
      const auto column = static_cast<std::uint32_t>(x);
      const auto row = static_cast<std::uint32_t>(y);
      const std::uint32_t mixed = (column * 3 + row * 5 + column * row / 7) * 40503;
      PngSamples samples = {};
      for (std::uint32_t part = 0; part < samples.size(); ++part) {
        samples[part] = static_cast<std::uint16_t>((mixed + mixed / 256 + part * 20011) & largest);
      }
      const std::size_t count = SamplesOfAPixel(colour);
      if (count % 2 == 0 && (x + 2 * y) % 5 < 2) {
        samples[count - 1] = static_cast<std::uint16_t>((x + 2 * y) % 5 == 0 ? 0 : largest);
      }
      picture.samples.push_back(samples);
    }
  }
  return picture;
}

PngPicture PngOf(const IconPicture& picture) {
  PngPicture png{.width = picture.width, .height = picture.height};
  for (const std::uint32_t pixel : picture.pixels) {
    png.samples.push_back({static_cast<std::uint16_t>(pixel >> 16 & 0xFF),
                           static_cast<std::uint16_t>(pixel >> 8 & 0xFF), static_cast<std::uint16_t>(pixel & 0xFF),
                           static_cast<std::uint16_t>(pixel >> 24)});
  }
  return png;
}

IconPicture Uncompressed(const PngPicture& picture) {
  IconPicture uncompressed{.width = picture.width, .height = picture.height, .bitsPerPixel = 32};
  for (int y = 0; y < picture.height; ++y) {
    for (int x = 0; x < picture.width; ++x) {
      const PixelBytes colour = picture.Colour(x, y);
      uncompressed.pixels.push_back(std::uint32_t{colour[3]} << 24 | std::uint32_t{colour[2]} << 16 |
                                    std::uint32_t{colour[1]} << 8 | colour[0]);
      uncompressed.transparent.push_back(colour[3] == 0);
    }
  }
  return uncompressed;
}

std::string PngSignature() { return "\x89PNG\r\n\x1A\n"; }

std::string PngChunk(std::string_view name, std::string_view data) {
  const std::string checked = std::string(name) + std::string(data);
  const uLong checksum = crc32(0, reinterpret_cast<const Bytef*>(checked.data()), static_cast<uInt>(checked.size()));
  return PngChunkOf(static_cast<std::uint32_t>(data.size()), name, data, static_cast<std::uint32_t>(checksum));
}

std::string PngChunkOf(std::uint32_t length, std::string_view name, std::string_view data, std::uint32_t checksum) {
  std::string bytes;
  AppendBigEndian(bytes, length);
  bytes += name;
  bytes += data;
  AppendBigEndian(bytes, checksum);
  return bytes;
}

std::string PngHeader(std::uint32_t width, std::uint32_t height, PngColour colour, int depth, bool interlaced) {
  std::string data;
  AppendBigEndian(data, width);
  AppendBigEndian(data, height);
  data += static_cast<char>(depth);
  data += static_cast<char>(colour);
  data += '\0';  // compression and filtering: there is one of each
  data += '\0';
  data += static_cast<char>(interlaced ? 1 : 0);
  return PngChunk("IHDR", data);
}

std::string PngColours(const PngPicture& picture) {
  if (picture.transparent) {
    std::string data;
    const std::size_t count = picture.colour == PngColour::grey ? 1 : 3;
    for (std::size_t part = 0; part < count; ++part) AppendBigEndian(data, (*picture.transparent)[part], 2);
    return PngChunk("tRNS", data);
  }
  if (picture.palette.empty()) return {};
  std::string colours;
  std::string alphas;
  for (const PixelBytes& entry : picture.palette) {
    for (const std::size_t part : {2, 1, 0}) colours += static_cast<char>(entry[part]);
    alphas += static_cast<char>(entry[3]);
  }
  const bool isOpaque = alphas.find_first_not_of('\xFF') == std::string::npos;
  return PngChunk("PLTE", colours) + (isOpaque ? "" : PngChunk("tRNS", alphas));
}

std::string PngRows(const PngPicture& picture) {
  std::string rows;
  if (!picture.interlaced) {
    AppendRows(rows, picture, 0, 0, 1, 1);
    return rows;
  }
  struct Pass {
    int startX, startY, stepX, stepY;
  };
  for (const Pass& pass : {Pass{0, 0, 8, 8}, Pass{4, 0, 8, 8}, Pass{0, 4, 4, 8}, Pass{2, 0, 4, 4}, Pass{0, 2, 2, 4},
                           Pass{1, 0, 2, 2}, Pass{0, 1, 1, 2}}) {
    AppendRows(rows, picture, pass.startX, pass.startY, pass.stepX, pass.stepY);
  }
  return rows;
}

std::string Deflated(std::string_view bytes) {
  uLongf size = compressBound(static_cast<uLong>(bytes.size()));
  std::string compressed(size, '\0');
  if (compress(reinterpret_cast<Bytef*>(compressed.data()), &size, reinterpret_cast<const Bytef*>(bytes.data()),
               static_cast<uLong>(bytes.size())) != Z_OK) {
    throw std::runtime_error("no compression");
  }
  compressed.resize(size);
  return compressed;
}

std::string DeflatedZeros(std::uint32_t mebibytes) {
  const std::string zeros(1024 * 1024, '\0');
  std::string block(zeros.size(), '\0');
  z_stream stream{};
  constexpr int kWithoutFrame = -15;
  if (deflateInit2(&stream, Z_BEST_COMPRESSION, Z_DEFLATED, kWithoutFrame, 9, Z_DEFAULT_STRATEGY) != Z_OK) {
    throw std::runtime_error("no compression");
  }
  stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(zeros.data()));
  stream.avail_in = static_cast<uInt>(zeros.size());
  stream.next_out = reinterpret_cast<Bytef*>(block.data());
  stream.avail_out = static_cast<uInt>(block.size());
  deflate(&stream, Z_FULL_FLUSH);  // ends with a whole byte and refers to nothing in front: can stand many times
  block.resize(block.size() - stream.avail_out);
  deflateEnd(&stream);

  std::string compressed = "\x78\x9C";
  for (std::uint32_t index = 0; index < mebibytes; ++index) compressed += block;
  compressed += std::string("\x03\0", 2);  // the last block, of nothing
  constexpr std::uint32_t kModulus = 65521;
  const std::uint64_t count = std::uint64_t{mebibytes} * zeros.size();
  AppendBigEndian(compressed, static_cast<std::uint32_t>(count % kModulus) << 16 | 1);  // Adler-32 of zeros
  return compressed;
}

std::string PngEnd() { return PngChunk("IEND", ""); }

std::string PngBytes(const PngPicture& picture) {
  return PngSignature() +
         PngHeader(static_cast<std::uint32_t>(picture.width), static_cast<std::uint32_t>(picture.height),
                   picture.colour, picture.depth, picture.interlaced) +
         PngColours(picture) + PngChunk("IDAT", Deflated(PngRows(picture))) + PngEnd();
}

StoredImage StoredPng(const PngPicture& picture) {
  return StoredImage(static_cast<std::uint8_t>(picture.width), static_cast<std::uint8_t>(picture.height), 32,
                     PngBytes(picture));
}

}  // namespace ondrel::test
