// Files that no command takes for a definition.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

#include "project_folder.h"

namespace ondrel::test {

/// Every command that works on a project refuses the file alike: those that build, look and edit. Nothing in the folder
/// changes.
void ExpectAllFail(const ProjectFolder& folder, const std::string& file, std::string_view start,
                   std::string_view status);

/// A project with an entity, or with a document type, that is in another file.
std::string ExternalEntityProject(const std::filesystem::path& file);
std::string ExternalSubsetProject(const std::filesystem::path& file);

}  // namespace ondrel::test
