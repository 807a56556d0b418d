// Two kinds of work of which many of one kind go on at once, and never both kinds.
#pragma once

#include <condition_variable>
#include <mutex>

namespace ondrel::test {

/// A building with one open room at a time. Who comes to the other one waits until the open one is empty.
class Rooms {
 public:
  /// Being in a room.
  class Stay {
   public:
    Stay(Rooms& rooms, int room) : m_rooms(rooms) {
      std::unique_lock guard(m_rooms.m_mutex);
      m_rooms.m_left.wait(guard, [&] { return m_rooms.m_inside == 0 || m_rooms.m_open == room; });
      m_rooms.m_open = room;
      ++m_rooms.m_inside;
    }
    ~Stay() {
      const std::lock_guard guard(m_rooms.m_mutex);
      if (--m_rooms.m_inside == 0) m_rooms.m_left.notify_all();
    }
    Stay(const Stay&) = delete;
    Stay& operator=(const Stay&) = delete;

   private:
    Rooms& m_rooms;
  };

 private:
  std::mutex m_mutex;
  std::condition_variable m_left;
  int m_open = 0;
  int m_inside = 0;
};

}  // namespace ondrel::test
