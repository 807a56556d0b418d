// The sections of an image, one after the other.
#include "extract/image_walk.h"

#include <utility>

namespace ondrel::command {
namespace {

constexpr int kWalkBuffer = 64 * 1024;

ULONGLONG ReadCount(CVellum& archive) {
  ULONGLONG count = 0;
  archive >> count;
  return count;
}

CMMCObjectParams ReadRecord(CVellum& archive) {
  CMMCObjectParams record;
  record.Deserialize(archive);
  return record;
}

void WalkImageNodes(CVellum& archive, ImageVisitor& visitor) {
  struct Level {
    __int64 parent;
    ULONGLONG left;  ///< Nodes that are still to come.
  };
  std::vector<Level> open{{CMMCObjectSet::RootNode, ReadCount(archive)}};
  while (!open.empty()) {
    if (open.back().left == 0) {
      open.pop_back();
      continue;
    }
    --open.back().left;
    CMMCObjectParams record = ReadRecord(archive);
    const __int64 cookie = record.GetCookie();
    visitor.OnNode(open.back().parent, std::move(record));
    open.push_back({cookie, ReadCount(archive)});
  }
}

}  // namespace

void WalkImage(CFile& file, ImageVisitor& visitor) {
  file.Seek(0, CFile::begin);
  CVellum archive(&file, CArchive::load, kWalkBuffer);
  DWORD setVersion = 0;
  DWORD recordVersion = 0;
  archive >> setVersion >> recordVersion;
  WalkImageNodes(archive, visitor);
  for (ULONGLONG left = ReadCount(archive); left > 0; --left) visitor.OnDialog(ReadRecord(archive));
  for (ULONGLONG left = ReadCount(archive); left > 0; --left) {
    __int64 cookie = 0;
    archive >> cookie;
    CMMCObjectIcon icon;
    icon.Deserialize(archive);
    visitor.OnIconFile(cookie, icon);
  }
  std::vector<char> contents;
  for (const bool fromMemory : {false, true}) {
    for (ULONGLONG left = ReadCount(archive); left > 0; --left) {
      __int64 cookie = 0;
      archive >> cookie;
      archive.Read(contents);
      visitor.OnCodeFile(cookie, contents, fromMemory);
    }
  }
}

}  // namespace ondrel::command
