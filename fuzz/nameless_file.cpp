// Such a file, which the system offers under the number that it is open by.
#include "nameless_file.h"

#include <sys/mman.h>
#include <unistd.h>

#include <string>

#include "expect.h"

namespace ondrel::fuzz {

NamelessFile::NamelessFile() : m_descriptor(memfd_create("input", MFD_CLOEXEC)) {
  Expect(m_descriptor != -1, "the system makes a file in memory");
  m_path = CString(("/proc/self/fd/" + std::to_string(m_descriptor)).c_str());
}

NamelessFile::~NamelessFile() { close(m_descriptor); }

// NOLINTNEXTLINE(readability-make-member-function-const): the file is a part of the object
void NamelessFile::Replace(std::string_view bytes) {
  const auto length = static_cast<ssize_t>(bytes.size());
  Expect(pwrite(m_descriptor, bytes.data(), bytes.size(), 0) == length && ftruncate(m_descriptor, length) == 0,
         "a file in memory takes bytes");
}

}  // namespace ondrel::fuzz
