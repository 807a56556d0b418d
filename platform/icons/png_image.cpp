// Recognition and decoding of PNG images, with libpng.
#include "icons/png_image.h"

#include <algorithm>
#include <csetjmp>
#include <cstring>
#include <limits>
#include <new>
#include <utility>

#include "icons/icon_limits.h"
#include "icons/png_run.h"

namespace ondrel::platform {
namespace {

constexpr BYTE kPngSignature[] = {0x89, 'P', 'N', 'G', '\r', '\n', 0x1A, '\n'};

// The first chunk is the header; before its data stand the chunk's length and name.
constexpr std::size_t kPngWidthOffset = sizeof(kPngSignature) + 8;
constexpr std::size_t kPngHeightOffset = kPngWidthOffset + 4;

DWORD ReadBigEndianDword(Bytes bytes, std::size_t offset) {
  return static_cast<DWORD>(bytes[offset]) << 24 | static_cast<DWORD>(bytes[offset + 1]) << 16 |
         static_cast<DWORD>(bytes[offset + 2]) << 8 | bytes[offset + 3];
}

bool IsPossibleSize(DWORD size) { return size != 0 && size <= std::numeric_limits<LONG>::max(); }

constexpr BYTE kOpaque = 0xFF;

// Compressed bytes that may follow those of the last row: the end of their stream, and what a careless writer leaves
// behind it. They are unfolded too, each into a thousand at worst.
constexpr std::size_t kMostBytesBehindRows = std::size_t{8} * 1024;
constexpr png_uint_32 kPixelChunk = 0x49444154;         // IDAT
constexpr png_uint_32 kTransparencyChunk = 0x74524E53;  // tRNS
constexpr int kInterlacePasses = 7;

/// One run of libpng over an image.
class PngDecoding : PngRun {
 public:
  explicit PngDecoding(Bytes image)
      : m_left(image),
        m_png(png_create_read_struct_2(PNG_LIBPNG_VER_STRING, this, Fail, Warn, AsMemory(), Allocate, Free)) {
    if (m_png != nullptr) m_info = png_create_info_struct(m_png);
  }
  ~PngDecoding() { png_destroy_read_struct(&m_png, &m_info, nullptr); }

  /// The size is the one that the image states.
  DWORD Decode(LONG width, LONG height, IconImage& decoded) {
    if (m_png == nullptr || m_info == nullptr) throw std::bad_alloc();
    m_target = IconImage(width, height);
    if (!Read()) {
      if (m_isOutOfMemory) throw std::bad_alloc();
      return ERROR_INVALID_DATA;
    }
    for (LONG y = 0; y < height; ++y) {
      const BYTE* const row = m_target.Pixel(0, y);
      for (LONG x = 0; x < width; ++x) {
        if (row[static_cast<std::size_t>(x) * 4 + 3] == 0) m_target.SetTransparent(x, y);
      }
    }
    decoded = std::move(m_target);
    return ERROR_SUCCESS;
  }

 private:
  bool Read() {
    if (setjmp(png_jmpbuf(m_png)) != 0) return false;  // NOLINT(cert-err52-cpp): how the library ends
    png_set_read_fn(m_png, this, Supply);
    // The library's own limit on a side is below that on all pixels.
    png_set_user_limits(m_png, kMostIconPixels, kMostIconPixels);
    // No chunk but the palette, the transparent colour and the pixels counts; the others could be large.
    png_set_keep_unknown_chunks(m_png, PNG_HANDLE_CHUNK_NEVER, nullptr, -1);
    png_read_info(m_png, m_info);
    png_set_expand(m_png);
    png_set_scale_16(m_png);
    png_set_gray_to_rgb(m_png);
    png_set_add_alpha(m_png, kOpaque, PNG_FILLER_AFTER);
    png_set_bgr(m_png);
    const int passes = png_set_interlace_handling(m_png);
    png_read_update_info(m_png, m_info);
    if (png_get_rowbytes(m_png, m_info) != static_cast<std::size_t>(m_target.width) * 4) return false;
    for (int pass = 0; pass < passes; ++pass) {
      for (LONG y = 0; y < m_target.height; ++y) png_read_row(m_png, m_target.Pixel(0, y), nullptr);
    }
    png_read_end(m_png, nullptr);  // the checksums of the pixels are known only here
    return true;
  }

  /// Whether all rows are there. The library goes on unfolding pixels until their stream ends.
  bool IsBehindRows() const {
    return png_get_current_row_number(m_png) >= static_cast<png_uint_32>(m_target.height) ||
           png_get_current_pass_number(m_png) >= kInterlacePasses;
  }

  // While rows are missing, a wrong checksum of the unfolded pixels is an error; behind the last row the library only
  // warns of it, as it does of pixels too many, and zlib's words are what tells the two apart.
  static void Warn(png_structp png, png_const_charp warning) {
    if (std::strstr(warning, "incorrect data check") != nullptr) png_error(png, warning);
  }

  static void Supply(png_structp png, png_bytep bytes, std::size_t count) {
    PngDecoding& run = *static_cast<PngDecoding*>(png_get_io_ptr(png));
    const bool isChunkStart = (png_get_io_state(png) & PNG_IO_MASK_LOC) == PNG_IO_CHUNK_HDR;
    if (isChunkStart && ++run.m_chunks > kMostPngChunks) png_error(png, "too many chunks");
    if (png_get_io_chunk_type(png) == kPixelChunk && run.IsBehindRows()) {
      run.m_bytesBehindRows += count;
      if (run.m_bytesBehindRows > kMostBytesBehindRows) png_error(png, "the pixels do not end");
    }
    // The library would step over a wrong checksum there, and with it over the transparency.
    const bool countsChecksum = png_get_io_chunk_type(png) == kTransparencyChunk;
    png_set_crc_action(png, PNG_CRC_NO_CHANGE, countsChecksum ? PNG_CRC_ERROR_QUIT : PNG_CRC_DEFAULT);
    Bytes& left = run.m_left;
    if (count > left.size()) png_error(png, "the image ends early");
    std::memcpy(bytes, left.data(), count);
    left = left.subspan(count);
  }

  Bytes m_left;
  IconImage m_target;
  std::size_t m_chunks = 0;
  std::size_t m_bytesBehindRows = 0;
  png_structp m_png;
  png_infop m_info = nullptr;
};

}  // namespace

bool IsPngImage(Bytes image) {
  return Holds(image, 0, sizeof(kPngSignature)) &&
         std::equal(std::begin(kPngSignature), std::end(kPngSignature), image.begin());
}

bool ReadPngSize(Bytes image, LONG& width, LONG& height) {
  if (!Holds(image, kPngHeightOffset, sizeof(DWORD))) return false;
  const DWORD statedWidth = ReadBigEndianDword(image, kPngWidthOffset);
  const DWORD statedHeight = ReadBigEndianDword(image, kPngHeightOffset);
  if (!IsPossibleSize(statedWidth) || !IsPossibleSize(statedHeight)) return false;
  width = static_cast<LONG>(statedWidth);
  height = static_cast<LONG>(statedHeight);
  return true;
}

bool IsPossiblePngImage(Bytes image) {
  LONG width = 0;
  LONG height = 0;
  return IsPngImage(image) && ReadPngSize(image, width, height) &&
         static_cast<LONGLONG>(width) * height <= kMostIconPixels && height <= kMostPngRows;
}

DWORD DecodePngImage(Bytes image, IconImage& decoded) {
  LONG width = 0;
  LONG height = 0;
  if (!IsPossiblePngImage(image) || !ReadPngSize(image, width, height)) return ERROR_INVALID_DATA;
  return PngDecoding(image).Decode(width, height, decoded);
}

}  // namespace ondrel::platform
