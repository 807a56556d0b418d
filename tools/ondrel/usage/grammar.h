// The grammar of the whole command line.
#pragma once

#include <memory>
#include <string>

#include "usage/usage.h"

namespace ondrel::command {

/// The grammar. All commands are in it, but only the one named `command` is described, because describing all of them
/// takes a good part of a short run; an empty name describes all. Parsing sets `run`, which must live as long.
std::unique_ptr<CLI::App> MakeGrammar(Run& run, const std::string& command);

}  // namespace ondrel::command
