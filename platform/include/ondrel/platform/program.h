// Contract: what a command-line program needs of its system beyond the standard library.
#pragma once

#include <string>
#include <vector>

#include <ondrel/platform/framework/file.h>

namespace ondrel::platform {

/// The program's arguments, without its own name, in UTF-8. Where the system's arguments are plain bytes, bytes that
/// are no UTF-8 stay as they are.
std::vector<std::string> ProgramArguments(int argc, char** argv);

/// Makes the components of com.h and xml.h usable on this thread while it lives. Raises COleException.
class ComponentScope {
 public:
  ComponentScope();
  ~ComponentScope();
  ComponentScope(const ComponentScope&) = delete;
  ComponentScope& operator=(const ComponentScope&) = delete;
};

/// A path argument as wide text, and back. Bytes that are no UTF-8 become the lone surrogates DC80 to DCFF and back, so
/// any file of the system can be named.
CString PathFromUtf8(const std::string& path);
std::string PathToUtf8(const CString& path);

/// The path from the root of the system, without "." and ".." parts, with `\` between its parts.
CString FullPath(const CString& path);

/// Wide text as UTF-8 for people; a lone surrogate becomes U+FFFD.
std::string ToUtf8(const CString& text);

/// A file that takes its place only when it is complete. It is written beside `path` under a name of its own; Commit
/// puts it on the disk and then in place of whatever was at `path`. Without Commit it is removed and `path` stays as it
/// was. Failures raise CFileException with the name `path`.
class ReplacementFile : public CFile {
 public:
  explicit ReplacementFile(const CString& path);
  ~ReplacementFile() override;

  void Commit();

 private:
  CString m_target;
  CString m_temporary;
  bool m_committed = false;
};

}  // namespace ondrel::platform
