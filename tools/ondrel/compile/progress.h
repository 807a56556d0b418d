// How far a long compile is, on a terminal.
#pragma once

#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <mutex>
#include <optional>
#include <string>
#include <thread>

namespace ondrel::command {

/// A line on standard error that is written over and over, and erased at the end. It is there only on a terminal, and
/// only when the object has lived for a second.
class Progress {
 public:
  /// `project` of `projects`, from 1.
  Progress(std::size_t project, std::size_t projects);
  ~Progress();
  Progress(const Progress&) = delete;
  Progress& operator=(const Progress&) = delete;

  /// Whether anyone may see it: otherwise nothing needs to be told.
  bool IsWanted() const { return m_writer.has_value(); }
  /// What is being done is the code file `number` of `count`, from 1.
  void BeginCodeFile(std::size_t number, std::size_t count);

 private:
  void Write();

  std::string m_label;  ///< What every line begins with.
  std::mutex m_mutex;
  std::condition_variable m_ended;
  bool m_isEnded = false;
  std::string m_step;
  std::optional<std::jthread> m_writer;
};

}  // namespace ondrel::command
