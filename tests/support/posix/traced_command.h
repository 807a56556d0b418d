// A program that is held up when it is about to open a certain file, so that a test can change the disk meanwhile.
#pragma once

#include <functional>
#include <optional>
#include <string>

#include "support/run_command.h"

namespace ondrel::test {

/// Whether it is this opening of a file, before the system has done anything. `path` is as the program gives it,
/// `flags` are those of open.
using OpeningChoice = std::function<bool(const std::string& path, int flags)>;

/// Runs a program, calls `change` once when it is about to open a file that `isChosen` accepts, and lets it run to its
/// end. Its output is not kept. None where the system lets nobody trace a program. Raises std::runtime_error when
/// nothing was chosen.
std::optional<CommandResult> RunWithChange(const CommandLine& commandLine, const OpeningChoice& isChosen,
                                           const std::function<void()>& change);

/// The program is about to make a file: the choice for its writing.
bool MakesFile(const std::string& path, int flags);

}  // namespace ondrel::test
