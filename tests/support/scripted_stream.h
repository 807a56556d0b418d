// A stream over bytes in memory whose reads and writes fail, fall short or lie when a test says so.
#pragma once

#include <algorithm>
#include <functional>
#include <limits>
#include <map>
#include <string>
#include <utility>

#include "support/counted_stream.h"

namespace ondrel::test {

/// Reads give the bytes in order; writes append to them.
class ScriptedStream final : public CountedStream {
 public:
  ScriptedStream() = default;
  explicit ScriptedStream(std::string bytes) : m_bytes(std::move(bytes)) {}

  const std::string& Bytes() const { return m_bytes; }
  int Reads() const { return m_reads; }
  int Writes() const { return m_writes; }
  /// What the last read or write was asked to move.
  ULONG LastCount() const { return m_lastCount; }

  /// Changes what follows here before the read or write of that number, from 1, counted together.
  void Before(int number, std::function<void()> change) { m_changes[number] = std::move(change); }

  /// The status of every read and write from now on. A failing one moves nothing and tells no count.
  void Answer(HRESULT status) { m_status = status; }
  /// The most bytes that one read or write moves.
  void Shorten(ULONG limit) { m_limit = limit; }
  /// What reads and writes claim to have moved beyond what they did.
  void Exaggerate(ULONG surplus) { m_surplus = surplus; }

  HRESULT STDMETHODCALLTYPE Read(void* buffer, ULONG count, ULONG* read) override {
    ++m_reads;
    Change();
    m_lastCount = count;
    if (FAILED(m_status)) return m_status;
    const auto left = static_cast<ULONG>(m_bytes.size() - m_position);
    const ULONG moved = std::min({count, m_limit, left});
    m_bytes.copy(static_cast<char*>(buffer), moved, m_position);
    m_position += moved;
    *read = moved + m_surplus;
    return m_status;
  }
  HRESULT STDMETHODCALLTYPE Write(const void* buffer, ULONG count, ULONG* written) override {
    ++m_writes;
    Change();
    m_lastCount = count;
    if (FAILED(m_status)) return m_status;
    const ULONG moved = std::min(count, m_limit);
    m_bytes.append(static_cast<const char*>(buffer), moved);
    *written = moved + m_surplus;
    return m_status;
  }

 private:
  void Change() {
    if (const auto change = m_changes.find(m_reads + m_writes); change != m_changes.end()) change->second();
  }

  std::string m_bytes;
  std::size_t m_position = 0;
  int m_reads = 0;
  int m_writes = 0;
  ULONG m_lastCount = 0;
  HRESULT m_status = S_OK;
  ULONG m_limit = std::numeric_limits<ULONG>::max();
  ULONG m_surplus = 0;
  std::map<int, std::function<void()>> m_changes;
};

}  // namespace ondrel::test
