// Code files that cannot go into an image, with what only Windows has: drives, and files that another program keeps for
// itself.
#include <gtest/gtest.h>

#include <ondrel/platform/framework.h>

#include "bad_code_file.h"
#include "support/windows/missing_drive.h"

namespace ondrel::test {
namespace {

TEST(BadCodeFile, OnADriveThatIsNotThere) {
  const std::string path = std::string(1, MissingDrive()) + ":\\code\\b.js";
  ExpectCodeFileRefused(ProjectFolder(), "Path=\"" + path + '"',
                        '"' + path + "\": the drive " + path.substr(0, 2) + " cannot be reached from this system; ",
                        "0x80070003");
}

TEST(BadCodeFile, ThatAnotherProgramKeepsForItself) {
  const ProjectFolder folder;
  const CFile keeper(Wide(folder.Write("kept.js", "x")), CFile::modeRead | CFile::shareExclusive);
  ExpectCodeFileRefused(folder, R"(Name="kept.js")", "\"kept.js\": another program is using it; ", "0x80070020");
}

}  // namespace
}  // namespace ondrel::test
