// Programs that are damaged, or no programs with an icon at all.
#pragma once

#include <string>
#include <vector>

#include <ondrel/platform/graphics.h>

#include "support/executable_bytes.h"

namespace ondrel::test {

struct DamagedProgram {
  std::string name;
  std::string bytes;
  DWORD error;  ///< The reason why there is no icon.
};

/// A program with an icon of two images, for damage of all sorts: its resources are image 1, image 2 and group 1.
ProgramBytes ProgramToDamage(ProgramKind kind = ProgramKind::pe32Plus, std::uint32_t emptySections = 0);

std::vector<DamagedProgram> ProgramsWithDamagedHeaders();
std::vector<DamagedProgram> ProgramsWithDamagedTrees();
std::vector<DamagedProgram> ProgramsWithDamagedIcons();
/// Programs of other kinds, and programs without an icon.
std::vector<DamagedProgram> ProgramsWithoutIcons();

/// All of them.
std::vector<DamagedProgram> DamagedPrograms();

}  // namespace ondrel::test
