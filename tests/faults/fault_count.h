// Tells how many faults a sweep has injected: in the test's record, and on a line of its own for people.
#pragma once

namespace ondrel::test {

/// "faults injected: image load, allocations: 1,234". A sweep without any has failed.
void ReportFaults(const char* operation, long count);

}  // namespace ondrel::test
