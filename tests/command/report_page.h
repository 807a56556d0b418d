// The page that `ondrel report` writes, for tests of it.
#pragma once

#include <string>
#include <string_view>

#include "project_folder.h"

namespace ondrel::test {

inline constexpr const char* kPageName = "page.html";

/// Reports on a file of the folder.
CommandResult RunReport(const ProjectFolder& folder, const std::string& file);

/// What a page holds of its definition: the text, and the value.
std::string DataText(const std::string& page);
nlohmann::json DataOf(const std::string& page);
/// The data of the page that the command writes for a file of the folder.
nlohmann::json ReportedData(const ProjectFolder& folder, const std::string& file);

/// A project of one of everything: nodes at three levels, a dialog, an icon file, a code file and one that is missing.
void WriteReported(const ProjectFolder& folder);

}  // namespace ondrel::test
