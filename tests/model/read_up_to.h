// What one read from a file gives.
#pragma once

#include <string>

#include <ondrel/MMCArchiveFile.h>

namespace ondrel::test {

inline std::string ReadUpTo(CMMCArchiveFile& file, UINT count) {
  std::string bytes(count, '.');
  bytes.resize(file.Read(bytes.data(), count));
  return bytes;
}

}  // namespace ondrel::test
