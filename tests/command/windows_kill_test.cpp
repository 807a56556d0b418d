// The command ended from outside at any instant, on Windows: what it writes over is the old file or the new one, whole,
// and the next run is not disturbed. Every file has a name here, so those of ended runs stay behind.
#include <algorithm>
#include <atomic>
#include <chrono>
#include <iostream>
#include <random>
#include <thread>

#include <gtest/gtest.h>

#include "project_folder.h"

namespace ondrel::test {
namespace {

using std::chrono::milliseconds;

constexpr int kKills = 40;
constexpr int kWholeRuns = 10;  // one in so many runs is left to end
constexpr int kCodeFiles = 32;
constexpr std::size_t kCodeFileSize = 1024 * 1024;
const std::string kOldImage(10'000, 'o');

bool HoldsTemporary(const ProjectFolder& folder) { return folder.Listing().find(".tmp\n") != std::string::npos; }

long CountNames(const ProjectFolder& folder) {
  const std::string names = folder.Listing();
  return std::count(names.begin(), names.end(), '\n');
}

/// How long a run takes, and after which time it begins to write.
struct Times {
  milliseconds run;
  milliseconds beforeWriting;
};

Times Measure(const ProjectFolder& folder) {
  std::atomic<bool> ended = false;
  milliseconds beforeWriting{};
  CommandResult result;
  {
    const auto begin = std::chrono::steady_clock::now();
    const std::jthread watch([&] {
      while (!ended && !HoldsTemporary(folder)) {
      }
      beforeWriting = std::chrono::duration_cast<milliseconds>(std::chrono::steady_clock::now() - begin);
    });
    result = folder.Compile();
    ended = true;
  }
  ExpectSuccess(result);
  return {result.duration, std::min(beforeWriting, result.duration)};
}

TEST(Kill, CompileLeavesTheOldImageOrTheNewOne) {
  const ProjectFolder folder;
  std::string text = "<Project><FileGroup>";
  for (int file = 1; file <= kCodeFiles; ++file) {
    const std::string number = std::to_string(file);
    text += "<File Cookie=\"" + number + "\" Name=\"" + number + ".js\"/>";
    folder.Write(number + ".js", std::string(kCodeFileSize, static_cast<char>('a' + file % 26)));
  }
  folder.WriteProject(text + "</FileGroup></Project>");
  Measure(folder);  // the first run of a program takes longer than the others
  const Times times = Measure(folder);
  const std::string newImage = ReadBytes(folder / kImageName);

  const unsigned seed = std::random_device()();
  std::cout << "seed " << seed << '\n';
  std::mt19937 random(seed);
  int whileWriting = 0;
  int newInPlace = 0;
  for (int kill = 0; kill < kKills; ++kill) {
    SCOPED_TRACE("kill " + std::to_string(kill) + " of seed " + std::to_string(seed));
    folder.Write(kImageName, kOldImage);
    const long names = CountNames(folder);
    // Half of them at any instant of the run, half of them at any instant of the writing.
    const auto earliest = kill % 2 == 0 ? milliseconds(1) : times.beforeWriting;
    CommandLine commandLine = folder.Command({"compile", kProjectName, "-o", kImageName});
    commandLine.timeLimit =
        milliseconds(std::uniform_int_distribution<milliseconds::rep>(earliest.count(), times.run.count() + 1)(random));
    RunCommand(commandLine);
    const std::string bytes = ReadBytes(folder / kImageName);
    ASSERT_TRUE(bytes == kOldImage || bytes == newImage) << bytes.size() << " bytes";
    if (bytes == newImage) ++newInPlace;
    if (bytes == kOldImage && CountNames(folder) > names) ++whileWriting;
    if (kill % kWholeRuns == kWholeRuns - 1) {
      ExpectSuccess(folder.Compile());
      ASSERT_TRUE(ReadBytes(folder / kImageName) == newImage);
    }
  }
  std::cout << kKills << " kills: " << whileWriting << " while it writes, " << newInPlace
            << " when the new file was in its place. A run takes " << times.run.count() << " ms, the first "
            << times.beforeWriting.count() << " ms of it before it writes\n";
  // The kills must not all have come before the writing or after it.
  EXPECT_GE(whileWriting, kKills / 8);
}

}  // namespace
}  // namespace ondrel::test
