// What it may cost to read an icon file, however it is damaged. Counted on this system alone, where the reader is this
// project's and its allocations can be seen.
#pragma once

#include <chrono>
#include <filesystem>
#include <string>

#include "graphics/icon_reading.h"
#include "support/sanitizers.h"

namespace ondrel::test {

/// The processor's time, and memory beyond what the program has.
inline constexpr std::chrono::milliseconds kMostTime(kThreadSanitized ? 1000 : 100);
inline constexpr long kMostBytes = 16L * 1024 * 1024;
/// Of files as large as they may be, and of images of the most pixels, whose every pixel passes a sanitizer.
inline constexpr std::chrono::milliseconds kMostTimeOfLargest(kThreadSanitized ? 5000 : kSlowed ? 500 : 100);
inline constexpr long kMostBytesOfLargest = 64L * 1024 * 1024;

struct MostCosts {
  std::chrono::milliseconds time = kMostTime;
  long bytes = kMostBytes;
};
inline constexpr MostCosts kMostOfLargest = {kMostTimeOfLargest, kMostBytesOfLargest};

/// Takes the icons out of a file. The test fails when that costs too much, or leaves other handles than the two icons.
/// What else the machine does can only make it slower: the quickest of a few times counts.
Extraction ExtractCheaply(const std::filesystem::path& path, const MostCosts& most = {});
/// Of a file with these bytes.
Extraction ExtractCheaplyOf(const std::string& bytes, const MostCosts& most = {});

/// Whether the call gave both icons, or none and the reason ERROR_INVALID_DATA.
testing::AssertionResult EndedWell(const Extraction& extraction);

}  // namespace ondrel::test
