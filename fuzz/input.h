// The bytes of an input, taken as values.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>
#include <type_traits>

namespace ondrel::fuzz {

/// Values beyond the end of the input are 0, so that every input is a whole one.
class Input {
 public:
  Input(const std::uint8_t* data, std::size_t size) : m_left(reinterpret_cast<const char*>(data), size) {}

  bool IsEmpty() const { return m_left.empty(); }
  std::string_view Left() const { return m_left; }

  /// What a file format's fuzzer needs beside the file comes from the last byte: seeds are then files as they are.
  std::uint8_t TakeLast() {
    if (m_left.empty()) return 0;
    const auto last = static_cast<std::uint8_t>(m_left.back());
    m_left.remove_suffix(1);
    return last;
  }

  template <class Number>
  Number Take() {
    static_assert(std::is_integral_v<Number>);
    Number number = 0;
    const std::string_view bytes = TakeBytes(sizeof number);
    if (!bytes.empty()) std::memcpy(&number, bytes.data(), bytes.size());
    return number;
  }

  /// Up to `count` bytes.
  std::string_view TakeBytes(std::size_t count) {
    const std::string_view bytes = m_left.substr(0, count);
    m_left.remove_prefix(bytes.size());
    return bytes;
  }

 private:
  std::string_view m_left;
};

/// One of the buffer sizes of an archive, in bytes: too small for a value, just large enough, odd, and ordinary ones.
inline int ChooseBufferSize(std::uint8_t choice) {
  constexpr int kSizes[] = {4096, 1, 8, 9, 13, 64, 131, 1024};
  return kSizes[choice % std::size(kSizes)];
}

}  // namespace ondrel::fuzz
