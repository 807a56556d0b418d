// Filters that end by signals, that leave programs behind, and what their environment holds: /bin/sh and /proc are of
// this system alone.
#include <fcntl.h>
#include <unistd.h>
#include <algorithm>
#include <chrono>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <functional>
#include <thread>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "filter_command.h"
#include "project_folder.h"
#include "support/posix/child_process.h"

namespace ondrel::test {
namespace {

using testing::HasSubstr;

/// A shell that writes its number into the file `pid`, and then sleeps as a program of that number.
constexpr const char* kSleeper = "sh -c 'echo $$ > pid.new; mv pid.new pid; exec sleep 300'";

class SleepingFilter : public ProjectFolder {
 public:
  SleepingFilter() {
    WriteProject(CodeProject({R"(Name="a.js")"}));
    Write("a.js", "run()");
  }

  CommandLine CompileThroughShell(const std::string& command) const {
    return Command({"compile", kProjectName, "-o", kImageName, "--timeout", "1", "--filter", "*=" + command});
  }
  bool HasSleeper() const { return std::filesystem::exists(*this / "pid"); }
  /// Whether the sleeper runs. One that has ended may still be waited for by whoever took it over.
  bool IsSleeperRunning() const {
    std::ifstream stat("/proc/" + SleeperId() + "/stat");
    std::string state;
    for (std::string word; stat >> word;) {
      if (!word.ends_with(')')) continue;
      stat >> state;
      break;
    }
    return !state.empty() && state != "Z" && state != "X";
  }

 private:
  std::string SleeperId() const {
    std::string id = ReadBytes(*this / "pid");
    id.resize(id.find('\n'));
    return id;
  }
};

/// Waits until something has come about; false when it does not.
bool ComesAbout(const std::function<bool()>& condition) {
  const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(20);
  while (!condition()) {
    if (std::chrono::steady_clock::now() > end) return false;
    std::this_thread::sleep_for(std::chrono::milliseconds(5));
  }
  return true;
}

TEST(BadFilter, ThatIsEndedByASignal) {
  const SleepingFilter folder;
  ExpectFailure(RunCommand(folder.CompileThroughShell("kill -SEGV $$")),
                "console.xml:2: code file 1, \"a.js\": its filter was ended by signal 11; ", "0x80004005");
}

TEST(BadFilter, WhoseOwnProgramHoldsThePipeIsStoppedWithIt) {
  const SleepingFilter folder;
  const CommandResult result = RunCommand(folder.CompileThroughShell(std::string(kSleeper) + " & echo text"));
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_THAT(result.errors, HasSubstr("its filter was stopped after 1 second; "));
  ASSERT_TRUE(folder.HasSleeper());
  EXPECT_TRUE(ComesAbout([&] { return !folder.IsSleeperRunning(); }));
  EXPECT_EQ(folder.Listing(), "a.js\nconsole.xml\npid\n");
}

TEST(BadFilter, WhoseProgramLeftItsGroupIsNotWaitedFor) {
  const SleepingFilter folder;
  const CommandResult result =
      RunCommand(folder.CompileThroughShell("setsid sh -c 'echo $$ > pid.new; mv pid.new pid; exec sleep 30' & wait"));
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_THAT(result.errors, HasSubstr("its filter was stopped after 1 second; "));
  EXPECT_LT(result.duration, std::chrono::seconds(20));
  ASSERT_TRUE(folder.HasSleeper());
  EXPECT_TRUE(folder.IsSleeperRunning());
  kill(std::stoi(ReadBytes(folder / "pid")), SIGKILL);
}

TEST(CompileFilter, StopsWhatACommandLeavesBehindItsPipes) {
  const SleepingFilter folder;
  const CommandResult result = RunCommand(folder.CompileThroughShell(
      std::string(kSleeper) + " >/dev/null 2>&1 & while [ ! -e pid ]; do sleep 0.01; done; echo text"));
  ExpectSuccess(result);
  EXPECT_TRUE(ComesAbout([&] { return !folder.IsSleeperRunning(); }));
}

TEST(CompileFilter, AFilterEndsWithACompileThatIsInterrupted) {
  for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
    const SleepingFilter folder;
    CommandLine commandLine = folder.CompileThroughShell(kSleeper);
    commandLine.arguments.erase(commandLine.arguments.begin() + 4, commandLine.arguments.begin() + 6);  // no --timeout
    const int null = open("/dev/null", O_RDWR | O_CLOEXEC);
    ASSERT_NE(null, -1);
    ChildProcess compile(commandLine, null, null, null);
    close(null);
    ASSERT_TRUE(ComesAbout([&] { return folder.HasSleeper(); }));
    compile.Send(signal);
    EXPECT_EQ(compile.Wait(), std::nullopt) << signal;
    EXPECT_TRUE(ComesAbout([&] { return !folder.IsSleeperRunning(); })) << signal;
    EXPECT_EQ(folder.Listing(), "a.js\nconsole.xml\npid\n");
  }
}

TEST(CompileFilter, FoldersAreVariablesOfTheirOwnNames) {
  const ProjectFolder folder;
  folder.WriteProject(CodeProject({R"(Name="a=b\a.js")", R"(Name="sub\b.js")", R"(Name="sub\c.js")"}));
  folder.Write("a=b/a.js", "");
  folder.Write("sub/b.js", "");
  folder.Write("sub/c.js", "");
  CommandResult result =
      folder.Run({"compile", kProjectName, "-o", kImageName, "--filter", "b.js=tr '\\0' '\\n' </proc/$$/environ"});
  ExpectSuccess(result);
  std::string name = Utf8(folder.Path()) + "/sub/";
  std::replace(name.begin(), name.end(), '/', '\\');
  const std::string image = ReadBytes(folder / kImageName);
  EXPECT_THAT(image, HasSubstr('\n' + name + "=2\n"));
  EXPECT_THAT(image, testing::Not(HasSubstr("a=b\\=")));
  EXPECT_THAT(image, HasSubstr("1 " + name.substr(0, name.size() - 4) + "a=b\\\n"));  // in the list
}

TEST(BadFilter, IsEndedByTheSignalsThatTheCompileIgnoresForItself) {
  const SleepingFilter folder;
  ExpectFailure(RunCommand(folder.CompileThroughShell("kill -XFSZ $$; exit 0")),
                "console.xml:2: code file 1, \"a.js\": its filter was ended by signal 25; ", "0x80004005");
  ExpectFailure(RunCommand(folder.CompileThroughShell("kill -PIPE $$; exit 0")),
                "console.xml:2: code file 1, \"a.js\": its filter was ended by signal 13; ", "0x80004005");
}

}  // namespace
}  // namespace ondrel::test
