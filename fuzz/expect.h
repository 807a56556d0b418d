// What a fuzzer holds the library to: a rule that does not hold ends the process, which is how a finding is reported.
#pragma once

#include <cstdio>
#include <cstdlib>
#include <string>

#include <ondrel/platform/types.h>

namespace ondrel::fuzz {

/// Ends the process with one line that says what was found.
[[noreturn]] inline void Stop(const std::string& finding) {
  std::fprintf(stderr, "finding: %s\n", finding.c_str());
  std::abort();
}

/// `rule` is what should hold, in the words of the library's own declarations.
inline void Expect(bool holds, const char* rule) {
  if (!holds) Stop(std::string("it does not hold that ") + rule);
}

/// "0x8007000D"
inline std::string StatusText(HRESULT status) {
  char text[sizeof "0x8007000D"];
  std::snprintf(text, sizeof text, "0x%08X", static_cast<unsigned>(status));
  return text;
}

}  // namespace ondrel::fuzz
