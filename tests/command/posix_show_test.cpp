// What `ondrel show` says of names that a file of this system may have.
#include <gtest/gtest.h>

#include "project_folder.h"

namespace ondrel::test {
namespace {

TEST(Show, ControlCharactersInANameOfAFileAreEscapedInErrors) {
  const ProjectFolder folder;
  ExpectFailure(folder.Show("a\n\x1B[31mb"), "a\\n\\x1B[31mb: there is no such file", "0x80070002");
}

}  // namespace
}  // namespace ondrel::test
