// The file over a descriptor that takes only a part of what it is given.

#include <gtest/gtest.h>

#include <fcntl.h>
#include <cstdint>
#include <string>

#include <ondrel/MMCArchiveFile.h>

#include "support/kernel_handles.h"

namespace ondrel::test {
namespace {

TEST(PosixArchiveFile, AShortWritePassesSilently) {
  const KernelPipe pipe;
  ASSERT_EQ(fcntl(static_cast<int>(reinterpret_cast<std::intptr_t>(pipe.writing.Get())), F_SETFL, O_NONBLOCK), 0);
  const std::string bytes(10 << 20, 'x');  // more than a pipe holds
  CMMCArchiveFile writing(pipe.writing.Get());
  EXPECT_NO_THROW(writing.Write(bytes.data(), static_cast<UINT>(bytes.size())));
  std::string arrived(bytes.size(), '.');
  CMMCArchiveFile reading(pipe.reading.Get());
  const UINT count = reading.Read(arrived.data(), static_cast<UINT>(arrived.size()));
  EXPECT_GT(count, 0U);
  EXPECT_LT(count, bytes.size());
}

}  // namespace
}  // namespace ondrel::test
