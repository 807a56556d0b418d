#include "support/posix/failing_memory_file.h"

#include <sys/mman.h>
#include <unistd.h>

#include <cerrno>
#include <cstdint>
#include <cstring>
#include <system_error>

namespace ondrel::test {
namespace {

int DescriptorOf(const KernelHandle& handle) { return static_cast<int>(reinterpret_cast<std::intptr_t>(handle.Get())); }

void Require(bool succeeded) {
  if (!succeeded) throw std::system_error(errno, std::generic_category());
}

}  // namespace

FailingMemoryFile::FailingMemoryFile(std::string_view bytes) {
  const auto page = static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
  const std::size_t held = (bytes.size() + page - 1) / page * page;
  const int descriptor = memfd_create("bytes", MFD_CLOEXEC);
  Require(descriptor != -1);
  const KernelHandle file(reinterpret_cast<HANDLE>(std::intptr_t{descriptor}));
  Require(ftruncate(descriptor, static_cast<off_t>(held)) == 0);
  m_handle = OpenToRead("/proc/self/mem");
  m_size = held + page;  // the last page is in no file
  m_memory = mmap(nullptr, m_size, PROT_READ | PROT_WRITE, MAP_SHARED, descriptor, 0);
  Require(m_memory != MAP_FAILED);
  // The bytes end where the file does.
  char* const start = static_cast<char*>(m_memory) + (held - bytes.size());
  std::memcpy(start, bytes.data(), bytes.size());
  const auto address = static_cast<off_t>(reinterpret_cast<std::intptr_t>(start));
  if (lseek(DescriptorOf(m_handle), address, SEEK_SET) != address) {
    munmap(m_memory, m_size);
    Require(false);
  }
}

FailingMemoryFile::~FailingMemoryFile() { munmap(m_memory, m_size); }

}  // namespace ondrel::test
