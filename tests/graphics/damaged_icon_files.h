// Good icon files of every form, and what to damage in them.
#pragma once

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "graphics/icon_reading.h"

namespace ondrel::test {

struct GoodIconFile {
  const char* name;
  std::string bytes;
  /// Where the last byte ends that the icons of 32 and 16 pixels are made from. A cut behind it does no harm: it is in
  /// a mask, or in an image that nobody asks for.
  std::size_t needed;
  /// Where the last of the images that they are made from ends, mask and all.
  std::size_t whole;
  /// The places of all headers: the file's, the directory, those of the images with the start of their palettes; of PNG
  /// images the signature, the header chunk, the start of the palette, and every chunk's length, name and checksum.
  std::vector<std::size_t> headers;
};

std::vector<GoodIconFile> GoodIconFiles();

/// Cuts the file at every byte, from the last to the first. The check is told how many bytes are left.
using CutCheck = std::function<void(const std::filesystem::path& path, std::size_t length)>;
void CutEverywhere(const GoodIconFile& file, const CutCheck& check);

/// Sets every byte of the headers to 0, 1, 0x7F, 0x80 and 0xFF, one at a time.
using ExtremeCheck = std::function<void(const std::filesystem::path& path, std::size_t place, unsigned value)>;
void SetHeaderBytesToExtremes(const GoodIconFile& file, const ExtremeCheck& check);

inline std::string NameOfGoodFile(const testing::TestParamInfo<GoodIconFile>& info) { return info.param.name; }
inline void PrintTo(const GoodIconFile& file, std::ostream* out) { *out << file.name; }

}  // namespace ondrel::test
