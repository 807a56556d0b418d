// The icon files of a project whose places are mapped.
#pragma once

#include "compile/path_map.h"
#include "definition_file.h"

namespace ondrel::command {

/// Icon files are read while a project is loaded, from where its text says, and no image tells from where: so the text
/// that is loaded names the mapped places. Code files keep their paths, which give their order in an image. Raises
/// Failure where an icon's path is to be mapped and cannot be written anew.
void MapIconFiles(Definition& definition, const PathMap& map);

}  // namespace ondrel::command
