// Streams over memory without the locale, the formatting and the copies of string streams: what the libraries that
// stand on std::streambuf are fastest with.
#pragma once

#include <algorithm>
#include <cstdlib>
#include <memory>
#include <new>
#include <streambuf>
#include <string_view>

namespace ondrel::bench {

/// Bytes that are there already.
class ReadBuffer : public std::streambuf {
 public:
  explicit ReadBuffer(std::string_view bytes) {
    char* const start = const_cast<char*>(bytes.data());  // the interface knows no other; nothing is put back
    setg(start, start, start + bytes.size());
  }
};

/// Bytes that become more; the block that holds them doubles, which the system does without a copy.
class WriteBuffer : public std::streambuf {
 public:
  std::string_view Bytes() const { return {pbase(), static_cast<std::size_t>(pptr() - pbase())}; }

 protected:
  int_type overflow(int_type byte) override {
    constexpr std::ptrdiff_t kFirst = 1 << 16;
    const std::ptrdiff_t used = pptr() - pbase();
    const std::ptrdiff_t size = std::max(kFirst, 2 * (epptr() - pbase()));
    void* const block = std::realloc(m_block.get(), static_cast<std::size_t>(size));
    if (block == nullptr) throw std::bad_alloc();
    static_cast<void>(m_block.release());
    m_block.reset(static_cast<char*>(block));
    setp(m_block.get(), m_block.get() + size);
    pbump(static_cast<int>(used));
    return sputc(traits_type::to_char_type(byte));
  }

 private:
  struct Free {
    void operator()(char* block) const { std::free(block); }
  };
  std::unique_ptr<char, Free> m_block;
};

}  // namespace ondrel::bench
