// Bytes of which a message shall not show thousands.
#pragma once

#include <functional>
#include <string>
#include <string_view>

namespace ondrel::test {

inline std::string Digest(std::string_view bytes) {
  return std::to_string(bytes.size()) + " bytes of digest " + std::to_string(std::hash<std::string_view>()(bytes));
}

}  // namespace ondrel::test
