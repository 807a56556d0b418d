// Whether a person reads what the program prints, and the console's way with sequences of escapes.
#include <cstdlib>

#include <ondrel/platform/program.h>

namespace ondrel::platform {
namespace {

struct FormerMode {
  HANDLE console = nullptr;
  DWORD mode = 0;
};
FormerMode g_formerModes[2];

void RestoreConsoles() {
  for (const FormerMode& former : g_formerModes) {
    if (former.console != nullptr) SetConsoleMode(former.console, former.mode);
  }
}

// Has a console understand escapes for as long as the program runs, where it can.
void EnableEscapes(HANDLE console, DWORD mode, FormerMode& former) {
  if ((mode & ENABLE_VIRTUAL_TERMINAL_PROCESSING) != 0) return;
  if (!SetConsoleMode(console, mode | ENABLE_PROCESSED_OUTPUT | ENABLE_VIRTUAL_TERMINAL_PROCESSING)) return;
  static const bool kRestored = std::atexit(RestoreConsoles) == 0;
  if (kRestored) former = {console, mode};
}

}  // namespace

bool IsTerminal(StandardStream stream) {
  const bool isOutput = stream == StandardStream::output;
  const HANDLE console = GetStdHandle(isOutput ? STD_OUTPUT_HANDLE : STD_ERROR_HANDLE);
  DWORD mode = 0;
  if (!GetConsoleMode(console, &mode)) return false;  // a file, a pipe or nothing
  EnableEscapes(console, mode, g_formerModes[isOutput ? 0 : 1]);
  return true;
}

}  // namespace ondrel::platform
