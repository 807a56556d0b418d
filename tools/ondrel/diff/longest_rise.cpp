// For each length the run that ends lowest, found by bisection.
#include "diff/longest_rise.h"

#include <algorithm>

namespace ondrel::command {

std::vector<bool> LongestRise(const std::vector<std::size_t>& row) {
  constexpr auto kNone = static_cast<std::size_t>(-1);
  std::vector<std::size_t> ends;  // by length, from 1: the index of the last element of the run that ends lowest
  std::vector<std::size_t> before(row.size(), kNone);  // of each element, the one before it in its run
  for (std::size_t index = 0; index < row.size(); ++index) {
    const auto end = std::lower_bound(ends.begin(), ends.end(), row[index],
                                      [&row](std::size_t last, std::size_t value) { return row[last] < value; });
    if (end != ends.begin()) before[index] = *(end - 1);
    if (end == ends.end()) {
      ends.push_back(index);
    } else {
      *end = index;
    }
  }
  std::vector<bool> belongs(row.size());
  for (std::size_t index = ends.empty() ? kNone : ends.back(); index != kNone; index = before[index]) {
    belongs[index] = true;
  }
  return belongs;
}

}  // namespace ondrel::command
