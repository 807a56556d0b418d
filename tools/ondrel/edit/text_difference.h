// What differs between two texts, as people who use version control read it.
#pragma once

#include <string>
#include <string_view>

namespace ondrel::command {

/// A unified diff of two UTF-8 texts with three lines of context, both called `name`; empty when they are the same. The
/// lines are compared without their ends, and a line with a backslash says when those change. All text is made safe for
/// a terminal, but for the tabs that a line begins with. Time grows little faster than the texts, memory with them.
std::string UnifiedDifference(const std::string& name, std::string_view before, std::string_view after);

}  // namespace ondrel::command
