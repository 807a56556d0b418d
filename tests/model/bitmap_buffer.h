// The pixel bytes of a bitmap.
#pragma once

#include <string>

#include <ondrel/MMCObjectBitmap.h>

namespace ondrel::test {

inline std::string BufferOf(CMMCObjectBitmap& bitmap) {
  return {static_cast<const char*>(bitmap.GetBuffer()), bitmap.GetBuffer() == nullptr ? 0 : bitmap.GetLength()};
}

}  // namespace ondrel::test
