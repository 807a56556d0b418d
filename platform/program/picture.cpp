// Encoding of PNG pictures, with libpng.
#include <ondrel/platform/picture.h>

#include <csetjmp>
#include <new>
#include <utility>

#include <ondrel/platform/framework/exceptions.h>

#include "icons/png_run.h"

namespace ondrel::platform {
namespace {

/// One run of libpng over a picture.
class PngEncoding : PngRun {
 public:
  explicit PngEncoding(const Picture& picture)
      : m_picture(picture),
        m_png(png_create_write_struct_2(PNG_LIBPNG_VER_STRING, this, Fail, Ignore, AsMemory(), Allocate, Free)) {
    if (m_png != nullptr) m_info = png_create_info_struct(m_png);
  }
  ~PngEncoding() { png_destroy_write_struct(&m_png, &m_info); }

  std::vector<BYTE> Encode() {
    if (m_png == nullptr || m_info == nullptr) AfxThrowMemoryException();
    if (!Write()) {
      if (m_isOutOfMemory) AfxThrowMemoryException();
      AfxThrowInvalidArgException();
    }
    return std::move(m_bytes);
  }

 private:
  bool Write() {
    if (setjmp(png_jmpbuf(m_png)) != 0) return false;  // NOLINT(cert-err52-cpp): how the library ends
    png_set_write_fn(m_png, this, Take, Flush);
    png_set_user_limits(m_png, PNG_UINT_31_MAX, PNG_UINT_31_MAX);  // strips are wide
    png_set_IHDR(m_png, m_info, static_cast<png_uint_32>(m_picture.width), static_cast<png_uint_32>(m_picture.height),
                 8, m_picture.channels == Picture::Channels::rgba ? PNG_COLOR_TYPE_RGB_ALPHA : PNG_COLOR_TYPE_RGB,
                 PNG_INTERLACE_NONE, PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
    png_write_info(m_png, m_info);
    const std::size_t rowBytes = m_picture.RowBytes();
    const std::size_t size = m_picture.bytes.size();
    for (std::size_t row = 0; row < size; row += rowBytes) png_write_row(m_png, m_picture.bytes.data() + row);
    png_write_end(m_png, nullptr);
    return true;
  }

  static void Take(png_structp png, png_bytep bytes, std::size_t count) {
    if (!static_cast<PngEncoding*>(png_get_io_ptr(png))->Append(bytes, count)) png_error(png, "memory is short");
  }
  static void Flush(png_structp) {}

  /// No exception may leave the library's calls, and no jump a handler.
  bool Append(const BYTE* bytes, std::size_t count) {
    try {
      m_bytes.insert(m_bytes.end(), bytes, bytes + count);
      return true;
    } catch (const std::bad_alloc&) {
      m_isOutOfMemory = true;
      return false;
    }
  }

  const Picture& m_picture;
  std::vector<BYTE> m_bytes;
  png_structp m_png;
  png_infop m_info = nullptr;
};

}  // namespace

std::vector<BYTE> EncodePng(const Picture& picture) { return PngEncoding(picture).Encode(); }

}  // namespace ondrel::platform
