// The files that an image is made of, as build systems are told them.
#pragma once

#include <string>
#include <vector>

#include "definition_file.h"

namespace ondrel::command {

/// The project, its icon files and its code files, each in the order of the project's text and once, by the places
/// where they are read. Those in the project's folder begin as the project was named, and parts are separated by "/".
std::vector<std::string> InputsOf(const Definition& definition);

/// A dependency file in the format of make: the image depends on these files. Raises Failure for a name that the format
/// has no way to write.
std::string DependencyText(const std::string& image, const std::vector<std::string>& inputs);

}  // namespace ondrel::command
