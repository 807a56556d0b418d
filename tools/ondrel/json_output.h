// A definition as one JSON object, for programs.
#pragma once

#include <string>

#include "definition_file.h"

namespace ondrel::command {

/// The object: form, nodes, dialogs, icons, codeFiles. ASCII alone, one record a line. Cookies are strings of decimal
/// digits, since a JSON number does not hold 64 bits everywhere.
std::string JsonText(Definition& definition);

}  // namespace ondrel::command
