// Damaged programs, and programs that are none: whatever the bytes, there is an icon or a reason, nothing is left
// behind, and what the system would stumble over never reaches it.
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "graphics/damaged_programs.h"
#include "graphics/first_icon.h"
#include "support/little_endian_bytes.h"
#include "support/live_handles.h"

namespace ondrel::test {
namespace {

/// The names of those that end otherwise.
std::vector<std::string> EndingOtherwise(const std::vector<DamagedProgram>& programs) {
  std::vector<std::string> names;
  for (const DamagedProgram& program : programs) {
    const testing::AssertionResult ended = EndedWith(FirstIconOf(program.bytes), program.error);
    if (!ended) names.push_back(program.name + ": " + ended.message());
  }
  return names;
}

TEST(DamagedProgram, UndamagedHasAnIcon) {
  for (const ProgramKind kind : {ProgramKind::pe32, ProgramKind::pe32Plus}) {
    EXPECT_TRUE(EndedWith(FirstIconOf(ProgramToDamage(kind).bytes), ERROR_SUCCESS));
  }
}

TEST(DamagedProgram, DamagedHeadersAreDamage) {
  EXPECT_EQ(EndingOtherwise(ProgramsWithDamagedHeaders()), std::vector<std::string>());
  EXPECT_EQ(CountLiveHandles().icons, 0);
}

TEST(DamagedProgram, DamagedTreeOfResourcesIsDamage) {
  EXPECT_EQ(EndingOtherwise(ProgramsWithDamagedTrees()), std::vector<std::string>());
  EXPECT_EQ(CountLiveHandles().icons, 0);
}

TEST(DamagedProgram, DamagedIconIsDamage) {
  EXPECT_EQ(EndingOtherwise(ProgramsWithDamagedIcons()), std::vector<std::string>());
  EXPECT_EQ(CountLiveHandles().icons, 0);
}

TEST(DamagedProgram, ProgramsOfOtherKindsAndWithoutAnIconHaveNone) {
  EXPECT_EQ(EndingOtherwise(ProgramsWithoutIcons()), std::vector<std::string>());
  EXPECT_EQ(CountLiveHandles().icons, 0);
}

}  // namespace
}  // namespace ondrel::test
