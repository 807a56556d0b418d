#include "faults/fault_count.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <string>

namespace ondrel::test {

void ReportFaults(const char* operation, long count) {
  EXPECT_GT(count, 0) << operation << ": nothing was injected, so nothing was tested";
  testing::Test::RecordProperty(operation, std::to_string(count));
  std::string digits = std::to_string(count);
  for (int place = static_cast<int>(digits.size()) - 3; place > 0; place -= 3) {
    digits.insert(static_cast<std::size_t>(place), ",");
  }
  std::printf("faults injected: %s: %s\n", operation, digits.c_str());
}

}  // namespace ondrel::test
