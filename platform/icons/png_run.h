// What every run of libpng has: memory that tells when it is short, and a way out of an error.
#pragma once

#include <png.h>

#include <new>

namespace ondrel::platform {

/// The library leaves its calls by a jump, so nothing with a destructor may live in the function that makes them. A run
/// is a class derived from this one, which keeps what it needs as members and hands these functions to the library,
/// itself as a PngRun* for the memory's.
class PngRun {
 public:
  PngRun(const PngRun&) = delete;
  PngRun& operator=(const PngRun&) = delete;

 protected:
  PngRun() = default;
  ~PngRun() = default;

  [[noreturn]] static void Fail(png_structp png, png_const_charp) { png_longjmp(png, 1); }
  static void Ignore(png_structp, png_const_charp) {}

  static void* Allocate(png_structp png, png_alloc_size_t count) {
    void* const memory = ::operator new(count, std::nothrow);
    if (memory == nullptr) static_cast<PngRun*>(png_get_mem_ptr(png))->m_isOutOfMemory = true;
    return memory;
  }
  static void Free(png_structp, void* memory) { ::operator delete(memory); }

  PngRun* AsMemory() { return this; }

  bool m_isOutOfMemory = false;  ///< Why the library failed.
};

}  // namespace ondrel::platform
