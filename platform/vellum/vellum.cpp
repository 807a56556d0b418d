// Byte vectors in an archive: a 32-bit count and the bytes.
#include <ondrel/platform/vellum.h>

#include <limits>

#include <ondrel/platform/framework/archive_block.h>

namespace {

template <class Byte>
unsigned int LoadVector(CVellum& archive, std::vector<Byte>& bytes) {
  DWORD count = 0;
  archive >> count;
  std::vector<Byte> loaded;
  ondrel::platform::LoadBlock(archive, count, loaded);
  bytes.swap(loaded);
  return count;
}

}  // namespace

DWORD CVellum::VectorCount(ULONGLONG size) {
  if (size > std::numeric_limits<DWORD>::max()) AfxThrowInvalidArgException();
  return static_cast<DWORD>(size);
}

void CVellum::Write(const std::vector<char>& bytes) {
  RequireStoring();
  const DWORD count = VectorCount(bytes.size());
  *this << count;
  Write(bytes.data(), count);
}

void CVellum::Write(const std::vector<unsigned char>& bytes) {
  RequireStoring();
  const DWORD count = VectorCount(bytes.size());
  *this << count;
  Write(bytes.data(), count);
}

unsigned int CVellum::Read(std::vector<char>& bytes) { return LoadVector(*this, bytes); }

unsigned int CVellum::Read(std::vector<unsigned char>& bytes) { return LoadVector(*this, bytes); }
