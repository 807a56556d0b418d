// A tree made from XML text.
#pragma once

#include <string_view>

#include <ondrel/platform/narrow_text_reader.h>

#include "xml/tree.h"

namespace ondrel::platform {

/// The tree of a text, with one reference that is the caller's, or null for a text that is refused (see
/// xml_text_parser.h). It has the elements with their attributes; text, comments and processing instructions, which no
/// one asks a loaded document for, are checked and left out. Raises std::bad_alloc.
Tree* BuildTree(std::u16string_view text);
/// The same for text in code page 1252, which comes piece by piece. Raises what `read` raises, too.
Tree* BuildTree1252(const NarrowTextReader& read);

}  // namespace ondrel::platform
