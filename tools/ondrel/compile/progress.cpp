// A thread of its own writes the line: what takes long may be a single file.
#include "compile/progress.h"

#include <cstdio>

#include <ondrel/platform/program.h>

namespace ondrel::command {
namespace {

constexpr std::chrono::seconds kPatience{1};
constexpr std::chrono::milliseconds kInterval{200};

}  // namespace

Progress::Progress(std::size_t project, std::size_t projects) : m_label("ondrel: "), m_step("reading the project") {
  if (projects > 1) m_label += "project " + std::to_string(project) + " of " + std::to_string(projects) + ", ";
  if (platform::IsTerminal(platform::StandardStream::errors)) m_writer.emplace([this] { Write(); });
}

Progress::~Progress() {
  const std::lock_guard lock(m_mutex);
  m_isEnded = true;
  m_ended.notify_all();
}

void Progress::BeginCodeFile(std::size_t number, std::size_t count) {
  const std::lock_guard lock(m_mutex);
  m_step = "code file " + std::to_string(number) + " of " + std::to_string(count);
}

void Progress::Write() {
  std::unique_lock lock(m_mutex);
  const auto isEnded = [this] { return m_isEnded; };
  std::string shown;
  for (bool ended = m_ended.wait_for(lock, kPatience, isEnded); !ended;
       ended = m_ended.wait_for(lock, kInterval, isEnded)) {
    std::string line = m_label + m_step;
    if (line == shown) continue;
    const std::size_t rest = shown.size() > line.size() ? shown.size() - line.size() : 0;
    std::fprintf(stderr, "\r%s%s", line.c_str(), std::string(rest, ' ').c_str());
    std::fflush(stderr);
    shown = std::move(line);
  }
  if (shown.empty()) return;
  std::fprintf(stderr, "\r%s\r", std::string(shown.size(), ' ').c_str());
  std::fflush(stderr);
}

}  // namespace ondrel::command
