// What the command line asks for.
#pragma once

#include <functional>
#include <string>
#include <vector>

namespace ondrel::command {

/// What is to be done: the command that was asked for, or an answer to the command line itself (help, the version, what
/// is wrong with the usage). Gives the exit code, or raises Failure. `arguments` without the program's name, in UTF-8.
std::function<int()> ParseCommandLine(std::vector<std::string> arguments);

}  // namespace ondrel::command
