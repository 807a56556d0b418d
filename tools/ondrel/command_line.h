// What the command line asks for.
#pragma once

#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "strips.h"

namespace ondrel::command {

struct CompileRequest {
  std::string project;
  std::string image;
};

struct ShowRequest {
  std::string file;
  bool json = false;
};

struct IconRequest {
  std::string file;
  std::optional<std::string> picture;
};

struct StripsRequest {
  std::string file;
  DWORD key = 0;  ///< 0x00BBGGRR
  StripPlaces pictures;
};

/// Text that answers the command line by itself: help, the version, or what is wrong with the usage.
struct Answer {
  int exitCode = 0;
  std::string text;  ///< For standard output when exitCode is 0, else for standard error; with its closing line feed.
};

using Request = std::variant<CompileRequest, ShowRequest, IconRequest, StripsRequest, Answer>;

/// `arguments` without the program's name, in UTF-8.
Request ParseCommandLine(std::vector<std::string> arguments);

}  // namespace ondrel::command
