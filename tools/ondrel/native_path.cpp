// The separators that definitions use, turned into one that every system takes.
#include "native_path.h"

#include <algorithm>

namespace ondrel::command {

std::filesystem::path NativePath(const std::string& path) {
  std::u8string native(path.begin(), path.end());
  std::replace(native.begin(), native.end(), u8'\\', u8'/');
  return native;
}

}  // namespace ondrel::command
