// The command `ondrel compile`.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "compile/code_files.h"
#include "definition_file.h"

namespace ondrel::command {

struct CompileRequest {
  std::vector<std::string> projects;
  std::optional<std::string> image;      ///< Of the one project,
  std::optional<std::string> directory;  ///< or the folder of the images of all.
  TextReading reading = TextReading::utf8;
  FileRules rules;
  std::optional<std::string> dependencyFile;  ///< Of the one project's image.
  bool listsInputs = false;                   ///< Instead of writing any image.
};

/// Compiles project files into object images, one after the other, and prints one line about each. An image appears
/// whole, or what was at its place stays as it was; the first failure ends the command, and earlier images stay. Gives
/// the exit code, or raises Failure.
int Compile(const CompileRequest& request);

}  // namespace ondrel::command
