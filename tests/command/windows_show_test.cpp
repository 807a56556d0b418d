// What `ondrel show` says of names that no file of this system can have.
#include <gtest/gtest.h>

#include "project_folder.h"

namespace ondrel::test {
namespace {

TEST(Show, ControlCharactersInANameOfAFileAreEscapedInErrors) {
  const ProjectFolder folder;
  ExpectFailure(folder.Show("a\n\x1B[31mb"), "a\\n\\x1B[31mb: no file can have this name; ", "0x8007007B");
}

}  // namespace
}  // namespace ondrel::test
