// Contract: what a file offers for an icon, for tools that explain a file to people.
#pragma once

#include <cstddef>
#include <vector>

#include <ondrel/platform/framework/string.h>

namespace ondrel::platform {

/// One of the images that an icon can be made from. Its own header says this, where it can be read.
struct IconOffer {
  LONG width = 0;  ///< In pixels, as the height.
  LONG height = 0;
  WORD bitsPerPixel = 0;  ///< 32 for every PNG image.
  bool isPng = false;
};

enum class IconContainer {
  iconFile,
  program,  ///< An executable or a library.
};

struct IconScan {
  IconContainer container = IconContainer::iconFile;
  std::vector<IconOffer> offers;  ///< In the order of the file; of a program those of its first icon.
  std::size_t large = 0;          ///< The offer that the large icon is made from, by its index.
  std::size_t smallIcon = 0;      ///< And the small one.
};

/// Finds what the first icon of a file is made from, by the rule of graphics.h. S_OK, or the status that
/// ExtractFirstIcon gives for a file that cannot be read, holds no icon, or whose directory of images is damaged. An
/// image that is damaged itself is no failure here. Raises std::bad_alloc.
HRESULT ScanIcon(const CString& path, IconScan& scan);

}  // namespace ondrel::platform
