// The icon files and code files of a loaded definition.
#pragma once

#include <optional>
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

std::vector<IconFile> ListIconFiles(const Definition& definition);
std::vector<CodeFile> ListCodeFiles(Definition& definition);

}  // namespace ondrel::command
