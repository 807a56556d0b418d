// Which elements of a row may stay where they are when it is put in order.
#pragma once

#include <cstddef>
#include <vector>

namespace ondrel::command {

/// For each element of a row of different numbers whether it belongs to a longest run, gaps allowed, in which they
/// rise. All others have to be moved to bring the row in order, and no fewer could be.
std::vector<bool> LongestRise(const std::vector<std::size_t>& row);

}  // namespace ondrel::command
