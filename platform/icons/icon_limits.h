// How much of what an icon file or a program claims is believed.
#pragma once

#include <ondrel/platform/os/types.h>

namespace ondrel::platform {

/// Pixels of one image. Sixteen times the largest image that a directory can state, 256 x 256: room for the larger ones
/// that some writers store, and no more than 4 MiB for a colour image, whatever a header claims.
inline constexpr LONGLONG kMostIconPixels = 1024LL * 1024;

/// Rows of a PNG image, whose decoder takes as long for a row as for many pixels. Real ones have as many as columns.
inline constexpr LONG kMostPngRows = 64 * 1024;

/// Chunks of a PNG image. Real ones have a few, those of the most pixels some hundred; each takes time.
inline constexpr int kMostPngChunks = 16 * 1024;

/// Entries of an icon file, or of an icon in a program. Real ones have a few dozen, all sizes and depths together.
inline constexpr WORD kMostIconEntries = 1024;

/// Bytes of an icon file, or of the images of an icon in a program, which may be as long as it likes itself. Real ones
/// stay below 1 MiB; this is several images of the most pixels.
inline constexpr ULONGLONG kMostIconFileBytes = 32ULL * 1024 * 1024;

/// Sections of a program: as many as the system's loader takes.
inline constexpr WORD kMostSections = 96;

}  // namespace ondrel::platform
