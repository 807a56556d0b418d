// Pictures that ImageMagick draws, for icons made of them.
#pragma once

#include <string>
#include <vector>

#include "support/temporary_folder.h"

namespace ondrel::test {

/// Pictures of clouds in random colours, in every number of colours that makes a depth of its own, opaque, with holes
/// of random shapes, and with a random alpha. Each of these kinds in all sizes.
class DrawnPictures {
 public:
  /// Raises std::runtime_error when ImageMagick is not installed or fails.
  DrawnPictures();

  const TemporaryFolder& Folder() const { return m_folder; }
  /// PNG files, the names of those of one kind together.
  const std::vector<std::vector<std::string>>& Kinds() const { return m_kinds; }
  /// Icons that ImageMagick made of the same: for each kind one with PNG images of what is as large as 256 pixels, and
  /// one without.
  const std::vector<std::filesystem::path>& Icons() const { return m_icons; }

 private:
  TemporaryFolder m_folder;
  std::vector<std::vector<std::string>> m_kinds;
  std::vector<std::filesystem::path> m_icons;
};

/// The pictures of this test program, drawn on first use.
const DrawnPictures& AllDrawnPictures();

}  // namespace ondrel::test
