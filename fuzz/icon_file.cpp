// An icon file or a program: bytes that nobody vouches for are read for an icon, first by the reader itself, then
// through the whole path of an icon's construction; both must agree.

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

#include "expect.h"
#include "icons/dib_image.h"
#include "icons/icon_limits.h"
#include "icons/icon_source.h"
#include "icons/png_image.h"
#include "nameless_file.h"
#include "png_checksums.h"
#include "support/archive_bytes.h"

#include <ondrel/MMCObjectIcon.h>
#include <ondrel/platform/icon_scan.h>

extern "C" std::size_t LLVMFuzzerMutate(std::uint8_t* data, std::size_t size, std::size_t largest);

namespace {

using namespace ondrel::fuzz;
using namespace ondrel::platform;

constexpr std::size_t kMostDecoded = 4;  // entries, each of which may take as long as an icon

void CheckImage(const IconImage& image, LONG width, LONG height) {
  Expect(image.width == width && image.height == height && width > 0 && height > 0, "an image has the size it shall");
  Expect(static_cast<LONGLONG>(width) * height <= kMostIconPixels, "no image is larger than the limit");
  const auto columns = static_cast<std::size_t>(width);
  const auto rows = static_cast<std::size_t>(height);
  Expect(image.colour.size() == columns * rows * 4, "a colour image has 32 bits for each pixel");
  Expect(image.mask.size() == BitmapStride(columns, 1) * rows, "a mask has one bit for each pixel, in padded rows");
}

/// Images that are not chosen are decoded, too: what is wrong with them must do no harm.
void CheckEntry(const IconEntry& entry) {
  const bool isPng = IsPngImage(entry.image);
  IconImage image;
  const DWORD status = isPng ? DecodePngImage(entry.image, image) : DecodeDibImage(entry.image, image);
  if (status != ERROR_SUCCESS) {
    Expect(status == ERROR_INVALID_DATA, "an image is decoded or damaged");
    return;
  }
  CheckImage(image, entry.width, entry.height);
  Expect(entry.isCut || IsWholeIconEntry(entry), "an image that can be decoded is whole");
  for (LONG y = 0; isPng && y < std::min(image.height, 16); ++y) {
    for (LONG x = 0; x < std::min(image.width, 16); ++x) {
      Expect(image.IsTransparent(x, y) == (image.Pixel(x, y)[3] == 0), "a PNG image's mask has the pixels of alpha 0");
    }
  }
}

LONGLONG Distance(const IconEntry& entry, LONG size) {
  return std::abs(LONGLONG{entry.width} - size) + std::abs(LONGLONG{entry.height} - size);
}

void CheckEntries(const IconSource& source) {
  Expect(!source.entries.empty() && source.entries.size() <= kMostIconEntries, "an icon has images, within the limit");
  for (const IconEntry& entry : source.entries) {
    Expect(entry.width > 0 && entry.height > 0, "an entry has a size");
    Expect(entry.image.empty() ||
               (entry.image.data() >= source.bytes.data() && entry.image.size() <= source.bytes.size() &&
                entry.image.data() - source.bytes.data() <=
                    static_cast<std::ptrdiff_t>(source.bytes.size() - entry.image.size())),
           "an entry's image lies within the bytes");
  }
  for (const LONG size : {kLargeIconSize, kSmallIconSize}) {
    const IconEntry& chosen = ChooseIconEntry(source.entries, size);
    Expect(std::all_of(source.entries.begin(), source.entries.end(),
                       [&](const IconEntry& entry) { return Distance(chosen, size) <= Distance(entry, size); }),
           "no entry is nearer than the chosen one");
  }
  const std::size_t decoded = std::min(source.entries.size(), kMostDecoded);
  for (std::size_t index = 0; index < decoded; ++index) CheckEntry(source.entries[index]);
}

void CheckScan(const CString& path, const IconSource& source, DWORD status) {
  IconScan scan;
  Expect(ScanIcon(path, scan) == HRESULT_FROM_WIN32(status), "the scan of an icon has the status of its reading");
  if (status != ERROR_SUCCESS) return;
  Expect(scan.offers.size() == source.entries.size(), "the scan tells of every entry");
  Expect(&ChooseIconEntry(source.entries, kLargeIconSize) == &source.entries[scan.large] &&
             &ChooseIconEntry(source.entries, kSmallIconSize) == &source.entries[scan.smallIcon],
         "the scan tells the entries that are chosen");
}

std::string Stored(const CMMCObjectIcon& icon) {
  return ondrel::test::Stored([&icon](CVellum& archive) { icon.Serialize(archive); });
}

void CheckColours(const CMMCObjectIcon& icon, bool large, const IconImage& image) {
  const tagBITMAP& bitmap = icon.GetColourBitmap(large);
  Expect(bitmap.bmType == 0 && bitmap.bmWidth == image.width && bitmap.bmHeight == image.height &&
             bitmap.bmWidthBytes == image.width * 4 && bitmap.bmPlanes == 1 && bitmap.bmBitsPixel == 32,
         "an icon's colour image has the form of all of them");
  Expect(std::memcmp(bitmap.bmBits, image.colour.data(), image.colour.size()) == 0,
         "an icon has the colours that the reader decodes");
  constexpr DWORD kNoColour = 0xFF000000;  // of no pixel
  for (LONG y = 0; y < image.height; ++y) {
    for (LONG x = 0; x < image.width; ++x) {
      Expect((icon.GetPixel(large, x, y, kNoColour) == kNoColour) == image.IsTransparent(x, y),
             "an icon is transparent where the reader says so");
    }
  }
}

void CheckConstruction(const CString& path, DWORD status, const IconImage& large, const IconImage& smallIcon) {
  CMMCObjectIcon icon;
  Expect(icon.Construct(path) == HRESULT_FROM_WIN32(status), "an icon's status is that of the reader");
  const bool isThere = status == ERROR_SUCCESS;
  Expect((icon.GetIcon(kLargeIconSize, kLargeIconSize) != nullptr) == isThere, "an icon that was taken has handles");
  if (!isThere) return;
  CheckColours(icon, true, large);
  CheckColours(icon, false, smallIcon);
  const std::string stored = Stored(icon);
  ondrel::test::LoadingArchive archive(stored);
  CMMCObjectIcon loaded;
  loaded.Deserialize(*archive);
  Expect(archive.Unused() == 0 && Stored(loaded) == stored, "an icon survives its binary form");
}

}  // namespace

extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size, std::size_t largest,
                                               unsigned seed) {
  size = LLVMFuzzerMutate(data, size, largest);
  if (seed % 4 != 0) CorrectPngChecksums(data, size);
  return size;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static NamelessFile file;
  file.Replace({reinterpret_cast<const char*>(data), size});
  IconSource source;
  const IconStatus read = ReadIconSource(file.Path(), source);
  Expect(read.file == ERROR_SUCCESS, "a file that is there is read");
  DWORD status = read.icon;
  Expect(status == ERROR_SUCCESS || status == ERROR_RESOURCE_DATA_NOT_FOUND || status == ERROR_INVALID_DATA,
         "a file has an icon, or none, or a damaged one");
  CheckScan(file.Path(), source, status);
  IconImage large;
  IconImage smallIcon;
  if (status == ERROR_SUCCESS) {
    CheckEntries(source);
    status = DecodeIcon(source.entries, &large, &smallIcon);
    if (status == ERROR_SUCCESS) {
      CheckImage(large, kLargeIconSize, kLargeIconSize);
      CheckImage(smallIcon, kSmallIconSize, kSmallIconSize);
    } else {
      Expect(status == ERROR_INVALID_DATA, "an icon is decoded or damaged");
    }
  }
  CheckConstruction(file.Path(), status, large, smallIcon);
  return 0;
}
