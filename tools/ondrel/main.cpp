// The command `ondrel`.
#include <cstdio>
#include <exception>

#include <ondrel/platform/program.h>

#include "command_line.h"
#include "failure.h"

namespace ondrel::command {
namespace {

int RunCommand(int argc, char** argv) {
  try {
    platform::PrepareProgram();
    const auto run = ParseCommandLine(platform::ProgramArguments(argc, argv));
    const platform::ComponentScope components;
    return run();
  } catch (const std::exception&) {
    const Failure failure = CurrentFailure({});
    std::fprintf(stderr, "ondrel: %s\n", failure.what());
    return failure.Exit();
  }
}

}  // namespace
}  // namespace ondrel::command

int main(int argc, char** argv) { return ondrel::command::RunCommand(argc, argv); }
