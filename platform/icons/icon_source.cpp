// Reading what an icon is made from.
#include "icons/icon_source.h"

#include <algorithm>

#include "icons/executable.h"
#include "icons/icon_file.h"
#include "icons/icon_limits.h"
#include "icons/icon_resources.h"
#include "icons/source_file.h"

namespace ondrel::platform {
namespace {

// A file that begins as an icon file and is longer than any is a damaged icon.
IconStatus ReadIconFile(const SourceFile& file, IconSource& source) {
  if (file.Length() > kMostIconFileBytes) return kIconDamaged;
  source.bytes.resize(static_cast<std::size_t>(file.Length()));
  if (const IconStatus status = file.Read(0, source.bytes); !status.IsSuccess()) return status;
  return {.icon = ReadIconDirectory(source.bytes, source.entries)};
}

IconStatus ReadProgram(const SourceFile& file, IconSource& source) {
  Executable program(file);
  if (const IconStatus status = program.ReadHeaders(); !status.IsSuccess()) return status;
  return ReadIconResources(file, program, source);
}

}  // namespace

IconStatus ReadIconSource(LPCWSTR path, IconSource& source) {
  const SourceFile file(path);
  if (file.Status() != ERROR_SUCCESS) return {.file = file.Status()};
  constexpr std::size_t kStartBytes = std::max(kIconFileHeaderBytes, kExecutableMarkBytes);
  source.bytes.resize(static_cast<std::size_t>(std::min<ULONGLONG>(kStartBytes, file.Length())));
  if (const IconStatus status = file.Read(0, source.bytes); !status.IsSuccess()) return status;
  source.isProgram = IsExecutable(source.bytes);
  if (source.isProgram) return ReadProgram(file, source);
  return IsIconFile(source.bytes) ? ReadIconFile(file, source) : kNoIconThere;
}

}  // namespace ondrel::platform
