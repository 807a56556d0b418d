// Checksums of PNG images inside other bytes. Hardly any change of an image leaves them right, and an image with a
// wrong one is refused at once, so a fuzzer would never come behind them.
#pragma once

#include <cstddef>
#include <cstdint>

namespace ondrel::fuzz {

/// Writes the right checksum behind every chunk, as far as the chunks' lengths lead.
void CorrectPngChecksums(std::uint8_t* data, std::size_t size);

}  // namespace ondrel::fuzz
