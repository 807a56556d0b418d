// Filters that cmd.exe runs: its own commands, and programs that it leaves behind, are of this system alone.
#include <windows.h>

#include <filesystem>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "filter_command.h"
#include "project_folder.h"
#include "support/archive_bytes.h"

namespace ondrel::test {
namespace {

class OneScript : public ProjectFolder {
 public:
  OneScript() {
    WriteProject(CodeProject({R"(Name="a.js")"}));
    Write("a.js", "run()");
  }

  CommandResult CompileThroughShell(const std::string& command) const {
    return Run({"compile", kProjectName, "-o", kImageName, "--timeout", "5", "--filter", "*=" + command});
  }
};

TEST(CompileFilter, CommandsOfTheShellAndQuotationMarksWork) {
  const OneScript folder;
  folder.Write("with space/b.txt", "typed");
  ExpectSuccess(folder.CompileThroughShell(R"(type "with space\b.txt" & echo "x")"));
  EXPECT_EQ(Hex(ReadBytes(folder / kImageName)), Hex(CodeImage({{1, "typed\"x\"\r\n"}})));
}

TEST(BadFilter, WhoseOwnProgramHoldsThePipeIsStoppedWithIt) {
  const OneScript folder;
  // Without quotation marks, which Wine takes for a title.
  const std::string program = Utf8(std::filesystem::absolute(ONDREL_FILTER_PROGRAM).make_preferred());
  const CommandResult result = folder.CompileThroughShell("start /b " + program + " sleep 300");
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_THAT(result.errors, testing::HasSubstr("its filter was stopped after 5 seconds; "));
  EXPECT_LT(result.duration, std::chrono::seconds(25));
  EXPECT_EQ(folder.Listing(), "a.js\nconsole.xml\n");
}

}  // namespace
}  // namespace ondrel::test
