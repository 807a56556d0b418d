// Whether a person reads what the program prints.
#include <unistd.h>

#include <ondrel/platform/program.h>

namespace ondrel::platform {

bool IsTerminal(StandardStream stream) {
  return isatty(stream == StandardStream::output ? STDOUT_FILENO : STDERR_FILENO) != 0;
}

}  // namespace ondrel::platform
