// File systems that hold no files without a name, which the tests' own disk seldom is.
#pragma once

#include <filesystem>
#include <functional>

namespace ondrel::test {

/// From here on, this thread and the programs that it becomes or starts are told by the system that no folder can hold
/// a file without a name. False, with the reason in errno, when the system does not let itself be told. Safe between
/// fork and exec.
bool ForbidUnnamedFiles() noexcept;

/// Runs `work` on a thread of its own that has been forbidden such files. Raises what `work` raises, and
/// std::system_error when that cannot be forbidden.
void RunWithoutUnnamedFiles(const std::function<void()>& work);

/// Whether the folder can hold a file without a name, and the process can give it one.
bool HoldsUnnamedFiles(const std::filesystem::path& folder);

}  // namespace ondrel::test
