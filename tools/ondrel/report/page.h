// The page of the report, which is the same for every definition but for its data.
#pragma once

#include <span>
#include <string_view>

namespace ondrel::command {

/// What stands before the data, and what stands behind it, in pieces. The data is JSON in ASCII, without "<".
std::span<const std::string_view> PageHead();
std::span<const std::string_view> PageTail();

}  // namespace ondrel::command
