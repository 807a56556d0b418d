// Archives over memory: the bytes that stores leave, and loads from bytes that a test wrote by hand.
#pragma once

#include <cstdio>
#include <string>
#include <string_view>

#include <ondrel/platform/vellum.h>

namespace ondrel::test {

/// Bytes as "FF 00 1A", for comparisons that show what differs.
inline std::string Hex(std::string_view bytes) {
  std::string text;
  for (const char byte : bytes) {
    char digits[4];
    std::snprintf(digits, sizeof digits, "%02X", static_cast<unsigned char>(byte));
    if (!text.empty()) text += ' ';
    text += digits;
  }
  return text;
}

inline std::string BytesOf(const CMemFile& file) {
  if (file.GetLength() == 0) return {};
  return {reinterpret_cast<const char*>(file.GetBytes()), static_cast<std::size_t>(file.GetLength())};
}

/// The bytes that `store` leaves in the file of a storing archive.
template <class Store>
std::string Stored(Store store, int bufferSize = 4096) {
  CMemFile file;
  CVellum archive(&file, CArchive::store, bufferSize);
  store(archive);
  archive.Close();
  return BytesOf(file);
}

/// A loading archive over a copy of `bytes`.
class LoadingArchive {
 public:
  explicit LoadingArchive(std::string_view bytes, int bufferSize = 4096)
      : m_file(bytes.data(), static_cast<UINT>(bytes.size())), m_archive(&m_file, CArchive::load, bufferSize) {}

  CVellum& operator*() { return m_archive; }
  CVellum* operator->() { return &m_archive; }
  /// The bytes of the file that no load has used yet.
  ULONGLONG Unused() {
    m_archive.Flush();
    return m_file.GetLength() - m_file.GetPosition();
  }

 private:
  CMemFile m_file;
  CVellum m_archive;
};

}  // namespace ondrel::test
