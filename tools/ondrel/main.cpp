// The command `ondrel`.
#include <cstdio>
#include <exception>

#include <ondrel/platform/program.h>

#include "command_line.h"
#include "compile.h"
#include "failure.h"
#include "icon.h"
#include "output.h"
#include "show.h"
#include "strips.h"

namespace ondrel::command {
namespace {

int Run(const CompileRequest& request) {
  Compile(request.project, request.image);
  return kDone;
}

int Run(const ShowRequest& request) {
  Show(request.file, request.json);
  return kDone;
}

int Run(const IconRequest& request) {
  ShowIcon(request.file, request.picture);
  return kDone;
}

int Run(const StripsRequest& request) {
  WriteStrips(request.file, request.key, request.pictures);
  return kDone;
}

int Run(const Answer& answer) {
  if (answer.exitCode == kDone) {
    WriteOutput(answer.text);
  } else {
    std::fputs(answer.text.c_str(), stderr);
  }
  return answer.exitCode;
}

int RunCommand(int argc, char** argv) {
  try {
    platform::PrepareProgram();
    const Request request = ParseCommandLine(platform::ProgramArguments(argc, argv));
    const platform::ComponentScope components;
    return std::visit([](const auto& chosen) { return Run(chosen); }, request);
  } catch (const std::exception&) {
    std::fprintf(stderr, "ondrel: %s\n", CurrentFailure({}).what());
    return kFailed;
  }
}

}  // namespace
}  // namespace ondrel::command

int main(int argc, char** argv) { return ondrel::command::RunCommand(argc, argv); }
