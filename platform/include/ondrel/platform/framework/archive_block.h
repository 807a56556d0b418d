// Loading a run of units whose count stands in the data, and so is a claim.
#pragma once

#include <algorithm>
#include <cstddef>
#include <limits>

#include <ondrel/platform/framework/archive.h>

namespace ondrel::platform {

/// How far, in bytes, memory may be taken ahead of the first bytes of a block. Later steps double what has arrived.
inline constexpr std::size_t kBlockStep = std::size_t{256} * 1024;

/// Loads `count` units to the end of `units`, a vector or string of a plain type. Raises CArchiveException with cause
/// endOfFile and no file name when the data ends before; what arrived until then is in `units`.
template <class Container>
void LoadBlock(CArchive& archive, ULONGLONG count, Container& units) {
  using Unit = typename Container::value_type;
  constexpr std::size_t kStep = kBlockStep / sizeof(Unit);
  // The parentheses keep a macro "max" of a system header away.
  constexpr std::size_t kLargestRead = (std::numeric_limits<UINT>::max)() / sizeof(Unit);
  while (count > 0) {
    const std::size_t present = units.size();
    const auto step = static_cast<std::size_t>(std::min<ULONGLONG>(count, std::clamp(present, kStep, kLargestRead)));
    units.reserve(present + step);
    units.resize(present + step);
    const auto bytes = static_cast<UINT>(step * sizeof(Unit));
    const UINT read = archive.Read(units.data() + present, bytes);
    if (read < bytes) {
      units.resize(present + read / sizeof(Unit));
      AfxThrowArchiveException(CArchiveException::endOfFile);
    }
    count -= step;
  }
}

}  // namespace ondrel::platform
