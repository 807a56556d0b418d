// A project with a code file that cannot go into an image.
#pragma once

#include <string>

#include "project_folder.h"

namespace ondrel::test {

/// Compiles a project whose second code file, in line 3, has the given attributes. The old image stays.
void ExpectCodeFileRefused(const ProjectFolder& folder, const std::string& attributes, const std::string& complaint,
                           const std::string& status);

}  // namespace ondrel::test
