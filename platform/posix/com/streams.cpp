// Blocks of memory and the streams over them.

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <new>

#include <ondrel/platform/os_block.h>

#include "com/com_object.h"

namespace ondrel::platform {

/// A block that can grow. How many bytes it has is a matter of its own, so that two streams over it agree.
struct GlobalBlock {
  std::byte* Bytes() const { return memory.Bytes(); }

  OsBlock memory;
  std::size_t size = 0;  ///< In use.
  UINT locks = 0;
};

namespace {

constexpr IID kMemoryStreamId{0x1C2A5E44, 0x8D0B, 0x4F6E, {0xA1, 0x57, 0x3B, 0x90, 0x6C, 0x21, 0xD8, 0x0F}};

// Sizes of blocks are 32-bit numbers for those who read them, so no block is made that such a number cannot tell.
constexpr ULONGLONG kLargestBlock = std::numeric_limits<DWORD>::max();
constexpr std::size_t kFirstCapacity = 256;

// Gives the block `size` bytes. Those from the old size up to `zeroEnd` become zero, the others are the caller's to
// fill.
HRESULT Resize(GlobalBlock& block, ULONGLONG size, ULONGLONG zeroEnd) {
  if (size > kLargestBlock) return E_OUTOFMEMORY;
  const auto newSize = static_cast<std::size_t>(size);
  if (const std::size_t capacity = block.memory.Size(); newSize > capacity) {
    // Doubling makes a sequence of small writes linear.
    const std::size_t grown = std::max({newSize, 2 * capacity, kFirstCapacity});
    if (!block.memory.Grow(block.size, grown)) return E_OUTOFMEMORY;
  }
  if (zeroEnd > block.size) std::memset(block.Bytes() + block.size, 0, static_cast<std::size_t>(zeroEnd) - block.size);
  block.size = newSize;
  return S_OK;
}

/// A stream whose bytes are a block. Running out of memory is E_OUTOFMEMORY: it is the memory that is full, no medium.
class MemoryStream final : public IStream {
 public:
  MemoryStream(HGLOBAL block, bool ownsBlock) : m_block(block), m_ownsBlock(ownsBlock) {}

  HGLOBAL Block() const { return m_block; }

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override {
    if (object != nullptr && id == kMemoryStreamId) {
      *object = this;
      AddRef();
      return S_OK;
    }
    return FindInterface<IStream, ISequentialStream>(*this, id, object);
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return m_references.Increment(); }
  ULONG STDMETHODCALLTYPE Release() override {
    const ULONG count = m_references.Decrement();
    if (count == 0) delete this;
    return count;
  }

  HRESULT STDMETHODCALLTYPE Read(void* buffer, ULONG count, ULONG* read) override {
    if (read != nullptr) *read = 0;
    if (buffer == nullptr && count > 0) return STG_E_INVALIDPOINTER;
    const ULONGLONG left = m_position < m_block->size ? m_block->size - m_position : 0;
    const auto taken = static_cast<ULONG>(std::min<ULONGLONG>(count, left));
    if (taken > 0) std::memcpy(buffer, m_block->Bytes() + m_position, taken);
    m_position += taken;
    if (read != nullptr) *read = taken;
    return S_OK;
  }

  HRESULT STDMETHODCALLTYPE Write(const void* buffer, ULONG count, ULONG* written) override {
    if (written != nullptr) *written = 0;
    if (buffer == nullptr && count > 0) return STG_E_INVALIDPOINTER;
    if (count == 0) return S_OK;
    if (m_position > kLargestBlock) return E_OUTOFMEMORY;
    const ULONGLONG end = m_position + count;
    if (end > m_block->size) {
      if (const HRESULT status = Resize(*m_block, end, m_position); FAILED(status)) return status;
    }
    std::memcpy(m_block->Bytes() + m_position, buffer, count);
    m_position = end;
    if (written != nullptr) *written = count;
    return S_OK;
  }

  HRESULT STDMETHODCALLTYPE Seek(LARGE_INTEGER move, DWORD origin, ULARGE_INTEGER* position) override {
    constexpr auto kFurthest = static_cast<ULONGLONG>(std::numeric_limits<LONGLONG>::max());
    ULONGLONG from = 0;
    switch (origin) {
      case STREAM_SEEK_SET:
        break;
      case STREAM_SEEK_CUR:
        from = m_position;
        break;
      case STREAM_SEEK_END:
        from = m_block->size;
        break;
      default:
        return STG_E_INVALIDFUNCTION;
    }
    // Unsigned arithmetic wraps, so a backward move is an addition too; what falls before the start is beyond
    // kFurthest.
    const ULONGLONG target = from + static_cast<ULONGLONG>(move.QuadPart);
    if (target > kFurthest) return STG_E_INVALIDFUNCTION;
    m_position = target;
    if (position != nullptr) position->QuadPart = target;
    return S_OK;
  }

  HRESULT STDMETHODCALLTYPE SetSize(ULARGE_INTEGER size) override {
    return Resize(*m_block, size.QuadPart, size.QuadPart);
  }

 private:
  ~MemoryStream() {
    if (m_ownsBlock) delete m_block;
  }

  ReferenceCount m_references;
  HGLOBAL m_block;
  bool m_ownsBlock;
  ULONGLONG m_position = 0;
};

}  // namespace
}  // namespace ondrel::platform

using ondrel::platform::GlobalBlock;
using ondrel::platform::MemoryStream;

HRESULT CreateStreamOnHGlobal(HGLOBAL block, BOOL deleteOnRelease, IStream** stream) {
  if (stream == nullptr) return E_INVALIDARG;
  *stream = nullptr;
  HGLOBAL const used = block != nullptr ? block : new (std::nothrow) GlobalBlock;
  if (used == nullptr) return E_OUTOFMEMORY;
  *stream = new (std::nothrow) MemoryStream(used, deleteOnRelease != FALSE);
  if (*stream != nullptr) return S_OK;
  if (block == nullptr) delete used;
  return E_OUTOFMEMORY;
}

HRESULT GetHGlobalFromStream(IStream* stream, HGLOBAL* block) {
  if (stream == nullptr || block == nullptr) return E_INVALIDARG;
  *block = nullptr;
  MemoryStream* memory = nullptr;
  if (FAILED(stream->QueryInterface(ondrel::platform::kMemoryStreamId, reinterpret_cast<void**>(&memory)))) {
    return E_INVALIDARG;  // a stream of someone else's
  }
  *block = memory->Block();
  memory->Release();
  return S_OK;
}

void* GlobalLock(HGLOBAL block) {
  if (block == nullptr) {
    SetLastError(ERROR_INVALID_HANDLE);
    return nullptr;
  }
  // An empty block has an address too: null means failure.
  static std::byte emptyBlock;
  ++block->locks;
  return block->Bytes() != nullptr ? block->Bytes() : &emptyBlock;
}

BOOL GlobalUnlock(HGLOBAL block) {
  if (block == nullptr || block->locks == 0) {
    SetLastError(block == nullptr ? ERROR_INVALID_HANDLE : ERROR_NOT_LOCKED);
    return FALSE;
  }
  if (--block->locks > 0) return TRUE;
  SetLastError(ERROR_SUCCESS);  // FALSE with no error: the block is not locked any more
  return FALSE;
}

HGLOBAL GlobalFree(HGLOBAL block) {
  delete block;
  return nullptr;
}
