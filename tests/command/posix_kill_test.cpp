// The command killed at any instant: what it writes over is the old file or the new one, whole, and the next run is not
// disturbed. Only these systems tell how far a program has come when it is killed.
#include <sys/stat.h>
#include <unistd.h>
#include <algorithm>
#include <chrono>
#include <csignal>
#include <filesystem>
#include <iostream>
#include <map>
#include <random>

#include <gtest/gtest.h>

#include "project_folder.h"
#include "support/icon_bytes.h"
#include "support/posix/killed_command.h"
#include "support/posix/unnamed_files.h"

namespace ondrel::test {
namespace {

namespace fs = std::filesystem;
using std::chrono::nanoseconds;

// A sanitizer makes each run several times longer.
constexpr int kKills = kSanitized ? 60 : 300;
constexpr int kFewerKills = kSanitized ? 20 : 80;  // where it is the way of writing or the command that differs

constexpr int kCodeFiles = 12;
constexpr std::size_t kCodeFileSize = 256 * 1024;
constexpr std::size_t kLargeCodeFileSize = 16 * kCodeFileSize;  // so that the writing cannot be missed
constexpr int kIcons = 100;
constexpr std::chrono::seconds kLongestRun{30};
constexpr int kWholeRuns = 20;  // one in so many runs is left to end

/// Who may use a file.
struct Rights {
  mode_t mode;
  uid_t user;
  gid_t group;
  bool operator==(const Rights&) const = default;
};

std::ostream& operator<<(std::ostream& out, const Rights& rights) {
  return out << std::oct << rights.mode << std::dec << ' ' << rights.user << ':' << rights.group;
}

struct stat StatusOf(const fs::path& path) {
  struct stat status = {};
  if (stat(path.c_str(), &status) != 0) throw std::runtime_error("no such file: " + path.string());
  return status;
}

Rights RightsOf(const fs::path& path) {
  const struct stat status = StatusOf(path);
  return {status.st_mode & 07777, status.st_uid, status.st_gid};
}

/// A command that writes over files, killed again and again.
class KillRuns {
 public:
  KillRuns(const ProjectFolder& folder, CommandLine commandLine, std::vector<std::string> outputs)
      : m_folder(folder), m_commandLine(std::move(commandLine)), m_outputs(std::move(outputs)) {
    for (const std::string& output : m_outputs) PutOld(output);
    Measure();
    for (const std::string& output : m_outputs) {
      m_new[output] = ReadBytes(m_folder / output);
      if (m_new[output] == OldBytes(output)) throw std::runtime_error("nothing new in " + output);
      PutOld(output);
    }
    m_names = m_folder.Listing();
  }

  void Kill(int kills) {
    std::random_device device;
    const unsigned seed = device();
    std::cout << "seed " << seed << '\n';
    std::mt19937 random(seed);
    for (int kill = 0; kill < kills && !testing::Test::HasFailure(); ++kill) {
      SCOPED_TRACE("kill " + std::to_string(kill) + " of seed " + std::to_string(seed));
      // Half of them at any instant of the run, half of them at any instant of the writing.
      const bool inWriting = kill % 2 == 1;
      std::uniform_int_distribution<nanoseconds::rep> instant(0, (inWriting ? m_writing : m_running).count());
      KillOnce(inWriting, nanoseconds(instant(random)));
      if (kill % kWholeRuns == kWholeRuns - 1) RunToItsEnd();
    }
    RunToItsEnd();
    std::cout << kills << " kills: " << m_beforeWriting << " before the writing, " << m_whileWriting
              << " while it writes, " << m_afterWriting << " when a new file was in its place; " << LeftBehind()
              << " temporaries left behind. A run takes " << m_running.count() / 1000 << " us, of which it writes for "
              << m_writing.count() / 1000 << " us\n";
  }

  /// Killed between the making of the new file and its taking its place.
  int WhileWriting() const { return m_whileWriting; }
  long LeftBehind() const {
    const std::string listing = m_folder.Listing();
    return std::count(listing.begin(), listing.end(), '\n') - std::count(m_names.begin(), m_names.end(), '\n');
  }

 private:
  static std::string OldBytes(const std::string& output) { return std::string(10'000, 'o') + output; }

  void PutOld(const std::string& output) {
    const fs::path path = m_folder.Write(output, OldBytes(output));
    if (chmod(path.c_str(), 0640) != 0) throw std::runtime_error("cannot set permissions");
    // Only the superuser may give files away.
    constexpr uid_t kSomeUser = 12345;
    if (geteuid() == 0 && chown(path.c_str(), kSomeUser, kSomeUser) != 0) throw std::runtime_error("cannot set owner");
    m_rights = RightsOf(path);
  }

  /// The middle one of a few runs.
  void Measure() {
    std::array<nanoseconds, 5> running;
    std::array<nanoseconds, 5> writing;
    const fs::path first = m_folder / m_outputs.front();
    constexpr int kMostMissed = 50;  // on a busy machine a run may write while this program waits for its turn
    int missed = 0;
    for (std::size_t run = 0; run < running.size();) {
      const ino_t old = StatusOf(first).st_ino;
      KilledCommand command(m_commandLine);
      if (!command.WaitForWritingIn(m_folder.Path())) {
        if (++missed == kMostMissed) throw std::runtime_error("the command writes nothing");
        if (command.Wait() != 0) throw std::runtime_error("the command fails");
        continue;
      }
      const nanoseconds begin = command.Running();
      while (StatusOf(first).st_ino == old && command.Running() < kLongestRun) {
      }
      writing[run] = command.Running() - begin;
      if (command.Wait() != 0) throw std::runtime_error("the command fails");
      running[run] = command.Running();
      ++run;
    }
    std::ranges::sort(running);
    std::ranges::sort(writing);
    m_running = running[running.size() / 2];
    m_writing = writing[writing.size() / 2];
  }

  void KillOnce(bool inWriting, nanoseconds instant) {
    KilledCommand command(m_commandLine);
    if (inWriting && command.WaitForWritingIn(m_folder.Path())) instant += command.Running();
    command.WaitUntil(instant);
    const bool writing = command.IsWritingIn(m_folder.Path());
    command.End(SIGKILL);

    bool allOld = true;
    for (const std::string& output : m_outputs) {
      const std::string bytes = ReadBytes(m_folder / output);
      const bool isOld = bytes == OldBytes(output);
      EXPECT_TRUE(isOld || bytes == m_new[output]) << output << " is of " << bytes.size() << " bytes";
      EXPECT_EQ(RightsOf(m_folder / output), m_rights) << output;
      if (!isOld) PutOld(output);
      allOld = allOld && isOld;
    }
    if (!allOld) {
      ++m_afterWriting;
    } else if (writing) {
      ++m_whileWriting;
    } else {
      ++m_beforeWriting;
    }
  }

  /// Whatever earlier runs left.
  void RunToItsEnd() {
    ExpectSuccess(RunCommand(m_commandLine));
    for (const std::string& output : m_outputs) {
      EXPECT_TRUE(ReadBytes(m_folder / output) == m_new[output]) << output;
      EXPECT_EQ(RightsOf(m_folder / output), m_rights) << output;
      PutOld(output);
    }
  }

  const ProjectFolder& m_folder;
  const CommandLine m_commandLine;
  const std::vector<std::string> m_outputs;
  std::map<std::string, std::string> m_new;
  Rights m_rights{};
  std::string m_names;
  nanoseconds m_running{};
  nanoseconds m_writing{};
  int m_beforeWriting = 0;
  int m_whileWriting = 0;
  int m_afterWriting = 0;
};

/// A project whose image takes some tens of milliseconds to be written.
void WriteDefinitionOfManyFiles(const ProjectFolder& folder, std::size_t fileSize = kCodeFileSize) {
  std::string text = "<Project><FileGroup>";
  for (int file = 0; file < kCodeFiles; ++file) {
    const std::string number = std::to_string(file + 1);
    text += "<File Cookie=\"" + number + "\" Name=\"" + number + ".js\"/>";
    folder.Write(number + ".js", std::string(fileSize, static_cast<char>('a' + file % 26)));
  }
  folder.WriteProject(text + "</FileGroup></Project>");
}

// The kills must not all have come before the writing or after it.
void ExpectKillsWhileWriting(const KillRuns& runs, int kills) { EXPECT_GE(runs.WhileWriting(), kills / 8); }

TEST(Kill, CompileLeavesTheOldImageOrTheNewOne) {
  const ProjectFolder folder;
  WriteDefinitionOfManyFiles(folder);
  KillRuns runs(folder, folder.Command({"compile", kProjectName, "-o", kImageName}), {kImageName});
  runs.Kill(kKills);
  ExpectKillsWhileWriting(runs, kKills);
  // A file has a name of its own only from the last step but one to the last, which is short but on a busy disk.
  if (HoldsUnnamedFiles(folder.Path())) {
    EXPECT_LE(runs.LeftBehind(), kKills / 10);
  }
}

TEST(Kill, CompileInAFolderThatHoldsNoUnnamedFilesLeavesTheOldImageOrTheNewOne) {
  const ProjectFolder folder;
  WriteDefinitionOfManyFiles(folder);
  CommandLine commandLine = folder.Command({"compile", kProjectName, "-o", kImageName});
  commandLine.withoutUnnamedFiles = true;
  KillRuns runs(folder, commandLine, {kImageName});
  runs.Kill(kFewerKills);
  ExpectKillsWhileWriting(runs, kFewerKills);
  // The temporaries of killed runs stay, and were in nobody's way.
  EXPECT_GE(runs.LeftBehind(), runs.WhileWriting());
}

TEST(Kill, StripsLeavesTheOldPicturesOrTheNewOnes) {
  const ProjectFolder folder;
  folder.Write("i.ico", SmallIconFile());
  std::string text = "<Project><FileGroup>";
  for (int icon = 0; icon < kIcons; ++icon) {
    // Other spellings of one path are other files to the set.
    std::string path = "i.ico";
    for (int step = 0; step < icon; ++step) path.insert(0, "./");
    text += "<Icon Cookie=\"" + std::to_string(icon + 1) + "\" Name=\"" + path + "\"/>";
  }
  folder.WriteProject(text + "</FileGroup></Project>");
  KillRuns runs(folder,
                folder.Command({"strips", kProjectName, "--key", "FF00FF", "--small", "s.png", "--large", "l.png"}),
                {"s.png", "l.png"});
  runs.Kill(kFewerKills);
  ExpectKillsWhileWriting(runs, kFewerKills);
}

TEST(Kill, AnInterruptedCompileLeavesNothingBehind) {
  const ProjectFolder folder;
  if (!HoldsUnnamedFiles(folder.Path())) GTEST_SKIP() << "the disk of the tests holds no files without a name";
  WriteDefinitionOfManyFiles(folder, kLargeCodeFileSize);
  folder.Write(kImageName, "old");
  const std::string names = folder.Listing();
  for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
    KilledCommand command(folder.Command({"compile", kProjectName, "-o", kImageName}));
    EXPECT_TRUE(command.WaitForWritingIn(folder.Path()));
    EXPECT_EQ(command.End(signal), std::nullopt) << signal;
    EXPECT_EQ(ReadBytes(folder / kImageName), "old") << signal;
    EXPECT_EQ(folder.Listing(), names) << signal;
  }
}

}  // namespace
}  // namespace ondrel::test
