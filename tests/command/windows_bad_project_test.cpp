// Projects whose icon files lie on drives.
#include <gtest/gtest.h>

#include "bad_project.h"
#include "support/windows/missing_drive.h"

namespace ondrel::test {
namespace {

TEST(BadIcon, OnADriveThatIsNotThere) {
  const std::string drive(1, MissingDrive());
  const BadProjectFolder folder(Files({"<Icon Cookie=\"2\" Path=\"" + drive + ":\\icons\\a.ico\"/>"}));
  folder.ExpectExplained(
      "3: icon file 2, \"" + drive + ":\\icons\\a.ico\": the drive " + drive + ": cannot be reached from this system; ",
      static_cast<DWORD>(folder.LoadStatus()));
}

}  // namespace
}  // namespace ondrel::test
