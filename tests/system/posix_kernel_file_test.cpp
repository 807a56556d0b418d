// Reading and writing through descriptors: what is no handle, and the signals that may come in between.
#include <gtest/gtest.h>

#include <fcntl.h>
#include <pthread.h>
#include <unistd.h>
#include <atomic>
#include <csignal>
#include <cstdint>
#include <fstream>
#include <iterator>
#include <limits>
#include <string>
#include <thread>

#include "support/kernel_handles.h"
#include "support/posix/process.h"
#include "support/temporary_folder.h"

namespace ondrel::test {
namespace {

HANDLE HandleOf(std::intptr_t number) { return reinterpret_cast<HANDLE>(number); }

/// Whether the signal waits for this thread, which then has it no more.
bool TakePending(int signal) {
  sigset_t pending;
  sigpending(&pending);
  if (sigismember(&pending, signal) != 1) return false;
  sigset_t taken;
  sigemptyset(&taken);
  sigaddset(&taken, signal);
  const timespec atOnce{};
  return sigtimedwait(&taken, nullptr, &atOnce) == signal;
}

bool IsBlocked(int signal) {
  sigset_t blocked;
  pthread_sigmask(SIG_SETMASK, nullptr, &blocked);
  return sigismember(&blocked, signal) == 1;
}

/// The kernel's letter for what a thread of this process does: 'S' while it waits.
char StateOf(pid_t thread) {
  std::ifstream file("/proc/self/task/" + std::to_string(thread) + "/stat");
  const std::string line{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
  const std::size_t nameEnd = line.rfind(") ");
  return nameEnd == std::string::npos ? '?' : line[nameEnd + 2];
}

/// Blocks a signal for this thread while it lives.
class BlockedSignal {
 public:
  explicit BlockedSignal(int signal) {
    sigset_t blocked;
    sigemptyset(&blocked);
    sigaddset(&blocked, signal);
    pthread_sigmask(SIG_BLOCK, &blocked, &m_before);
  }
  ~BlockedSignal() { pthread_sigmask(SIG_SETMASK, &m_before, nullptr); }

 private:
  sigset_t m_before;
};

TEST(KernelFile, NumbersThatNoDescriptorHasAreInvalidHandles) {
  const TemporaryFolder folder;
  const KernelHandle open = OpenToWrite(folder / "a.bin");
  const auto number = reinterpret_cast<std::intptr_t>(open.Get());
  for (const std::intptr_t none : {std::intptr_t{-1}, std::intptr_t{-2}, number + (std::intptr_t{1} << 32),
                                   std::numeric_limits<std::intptr_t>::min() + number}) {
    DWORD count = 9;
    EXPECT_FALSE(WriteFile(HandleOf(none), "x", 1, &count, nullptr)) << none;
    EXPECT_EQ(GetLastError(), ERROR_INVALID_HANDLE) << none;
    EXPECT_EQ(count, 0U) << none;
    char byte = '.';
    count = 9;
    EXPECT_FALSE(ReadFile(HandleOf(none), &byte, 1, &count, nullptr)) << none;
    EXPECT_EQ(GetLastError(), ERROR_INVALID_HANDLE) << none;
    EXPECT_EQ(count, 0U) << none;
  }
  EXPECT_EQ(ReadBytes(folder / "a.bin"), "");
}

TEST(KernelFile, CallsThatWouldRunInTheBackgroundAreRefused) {
  const TemporaryFolder folder;
  const KernelHandle handle = OpenToWrite(folder / "a.bin");
  DWORD count = 0;
  EXPECT_FALSE(WriteFile(handle.Get(), "x", 1, &count, reinterpret_cast<OVERLAPPED*>(&count)));
  EXPECT_EQ(GetLastError(), ERROR_INVALID_PARAMETER);
  EXPECT_FALSE(WriteFile(handle.Get(), "x", 1, nullptr, nullptr));
  EXPECT_EQ(GetLastError(), ERROR_INVALID_PARAMETER);
  EXPECT_EQ(ReadBytes(folder / "a.bin"), "");
}

TEST(KernelFile, AFullDiskIsTold) {
  const KernelHandle full(HandleOf(open("/dev/full", O_WRONLY | O_CLOEXEC)));
  DWORD count = 9;
  EXPECT_FALSE(WriteFile(full.Get(), "x", 1, &count, nullptr));
  EXPECT_EQ(GetLastError(), ERROR_DISK_FULL);
  EXPECT_EQ(count, 0U);
}

TEST(KernelFile, ADiskThatIsFullHalfWayThroughAWriteIsTold) {
  const TemporaryFolder folder;
  const KernelHandle handle = OpenToWrite(folder / "a.bin");
  DWORD count = 0;
  {
    const auto before = std::signal(SIGXFSZ, SIG_IGN);  // the limit is then an error of the write
    const ResourceLimit limit(RLIMIT_FSIZE, 4);
    EXPECT_FALSE(WriteFile(handle.Get(), "abcdef", 6, &count, nullptr));
    EXPECT_EQ(GetLastError(), ERROR_DISK_FULL);
    std::signal(SIGXFSZ, before);
  }
  EXPECT_EQ(count, 4U);
  EXPECT_EQ(ReadBytes(folder / "a.bin"), "abcd");
}

TEST(KernelFile, AWriteGoesOnUntilEverythingIsTaken) {
  const KernelPipe pipe;
  const std::string bytes(1 << 20, 'x');  // more than a pipe holds
  std::string arrived;
  std::thread reader([&] {
    std::string part(1000, '.');
    while (arrived.size() < bytes.size()) {
      DWORD count = 0;
      if (!ReadFile(pipe.reading.Get(), part.data(), static_cast<DWORD>(part.size()), &count, nullptr)) break;
      arrived.append(part, 0, count);
    }
  });
  DWORD count = 0;
  EXPECT_TRUE(WriteFile(pipe.writing.Get(), bytes.data(), static_cast<DWORD>(bytes.size()), &count, nullptr));
  reader.join();
  EXPECT_EQ(count, bytes.size());
  EXPECT_TRUE(arrived == bytes);
}

TEST(KernelFile, AHandleThatDoesNotWaitTakesWhatItHasRoomForAndThenNothing) {
  const KernelPipe pipe;
  const int writing = static_cast<int>(reinterpret_cast<std::intptr_t>(pipe.writing.Get()));
  ASSERT_EQ(fcntl(writing, F_SETFL, O_NONBLOCK), 0);
  const std::string bytes(10 << 20, 'x');
  DWORD count = 0;
  EXPECT_TRUE(WriteFile(pipe.writing.Get(), bytes.data(), static_cast<DWORD>(bytes.size()), &count, nullptr));
  EXPECT_GT(count, 0U);
  EXPECT_LT(count, bytes.size());
  EXPECT_FALSE(WriteFile(pipe.writing.Get(), bytes.data(), static_cast<DWORD>(bytes.size()), &count, nullptr));
  EXPECT_EQ(GetLastError(), ERROR_GEN_FAILURE);
  EXPECT_EQ(count, 0U);
}

TEST(KernelFile, NothingIsReadAndWrittenWhenNothingIsAskedFor) {
  const KernelPipe pipe;
  DWORD count = 9;
  EXPECT_TRUE(WriteFile(pipe.writing.Get(), nullptr, 0, &count, nullptr));
  EXPECT_EQ(count, 0U);
  count = 9;
  EXPECT_TRUE(ReadFile(pipe.reading.Get(), nullptr, 0, &count, nullptr));
  EXPECT_EQ(count, 0U);
}

std::atomic<int> handledSignals = 0;

TEST(KernelFile, AReadThatASignalInterruptsIsRepeated) {
  struct sigaction handler = {};
  handler.sa_handler = [](int) { ++handledSignals; };  // without SA_RESTART, so the system's call ends
  struct sigaction before = {};
  ASSERT_EQ(sigaction(SIGUSR1, &handler, &before), 0);
  const KernelPipe pipe;
  std::atomic<pid_t> readerId = 0;
  std::atomic<bool> done = false;
  char byte = '.';
  DWORD count = 9;
  BOOL success = FALSE;
  std::thread reader([&] {
    readerId = gettid();
    success = ReadFile(pipe.reading.Get(), &byte, 1, &count, nullptr);
    done = true;
  });
  const auto waitUntilItReads = [&] {
    while (!done && (readerId == 0 || StateOf(readerId) != 'S')) std::this_thread::yield();
  };
  handledSignals = 0;
  for (int signal = 1; signal <= 3; ++signal) {
    waitUntilItReads();
    pthread_kill(reader.native_handle(), SIGUSR1);
    while (handledSignals < signal && !done) std::this_thread::yield();
  }
  waitUntilItReads();
  EXPECT_FALSE(done) << "a signal ended the read";
  DWORD written = 0;
  EXPECT_TRUE(WriteFile(pipe.writing.Get(), "x", 1, &written, nullptr));
  reader.join();
  EXPECT_TRUE(success);
  EXPECT_EQ(count, 1U);
  EXPECT_EQ(byte, 'x');
  sigaction(SIGUSR1, &before, nullptr);
}

TEST(KernelFile, TheSignalOfAPipeThatNobodyReadsIsTakenAndNothingElseChanges) {
  KernelPipe pipe;
  pipe.reading.Close();
  DWORD count = 9;
  EXPECT_FALSE(WriteFile(pipe.writing.Get(), "x", 1, &count, nullptr));
  EXPECT_EQ(GetLastError(), ERROR_NO_DATA);
  EXPECT_EQ(count, 0U);
  EXPECT_FALSE(IsBlocked(SIGPIPE));

  const BlockedSignal blocked(SIGPIPE);
  EXPECT_FALSE(WriteFile(pipe.writing.Get(), "x", 1, &count, nullptr));
  EXPECT_FALSE(TakePending(SIGPIPE)) << "the write's own signal is gone";
  EXPECT_TRUE(IsBlocked(SIGPIPE));
}

TEST(KernelFile, ASignalThatWaitedBeforeGoesOnWaiting) {
  KernelPipe pipe;
  const BlockedSignal blocked(SIGPIPE);
  pthread_kill(pthread_self(), SIGPIPE);
  DWORD count = 0;
  EXPECT_TRUE(WriteFile(pipe.writing.Get(), "x", 1, &count, nullptr));
  pipe.reading.Close();
  EXPECT_FALSE(WriteFile(pipe.writing.Get(), "x", 1, &count, nullptr));
  EXPECT_TRUE(TakePending(SIGPIPE));
}

}  // namespace
}  // namespace ondrel::test
