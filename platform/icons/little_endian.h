// Little-endian numbers inside a run of bytes.
#pragma once

#include <cstddef>
#include <span>

#include <ondrel/platform/os/types.h>

namespace ondrel::platform {

using Bytes = std::span<const BYTE>;

/// Whether `count` bytes at `offset` lie within `bytes`. Sums of the two cannot overflow here.
constexpr bool Holds(Bytes bytes, std::size_t offset, std::size_t count) {
  return offset <= bytes.size() && count <= bytes.size() - offset;
}

// Each requires that the number lies within `bytes`.

inline WORD ReadWord(Bytes bytes, std::size_t offset) {
  return static_cast<WORD>(bytes[offset] | bytes[offset + 1] << 8);
}
inline DWORD ReadDword(Bytes bytes, std::size_t offset) {
  return ReadWord(bytes, offset) | static_cast<DWORD>(ReadWord(bytes, offset + 2)) << 16;
}
inline LONG ReadLong(Bytes bytes, std::size_t offset) { return static_cast<LONG>(ReadDword(bytes, offset)); }

}  // namespace ondrel::platform
