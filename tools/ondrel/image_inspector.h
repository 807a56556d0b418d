// Why an object image does not load.
#pragma once

#include <string>

#include <ondrel/platform/framework/file.h>

namespace ondrel::command {

struct ImageFault {
  std::string explanation;  ///< What is wrong; what to do. Empty when nothing was found.
  std::string status;       ///< What a load raises for it, as CauseText or StatusText gives it.
};

/// Reads an image from the start of `file` once more, record by record, up to the first fault that a load meets. The
/// counts in the image are not trusted: the reading ends with the file.
ImageFault InspectImage(CFile& file);

}  // namespace ondrel::command
