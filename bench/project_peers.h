// Libraries that people would read and write a project file with.
#pragma once

#include <string>
#include <string_view>

#include "model.h"

namespace ondrel::bench {

// Each fills an empty model from a project file, and raises std::runtime_error for one that it refuses.

/// libxml2: parsed to its tree, which is walked.
void LoadWithLibxml2(std::string_view bytes, Model& model);
/// pugixml: parsed to its tree in place, which changes the bytes; the tree is walked.
void LoadWithPugixml(std::string& bytes, Model& model);

/// Expat: only parsed, with handlers that do nothing.
void ScanWithExpat(std::string_view bytes);

/// pugixml: the tree that the project file has is built and written with its indentation. Line ends are those of the
/// library.
std::string SaveWithPugixml(const Model& model);

}  // namespace ondrel::bench
