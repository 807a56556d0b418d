// The process of a command-line program.
#include <ondrel/platform/program.h>

#include <csignal>

namespace ondrel::platform {

void PrepareProgram() { std::signal(SIGXFSZ, SIG_IGN); }

std::vector<std::string> ProgramArguments(int argc, char** argv) {
  return argc > 1 ? std::vector<std::string>(argv + 1, argv + argc) : std::vector<std::string>();
}

// The components of this system need no preparation of a thread.
ComponentScope::ComponentScope() = default;
ComponentScope::~ComponentScope() = default;

}  // namespace ondrel::platform
