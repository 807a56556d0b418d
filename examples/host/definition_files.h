// The two files of a definition, the XML project and the object image, as a host reads and writes them.
#pragma once

#include <filesystem>

#include <ondrel/MMCObjectSet.h>

namespace host {

/// An empty definition whose code files the library writes itself.
class Definition : public CMMCObjectSet {
 public:
  Definition();
};

/// A path as the library wants it. It takes the folder of a project from the last backslash on, on every system, and
/// names the files in it relative to it.
CString LibraryPath(const std::filesystem::path& path);

// Each of these raises the library's exceptions, or std::filesystem::filesystem_error. A file that is written is
// replaced whole, or stays as it was.

void LoadProject(CMMCObjectSet& definition, const std::filesystem::path& path);
void SaveProject(CMMCObjectSet& definition, const std::filesystem::path& path);
void LoadImage(CMMCObjectSet& definition, const std::filesystem::path& path);
void CompileImage(CMMCObjectSet& definition, const std::filesystem::path& path);

}  // namespace host
