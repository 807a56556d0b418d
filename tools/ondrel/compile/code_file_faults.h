// What is wrong with code files that cannot go into an image.
#pragma once

#include <string>

#include "definition_file.h"
#include "failure.h"

namespace ondrel::command {

/// The failure for what is wrong with the code file of a path, with the line that names it: "its filter ...; correct
/// it".
Failure CodeFileFailure(const Definition& definition, const CString& path, const std::string& explanation,
                        HRESULT status);

/// Raises Failure for the first code file of the project that cannot go into an image.
void RequireCodeFiles(const Definition& definition);

/// Raises it for a code file with an icon file's cookie alone: the set looks for a path among the icon files first, and
/// would store the icon's bytes. Whatever else is wrong with code files comes up when the image is written.
void RequireOwnCookies(Definition& definition);

}  // namespace ondrel::command
