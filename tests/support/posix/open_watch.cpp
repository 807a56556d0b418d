#include "support/open_watch.h"

#include <poll.h>
#include <sys/inotify.h>
#include <unistd.h>

#include <stdexcept>

namespace ondrel::test {

struct OpenWatch::Watch {
  explicit Watch(const std::filesystem::path& folder) : queue(inotify_init1(IN_NONBLOCK)) {
    if (inotify_add_watch(queue, folder.c_str(), IN_OPEN | IN_ACCESS) < 0) {
      close(queue);
      throw std::runtime_error("cannot watch " + folder.string());
    }
  }
  ~Watch() { close(queue); }
  Watch(const Watch&) = delete;
  Watch& operator=(const Watch&) = delete;

  int queue;
};

OpenWatch::OpenWatch(const std::filesystem::path& folder) : m_watch(std::make_unique<Watch>(folder)) {}
OpenWatch::~OpenWatch() = default;

bool OpenWatch::HasSeen() const {
  pollfd queue{m_watch->queue, POLLIN, 0};
  return poll(&queue, 1, 0) > 0;
}

}  // namespace ondrel::test
