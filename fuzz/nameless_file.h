// A file of the system that lies on no disk, for what takes a path and nothing else.
#pragma once

#include <string_view>

#include <ondrel/platform/framework/string.h>

namespace ondrel::fuzz {

/// One file whose bytes are replaced again and again.
class NamelessFile {
 public:
  NamelessFile();
  ~NamelessFile();
  NamelessFile(const NamelessFile&) = delete;
  NamelessFile& operator=(const NamelessFile&) = delete;

  void Replace(std::string_view bytes);
  /// Opens the file as long as this lives.
  const CString& Path() const { return m_path; }

 private:
  int m_descriptor;
  CString m_path;
};

}  // namespace ondrel::fuzz
