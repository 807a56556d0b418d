// Writes the definition of so many nodes to a file, as an object image or as a project file.
//
// usage: make_definition image|project NODES FILE
#include <cstdio>
#include <exception>
#include <string>
#include <string_view>

#include <ondrel/platform/program.h>

#include "forms.h"

int main(int argc, char** argv) {
  const std::string_view form = argc == 4 ? argv[1] : "";
  if (form != "image" && form != "project") {
    std::fputs("usage: make_definition image|project NODES FILE\n", stderr);
    return 2;
  }
  try {
    ondrel::platform::PrepareProgram();
    const ondrel::platform::ComponentScope components;
    const auto set = ondrel::bench::MakeDefinition(std::stoll(argv[2]));
    CFile file(ondrel::platform::PathFromUtf8(argv[3]), CFile::modeWrite | CFile::modeCreate);
    (form == "image" ? ondrel::bench::StoreImage : ondrel::bench::SaveProject)(*set, file);
    file.Close();
    return 0;
  } catch (const std::exception& fault) {
    std::fprintf(stderr, "make_definition: %s\n", fault.what());
    return 1;
  }
}
