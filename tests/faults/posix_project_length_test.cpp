// The length of a project's text is the low half of its stream's position. The system finds the memory of a stream
// through a stand-in only where the stream is one of this platform layer's.

#include <gtest/gtest.h>

#include <string>

#include "faults/definition.h"
#include "faults/far_streams.h"
#include "support/archive_bytes.h"

namespace ondrel::test {
namespace {

TEST(PosixProjectLength, IsTheLowHalfOfTheStreamsPosition) {
  const Definition definition;
  const auto set = definition.Make();
  CMemFile file;
  CVellum archive(&file, CArchive::store);
  {
    const FarStreams streams(0x100000005);
    set->SerializeProjectFile(archive, nullptr);
  }
  archive.Close();
  EXPECT_EQ(BytesOf(file), "<?xml");
}

}  // namespace
}  // namespace ondrel::test
