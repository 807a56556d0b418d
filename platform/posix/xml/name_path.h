// Paths of names, as they lead from a node to its descendants, and the table of those that were asked for lately.
#pragma once

#include <array>
#include <cstddef>
#include <memory>
#include <string>
#include <vector>

#include "xml/names.h"

namespace ondrel::platform {

/// A relative path: "Name" or "Name/Name". A name that the tree does not have is null and matches nothing.
using NamePath = std::vector<const Name*>;

/// A path and the text that it was read from: whoever reads a document asks for few paths, over and over.
struct KnownPath {
  std::u16string text;
  std::shared_ptr<const NamePath> names;
  bool isComplete = false;    // no name is null
  std::size_t nameCount = 0;  // of the tree, when the path was read
};

using KnownPaths = std::array<KnownPath, 16>;

}  // namespace ondrel::platform
