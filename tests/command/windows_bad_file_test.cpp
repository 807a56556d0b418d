// Files that are no definition, with what only Windows has: drives, and files that another program keeps for itself.
#include <gtest/gtest.h>

#include <ondrel/platform/framework.h>

#include "bad_file.h"
#include "support/windows/missing_drive.h"

namespace ondrel::test {
namespace {

TEST(BadFile, ADriveThatIsNotThere) {
  const std::string name = std::string(1, MissingDrive()) + ":\\folder\\console.xml";
  ExpectAllFail(ProjectFolder(), name,
                name + ": the drive " + name.substr(0, 2) + " cannot be reached from this system; ", "0x80070003");
}

TEST(BadFile, AFileThatAnotherProgramKeepsForItself) {
  const ProjectFolder folder;
  folder.WriteProject("<Project/>");
  const CFile keeper(Wide(folder / kProjectName), CFile::modeRead | CFile::shareExclusive);
  ExpectAllFail(folder, kProjectName, "console.xml: another program is using it; ", "0x80070020");
}

TEST(BadFile, AFileThatAnotherProgramIsWriting) {
  const ProjectFolder folder;
  folder.WriteProject("<Project/>");
  const CFile writer(Wide(folder / kProjectName), CFile::modeWrite | CFile::shareDenyNone);
  ExpectAllFail(folder, kProjectName, "console.xml: another program is using it; ", "0x80070020");
}

TEST(BadFile, ADevice) { ExpectAllFail(ProjectFolder(), "NUL", "NUL: it is no regular file; ", "0x80070005"); }

}  // namespace
}  // namespace ondrel::test
