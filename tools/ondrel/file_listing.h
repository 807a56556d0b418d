// The icon files and code files of a loaded definition.
#pragma once

#include <optional>
#include <set>
#include <vector>

#include "definition_file.h"

namespace ondrel::command {

struct IconFile {
  __int64 cookie = 0;
  std::optional<CString> path;  ///< As people know it; none in an image.
  tagBITMAP large{};            ///< Geometry of the colour images.
  tagBITMAP smallIcon{};
};

struct CodeFile {
  __int64 cookie = 0;
  std::optional<CString> path;  ///< As people know it; none in an image.
  std::optional<ULONGLONG>
      bytes;  ///< Of the contents in an image, or of the file on disk; none when it cannot be read.
};

/// All of them, or those of `only` that are there.
std::vector<IconFile> ListIconFiles(const Definition& definition, const std::set<__int64>* only = nullptr);
std::vector<CodeFile> ListCodeFiles(Definition& definition, const std::set<__int64>* only = nullptr);

}  // namespace ondrel::command
