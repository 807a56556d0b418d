// Statuses as people know them.
#pragma once

#include <cstdio>
#include <string>

#include <ondrel/platform/types.h>

namespace ondrel::test {

/// "0x80004001".
inline std::string StatusText(HRESULT status) {
  char text[sizeof "0x80004001"];
  std::snprintf(text, sizeof text, "0x%08X", static_cast<unsigned>(status));
  return text;
}

}  // namespace ondrel::test
