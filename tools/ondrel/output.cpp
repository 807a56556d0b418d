// Standard output whose every byte counts: a listing that was cut short must not look like success.
#include "output.h"

#include <cstdio>

#include "failure.h"

namespace ondrel::command {

void WriteOutput(std::string_view text) {
  const bool written = std::fwrite(text.data(), 1, text.size(), stdout) == text.size();
  if (!written || std::fflush(stdout) != 0) {
    throw Failure({"standard output"}, "it cannot be written; check where it leads",
                  StatusText(HRESULT_FROM_WIN32(ERROR_WRITE_FAULT)));
  }
}

}  // namespace ondrel::command
