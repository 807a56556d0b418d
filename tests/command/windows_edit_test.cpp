// Edits on Windows: names do not differ by the case of a letter, and files may be kept open or read-only.
#include <windows.h>

#include <gtest/gtest.h>

#include <ondrel/platform/framework.h>

#include "edit_folder.h"

namespace ondrel::test {
namespace {

TEST(Edit, AFileIsTheSameInOtherLetters) {
  const EditFolder folder;
  folder.ExpectRefused({"add", "code", kProjectName, "SCRIPTS/A.js"}, ": code file ", kAlreadyExistsText);
  folder.ExpectEdit({"set", kProjectName, "1", "--script", "Scripts/B.JS"}, "node 1: Disks\n");
  EXPECT_EQ(folder.Object("1")["scripts"], nlohmann::json::array({"24"}));
}

TEST(Edit, AProjectThatMayOnlyBeReadIsNotReplaced) {
  const EditFolder folder;
  const CString project = Wide(folder / kProjectName);
  ASSERT_TRUE(SetFileAttributesW(project, FILE_ATTRIBUTE_READONLY));
  folder.ExpectRefused({"remove", kProjectName, "4"}, ": access is denied; ", "0x80070005");
  EXPECT_TRUE(SetFileAttributesW(project, FILE_ATTRIBUTE_NORMAL));
}

TEST(Edit, AProjectThatAnotherProgramReadsIsNotReplaced) {
  const EditFolder folder;
  const auto files = folder.Files();
  {
    const CFile reader(Wide(folder / kProjectName), CFile::modeRead | CFile::shareDenyWrite);
    ExpectFailure(folder.Run({"remove", kProjectName, "4"}), "console.xml: another program is using it; ",
                  "0x80070020");
  }
  EXPECT_TRUE(folder.Files() == files);
}

}  // namespace
}  // namespace ondrel::test
