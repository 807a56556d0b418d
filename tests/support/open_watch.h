// Sees whether anybody opens and reads the files of a folder.
#pragma once

#include <filesystem>
#include <memory>

namespace ondrel::test {

/// Watches from its making on. Raises std::runtime_error when the system cannot watch.
class OpenWatch {
 public:
  explicit OpenWatch(const std::filesystem::path& folder);
  ~OpenWatch();
  OpenWatch(const OpenWatch&) = delete;
  OpenWatch& operator=(const OpenWatch&) = delete;

  /// Whether a file in the folder has been read.
  bool HasSeen() const;

 private:
  struct Watch;
  std::unique_ptr<Watch> m_watch;
};

}  // namespace ondrel::test
