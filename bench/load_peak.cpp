// Loads an object image or a project file from the disk into an empty set, and prints what that took of memory at its
// peak, in bytes: the most that the process ever had, less what it had before the load.
//
// usage: load_peak image|project FILE
#include <cstdio>
#include <exception>
#include <fstream>
#include <stdexcept>
#include <string>
#include <string_view>

#include <ondrel/platform/program.h>

#include "forms.h"

namespace {

/// A size of this process as the system tells it, in bytes.
long long SizeOf(std::string_view name) {
  std::ifstream status("/proc/self/status");
  for (std::string line; std::getline(status, line);) {
    if (line.starts_with(name)) return std::stoll(line.substr(name.size())) * 1'024;
  }
  throw std::runtime_error("the system does not tell the size of a process");
}

}  // namespace

int main(int argc, char** argv) {
  const std::string_view form = argc == 3 ? argv[1] : "";
  if (form != "image" && form != "project") {
    std::fputs("usage: load_peak image|project FILE\n", stderr);
    return 2;
  }
  try {
    ondrel::platform::PrepareProgram();
    const ondrel::platform::ComponentScope components;
    const auto set = ondrel::bench::MakeSet();
    CFile file(ondrel::platform::PathFromUtf8(argv[2]), CFile::modeRead);
    const long long before = SizeOf("VmRSS:");
    (form == "image" ? ondrel::bench::LoadImage : ondrel::bench::LoadProject)(*set, file);
    std::printf("%lld\n", SizeOf("VmHWM:") - before);
    return 0;
  } catch (const std::exception& fault) {
    std::fprintf(stderr, "load_peak: %s\n", fault.what());
    return 1;
  }
}
