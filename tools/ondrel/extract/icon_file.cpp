// The writing of icon files: a directory, then each image with its header, its colours and its mask.
#include "extract/icon_file.h"

#include <algorithm>
#include <utility>
#include <vector>

#include <ondrel/platform/vellum.h>

namespace ondrel::command {
namespace {

constexpr LONG kLargestSide = 256;  // pixels; the directory has a byte for it
constexpr std::size_t kDirectoryHead = 6;
constexpr std::size_t kDirectoryEntry = 16;
constexpr DWORD kImageHeader = 40;
constexpr LONG kAlphaBits = 32;
constexpr LONG kPlainBits = 24;
constexpr WORD kPlanes = 1;

/// The bytes that `store` leaves.
template <class Store>
std::string StoredBytes(Store store) {
  CMemFile file;
  CVellum archive(&file, CArchive::store);
  store(archive);
  archive.Close();
  return {reinterpret_cast<const char*>(file.GetBytes()), static_cast<std::size_t>(file.GetLength())};
}

bool FitsIconFile(const IconImage& image) {
  const auto fits = [](LONG side) { return side > 0 && side <= kLargestSide; };
  return fits(image.Width()) && fits(image.Height());
}

IconImage TransparentImage(LONG side) {
  CMMCObjectBitmap colour(side, side, kPlanes, kColourBits);
  CMMCObjectBitmap mask(side, side, kPlanes, 1);
  std::fill_n(static_cast<BYTE*>(mask.GetBuffer()), mask.GetLength(), BYTE{0xFF});
  return {std::move(colour), std::move(mask)};
}

/// The depth that brings the same four bytes of each pixel again: a file of 24 bits has no alpha, whose bytes are then
/// 0 on every system, while one of 32 bits may be given another where it has none.
LONG DepthOf(const IconImage& image) { return image.HasAlpha() ? kAlphaBits : kPlainBits; }

std::size_t RowBytes(LONG width, LONG bits) {
  constexpr std::size_t kUnitBits = 32;  // rows are filled up to whole units
  const auto rowBits = static_cast<std::size_t>(width) * static_cast<std::size_t>(bits);
  return (rowBits + kUnitBits - 1) / kUnitBits * (kUnitBits / 8);
}

/// Rows from the bottom up, each filled up with zeros.
void StoreRows(CVellum& archive, const IconImage& image, LONG bits,
               void (*fill)(std::vector<BYTE>&, const IconImage&, LONG)) {
  for (LONG y = image.Height() - 1; y >= 0; --y) {
    std::vector<BYTE> row(RowBytes(image.Width(), bits));
    fill(row, image, y);
    archive.CArchive::Write(row.data(), static_cast<UINT>(row.size()));
  }
}

void FillColours(std::vector<BYTE>& row, const IconImage& image, LONG y) {
  const auto pixelBytes = static_cast<std::size_t>(DepthOf(image) / 8);
  for (LONG x = 0; x < image.Width(); ++x) {
    const IconColour colour = image.ColourAt(x, y);
    std::copy_n(colour.begin(), pixelBytes, row.begin() + static_cast<std::ptrdiff_t>(pixelBytes) * x);
  }
}

void FillMask(std::vector<BYTE>& row, const IconImage& image, LONG y) {
  for (LONG x = 0; x < image.Width(); ++x) {
    if (!image.IsTransparent(x, y)) continue;
    BYTE& eight = row[static_cast<std::size_t>(x / 8)];
    eight = static_cast<BYTE>(eight | 0x80 >> x % 8);
  }
}

std::string StoredImage(const IconImage& image) {
  return StoredBytes([&](CVellum& archive) {
    const LONG bits = DepthOf(image);
    const std::size_t pixels =
        (RowBytes(image.Width(), bits) + RowBytes(image.Width(), 1)) * static_cast<std::size_t>(image.Height());
    archive << kImageHeader << image.Width() << 2 * image.Height();  // colours and mask together
    archive << kPlanes << static_cast<WORD>(bits) << DWORD{0};       // not compressed
    archive << static_cast<DWORD>(pixels);
    archive << LONG{0} << LONG{0} << DWORD{0} << DWORD{0};  // no resolution, no palette
    StoreRows(archive, image, bits, FillColours);
    StoreRows(archive, image, 1, FillMask);
  });
}

}  // namespace

std::string IconFileBytes(const IconImages& images) {
  constexpr LONG kLargeSide = 32;
  constexpr LONG kSmallSide = 16;
  constexpr WORD kIcon = 1;
  const IconImage transparent[] = {TransparentImage(kLargeSide), TransparentImage(kSmallSide)};
  const IconImage* const chosen[] = {FitsIconFile(images.large) ? &images.large : &transparent[0],
                                     FitsIconFile(images.smallIcon) ? &images.smallIcon : &transparent[1]};
  const std::string stored[] = {StoredImage(*chosen[0]), StoredImage(*chosen[1])};
  std::string bytes = StoredBytes([&](CVellum& archive) {
    archive << WORD{0} << kIcon << static_cast<WORD>(std::size(chosen));
    std::size_t offset = kDirectoryHead + std::size(chosen) * kDirectoryEntry;
    for (std::size_t index = 0; index < std::size(chosen); ++index) {
      const IconImage& image = *chosen[index];
      archive << static_cast<BYTE>(image.Width()) << static_cast<BYTE>(image.Height());  // 0 for 256
      archive << WORD{0};                                                                // no palette
      archive << kPlanes << static_cast<WORD>(DepthOf(image));
      archive << static_cast<DWORD>(stored[index].size()) << static_cast<DWORD>(offset);
      offset += stored[index].size();
    }
  });
  for (const std::string& image : stored) bytes += image;
  return bytes;
}

}  // namespace ondrel::command
