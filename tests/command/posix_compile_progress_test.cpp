// What `ondrel compile` shows on a terminal while it works: pseudoterminals are of this system alone.
#include <fcntl.h>
#include <poll.h>
#include <unistd.h>
#include <array>
#include <cstdlib>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "filter_command.h"
#include "project_folder.h"
#include "support/posix/child_process.h"

namespace ondrel::test {
namespace {

/// What a command writes to a terminal that is its standard error; its output is dropped.
std::string SeenOnTerminal(const CommandLine& commandLine) {
  const int terminal = posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC);
  EXPECT_NE(terminal, -1);
  EXPECT_EQ(grantpt(terminal), 0);
  EXPECT_EQ(unlockpt(terminal), 0);
  const int line = open(ptsname(terminal), O_RDWR | O_NOCTTY | O_CLOEXEC);
  const int null = open("/dev/null", O_RDWR | O_CLOEXEC);
  EXPECT_NE(line, -1);
  EXPECT_NE(null, -1);
  std::string seen;
  {
    ChildProcess program(commandLine, null, null, line);
    close(line);
    close(null);
    std::array<char, 4096> block;
    // The read fails when nobody has the line any more.
    for (ssize_t count = 1; count > 0;) {
      pollfd polled{terminal, POLLIN, 0};
      if (poll(&polled, 1, 60'000) <= 0) break;
      count = read(terminal, block.data(), block.size());
      if (count > 0) seen.append(block.data(), static_cast<std::size_t>(count));
    }
    EXPECT_EQ(program.Wait(), 0);
  }
  close(terminal);
  return seen;
}

class SlowProject : public ProjectFolder {
 public:
  SlowProject() {
    WriteProject(CodeProject({R"(Name="a.js")", R"(Name="b.js")"}));
    Write("a.js", "");
    Write("b.js", "");
  }

  CommandLine Slow() const {
    return Command({"compile", kProjectName, "-o", kImageName, "--filter", "b.js=" + FilterCommand("sleep 2 say x")});
  }
};

TEST(CompileProgress, IsOneLineThatIsErasedAtTheEnd) {
  const SlowProject folder;
  const std::string seen = SeenOnTerminal(folder.Slow());
  EXPECT_EQ(seen, "\rondrel: code file 2 of 2\r                        \r");
}

TEST(CompileProgress, OfSeveralProjectsNamesTheirNumber) {
  const SlowProject folder;
  folder.Write("first.xml", "<Project/>");
  CommandLine commandLine = folder.Slow();
  commandLine.arguments[2] = "-d";
  commandLine.arguments[3] = ".";
  commandLine.arguments.insert(commandLine.arguments.begin() + 1, "first.xml");
  EXPECT_THAT(SeenOnTerminal(commandLine), testing::StartsWith("\rondrel: project 2 of 2, code file 2 of 2\r"));
}

TEST(CompileProgress, OfAShortCompileIsNotShown) {
  const ProjectFolder folder;
  folder.WriteProject("<Project/>");
  EXPECT_EQ(SeenOnTerminal(folder.Command({"compile", kProjectName, "-o", kImageName})), "");
}

TEST(CompileProgress, IsForTerminalsAlone) {
  const SlowProject folder;
  ExpectSuccess(RunCommand(folder.Slow()));
}

TEST(CompileProgress, DoesNotChangeTheImage) {
  const SlowProject folder;
  SeenOnTerminal(folder.Slow());
  const std::string image = ReadBytes(folder / kImageName);
  ExpectSuccess(RunCommand(folder.Slow()));
  EXPECT_TRUE(ReadBytes(folder / kImageName) == image);
}

}  // namespace
}  // namespace ondrel::test
