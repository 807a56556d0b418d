// Memory that is taken piece by piece and given back all at once.

#include "xml/arena.h"

#include <algorithm>
#include <cstring>

namespace ondrel::platform {

const char* Arena::Copy(std::string_view text) {
  auto* const copy = static_cast<char*>(Allocate(text.size(), 1));
  std::copy(text.begin(), text.end(), copy);
  return copy;
}

void* Arena::AllocateBlock(std::size_t size) {
  // A piece that would fill much of a block gets one of its own, and the current block goes on being used.
  const bool hasOwnBlock = size > m_nextBlockSize / 4;
  const std::size_t blockSize = hasOwnBlock ? size : m_nextBlockSize;
  OsBlock memory;
  if (!memory.Grow(0, blockSize)) throw std::bad_alloc();
  std::byte* const block = memory.Bytes();
  m_blocks.push_back(std::move(memory));
  if (hasOwnBlock) return block;
  m_next = block + size;
  m_left = blockSize - size;
  m_nextBlockSize = std::min(2 * m_nextBlockSize, kLargestBlockSize);
  return block;
}

}  // namespace ondrel::platform
