// A walk over the chunks of each image.
#include "png_checksums.h"

#include <zlib.h>

#include <algorithm>
#include <iterator>

namespace ondrel::fuzz {
namespace {

constexpr std::uint8_t kSignature[] = {0x89, 'P', 'N', 'G', '\r', '\n', 0x1A, '\n'};
constexpr std::size_t kNumberBytes = 4;
constexpr std::size_t kNameBytes = 4;

std::size_t ReadBigEndian(const std::uint8_t* bytes) {
  std::size_t number = 0;
  for (std::size_t index = 0; index < kNumberBytes; ++index) number = number << 8 | bytes[index];
  return number;
}

void WriteBigEndian(std::uint8_t* bytes, std::size_t number) {
  for (std::size_t index = kNumberBytes; index-- > 0; number >>= 8) bytes[index] = static_cast<std::uint8_t>(number);
}

/// The address behind the last whole chunk.
std::uint8_t* CorrectChunks(std::uint8_t* chunk, const std::uint8_t* end) {
  while (static_cast<std::size_t>(end - chunk) >= kNumberBytes + kNameBytes + kNumberBytes) {
    const std::size_t length = ReadBigEndian(chunk);
    std::uint8_t* const name = chunk + kNumberBytes;
    if (static_cast<std::size_t>(end - name) - kNameBytes - kNumberBytes < length) break;
    const auto checked = static_cast<uInt>(kNameBytes + length);
    WriteBigEndian(name + checked, crc32(0, name, checked));
    chunk = name + checked + kNumberBytes;
  }
  return chunk;
}

}  // namespace

void CorrectPngChecksums(std::uint8_t* data, std::size_t size) {
  std::uint8_t* const end = data + size;
  while ((data = std::search(data, end, std::begin(kSignature), std::end(kSignature))) != end) {
    data = CorrectChunks(data + std::size(kSignature), end);
  }
}

}  // namespace ondrel::fuzz
