// From a definition file to standard output.
#include "show.h"

#include "json_output.h"
#include "output.h"
#include "tree_drawing.h"

namespace ondrel::command {

void Show(const std::string& file, bool json) {
  const auto definition = ReadDefinition(file);
  WriteOutput(json ? JsonText(*definition) : DrawingText(*definition));
}

}  // namespace ondrel::command
