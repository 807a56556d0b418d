// Little-endian numbers in bytes that tests build.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace ondrel::test {

inline void AppendWord(std::string& bytes, std::uint32_t value) {
  bytes += static_cast<char>(value & 0xFF);
  bytes += static_cast<char>(value >> 8 & 0xFF);
}

inline void AppendDword(std::string& bytes, std::uint32_t value) {
  AppendWord(bytes, value & 0xFFFF);
  AppendWord(bytes, value >> 16);
}

// Each puts a number in place of the bytes that stand there.

inline void PutWord(std::string& bytes, std::size_t offset, std::uint32_t value) {
  bytes.at(offset) = static_cast<char>(value & 0xFF);
  bytes.at(offset + 1) = static_cast<char>(value >> 8 & 0xFF);
}

inline void PutDword(std::string& bytes, std::size_t offset, std::uint32_t value) {
  PutWord(bytes, offset, value & 0xFFFF);
  PutWord(bytes, offset + 2, value >> 16);
}

}  // namespace ondrel::test
