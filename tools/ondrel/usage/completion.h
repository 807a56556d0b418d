// What shells offer while a command line is typed, from the grammar.
#pragma once

#include <string>
#include <vector>

#include "usage/command_facts.h"

namespace ondrel::command {

enum class Shell { bash, zsh, fish };

/// A script for the shell: to be sourced by bash and fish, and to be found as _ondrel on zsh's fpath. The same bytes
/// for the same grammar.
std::string CompletionScript(Shell shell, const std::vector<CommandFacts>& all);

}  // namespace ondrel::command
