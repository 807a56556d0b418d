// The process of a command-line program.
#include <ondrel/platform/program.h>

#include <fcntl.h>
#include <io.h>
#include <shellapi.h>

#include <cstdio>
#include <cstdlib>
#include <memory>

#include <ondrel/platform/com.h>

namespace ondrel::platform {
namespace {

struct LocalDeleter {
  void operator()(void* block) const noexcept { LocalFree(block); }
};

UINT g_formerConsolePage = 0;

void RestoreConsolePage() { SetConsoleOutputCP(g_formerConsolePage); }

// What the program prints is UTF-8, whatever page a console is set to; the user's console is given back as it was.
void UseUtf8Console() {
  g_formerConsolePage = GetConsoleOutputCP();
  if (g_formerConsolePage == 0 || g_formerConsolePage == CP_UTF8) return;
  if (SetConsoleOutputCP(CP_UTF8)) std::atexit(RestoreConsolePage);
}

}  // namespace

void PrepareProgram() {
  // Pipelines read the same bytes from every system, so lines end in a line feed alone.
  _setmode(_fileno(stdout), _O_BINARY);
  _setmode(_fileno(stderr), _O_BINARY);
  UseUtf8Console();
  // A drive without a disk is an error of the call, not a dialog that a pipeline would wait for.
  // What the starter of the program has switched off already stays off.
  SetErrorMode(GetErrorMode() | SEM_FAILCRITICALERRORS | SEM_NOOPENFILEERRORBOX);
}

std::vector<std::string> ProgramArguments(int, char**) {
  // The arguments of main have been through the narrow code page and may have lost characters.
  int count = 0;
  const std::unique_ptr<LPWSTR, LocalDeleter> arguments(CommandLineToArgvW(GetCommandLineW(), &count));
  if (arguments == nullptr) AfxThrowMemoryException();
  std::vector<std::string> utf8;
  for (int index = 1; index < count; ++index) utf8.push_back(PathToUtf8(arguments.get()[index]));
  return utf8;
}

ComponentScope::ComponentScope() { AtlThrowIfFailed(CoInitializeEx(nullptr, COINIT_MULTITHREADED)); }
ComponentScope::~ComponentScope() { CoUninitialize(); }

}  // namespace ondrel::platform
