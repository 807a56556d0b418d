// The command `ondrel report`.
#pragma once

#include <string>

#include "definition_file.h"

namespace ondrel::command {

struct ReportRequest {
  std::string file;
  std::string page;  ///< Where the page is to go.
  TextReading reading = TextReading::utf8;
};

/// Writes a page that shows a project file or an object image to people, and prints one line about it. The page is one
/// file that needs no other; it is written whole, or its place stays as it was. Gives the exit code, or raises Failure.
int WriteReport(const ReportRequest& request);

}  // namespace ondrel::command
