// The exception that a call raises, by value, so that a test can look into it.
#pragma once

#include <optional>

/// The `Exception` that `call` raises; nothing when it raises none. Any other exception passes on.
template <class Exception, class Call>
std::optional<Exception> Raised(Call call) {
  try {
    call();
  } catch (const Exception& raised) {
    return raised;
  }
  return std::nullopt;
}
