// Files that both commands refuse.
#pragma once

#include <filesystem>
#include <string>

#include "project_folder.h"

namespace ondrel::test {

/// Both commands refuse a file alike, and leave nothing behind.
void ExpectBothFail(const ProjectFolder& folder, const std::string& file, const std::string& start,
                    const std::string& status);

/// A project with an entity, or with a document type, that is in another file.
std::string ExternalEntityProject(const std::filesystem::path& file);
std::string ExternalSubsetProject(const std::filesystem::path& file);

}  // namespace ondrel::test
