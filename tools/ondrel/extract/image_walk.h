// A reading of an object image from its start to its end, in the order in which it was written.
#pragma once

#include <vector>

#include <ondrel/MMCObjectSet.h>

namespace ondrel::command {

/// Told of everything in an image. A loaded set files it by cookies, and does not list nodes with negative ones.
class ImageVisitor {
 public:
  virtual ~ImageVisitor() = default;
  virtual void OnNode(__int64 parent, CMMCObjectParams&& record) = 0;  ///< Parents before their children.
  virtual void OnDialog(CMMCObjectParams&& record) = 0;
  virtual void OnIconFile(__int64 cookie, const CMMCObjectIcon& icon) = 0;
  /// `fromMemory` for a file that the image's writer had without a path: those come last.
  virtual void OnCodeFile(__int64 cookie, const std::vector<char>& contents, bool fromMemory) = 0;
};

/// Reads an image from the start of `file`, to its end whatever its counts claim. Requires one that a set loads; raises
/// what the archive raises, should it have changed since.
void WalkImage(CFile& file, ImageVisitor& visitor);

}  // namespace ondrel::command
