// The most memory that the test program has had at one time.
#pragma once

namespace ondrel::test {

long PeakKibibytes();

}  // namespace ondrel::test
