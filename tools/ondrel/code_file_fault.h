// What is wrong with code files on disk.
#pragma once

#include <optional>
#include <string>

#include <ondrel/platform/framework/string.h>
#include <ondrel/platform/types.h>

namespace ondrel::command {

struct CodeFileFault {
  std::string explanation;  ///< What is wrong; what to do.
  HRESULT status = S_OK;
  bool isTooLarge = false;
};

/// Why the file of a path cannot go into an image as a code file; none when it can.
std::optional<CodeFileFault> FindCodeFileFault(const CString& path);

}  // namespace ondrel::command
