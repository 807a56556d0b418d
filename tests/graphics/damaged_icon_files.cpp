// The good files and the damage.
#include "graphics/damaged_icon_files.h"

#include <algorithm>
#include <fstream>
#include <stdexcept>

#include "support/png_bytes.h"

namespace ondrel::test {
namespace {

constexpr std::size_t kImageHeaderBytes = 40;
constexpr std::size_t kPaletteStart = 8;

struct Part {
  StoredImage image;
  std::size_t needed;                ///< Of its bytes; 0 when nobody asks for it.
  std::vector<std::size_t> headers;  ///< Places in it.
};

void AddRange(std::vector<std::size_t>& places, std::size_t start, std::size_t count) {
  for (std::size_t place = start; place < start + count; ++place) places.push_back(place);
}

Part Uncompressed(const IconPicture& picture, bool isAskedFor) {
  Part part{picture, isAskedFor ? BytesBeforeMask(picture) : 0, {}};
  AddRange(part.headers, 0, kImageHeaderBytes + (picture.palette.empty() ? 0 : kPaletteStart));
  return part;
}

Part Png(const PngPicture& picture) {
  Part part{StoredPng(picture), PngBytes(picture).size(), {}};
  constexpr std::size_t kSignatureBytes = 8;
  constexpr std::size_t kChunkHeadBytes = 8;
  constexpr std::size_t kChecksumBytes = 4;
  AddRange(part.headers, 0, kSignatureBytes);
  const std::string& bytes = part.image.bytes;
  for (std::size_t place = kSignatureBytes; place < bytes.size();) {
    std::size_t length = 0;
    for (std::size_t byte = 0; byte < 4; ++byte) length = length << 8 | static_cast<unsigned char>(bytes[place + byte]);
    const std::string name = bytes.substr(place + 4, 4);
    AddRange(part.headers, place, kChunkHeadBytes);
    if (name == "IHDR") AddRange(part.headers, place + kChunkHeadBytes, length);
    if (name == "PLTE" || name == "tRNS")
      AddRange(part.headers, place + kChunkHeadBytes, std::min(length, kPaletteStart));
    AddRange(part.headers, place + kChunkHeadBytes + length, kChecksumBytes);
    place += kChunkHeadBytes + length + kChecksumBytes;
  }
  return part;
}

GoodIconFile Assemble(const char* name, const std::vector<Part>& parts) {
  GoodIconFile file{.name = name, .bytes = {}, .needed = 0, .whole = 0, .headers = {}};
  AddRange(file.headers, 0, kIconFileHeaderBytes + parts.size() * kIconFileEntryBytes);
  std::vector<StoredImage> images;
  std::size_t start = kIconFileHeaderBytes + parts.size() * kIconFileEntryBytes;
  for (const Part& part : parts) {
    images.push_back(part.image);
    if (part.needed != 0) {
      file.needed = start + part.needed;
      file.whole = start + part.image.bytes.size();
    }
    for (const std::size_t place : part.headers) file.headers.push_back(start + place);
    start += part.image.bytes.size();
  }
  file.bytes = IconFileBytes(images);
  return file;
}

// In place: to write a whole file again and again would make the test wait for the disk.
void ReplaceByte(const std::filesystem::path& path, std::size_t offset, char byte) {
  std::fstream file(path, std::ios::in | std::ios::out | std::ios::binary);
  file.seekp(static_cast<std::streamoff>(offset)).put(byte);
  if (!file.flush().good()) throw std::runtime_error("cannot change a byte of the file");
}

}  // namespace

std::vector<GoodIconFile> GoodIconFiles() {
  PngPicture palette = PatternPng(16, 16, PngColour::palette, 4);
  PngPicture interlaced = PatternPng(32, 32, PngColour::trueColour, 8);
  interlaced.interlaced = true;
  interlaced.transparent = interlaced.samples[33];
  IconPicture oldHeader = PatternPicture(16, 16, 4);
  oldHeader.oldHeader = true;
  return {
      Assemble("Uncompressed",
               {Uncompressed(PatternPicture(24, 24, 1), false), Uncompressed(PatternPicture(32, 32, 32), true),
                Uncompressed(PatternPicture(20, 20, 24), false), Uncompressed(PatternPicture(16, 16, 8), true),
                Uncompressed(PatternPicture(48, 48, 4), false)}),
      Assemble("UncompressedOf16BitsAndWithTheOldHeader",
               {Uncompressed(PatternPicture(32, 32, 16), true), Uncompressed(oldHeader, true)}),
      Assemble("PngPlainAndWithPalette", {Png(PatternPng(32, 32, PngColour::trueColourAlpha, 8)), Png(palette),
                                          Uncompressed(PatternPicture(48, 48, 8), false)}),
      Assemble("PngInterlacedBesideUncompressed", {Uncompressed(PatternPicture(16, 16, 24), true), Png(interlaced)}),
  };
}

void CutEverywhere(const GoodIconFile& file, const CutCheck& check) {
  const TemporaryFolder folder;
  const std::filesystem::path path = folder.Write("cut.ico", file.bytes);
  for (std::size_t length = file.bytes.size(); length-- > 0;) {
    std::filesystem::resize_file(path, length);
    check(path, length);
  }
}

void SetHeaderBytesToExtremes(const GoodIconFile& file, const ExtremeCheck& check) {
  const TemporaryFolder folder;
  const std::filesystem::path path = folder.Write("damaged.ico", file.bytes);
  for (const std::size_t place : file.headers) {
    for (const unsigned value : {0x00U, 0x01U, 0x7FU, 0x80U, 0xFFU}) {
      ReplaceByte(path, place, static_cast<char>(value));
      check(path, place, value);
    }
    ReplaceByte(path, place, file.bytes[place]);
  }
}

}  // namespace ondrel::test
