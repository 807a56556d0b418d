// Sets of random objects, within what one of the persistent forms carries.
#pragma once

#include <random>

#include <ondrel/MMCObjectSet.h>

#include "support/temporary_folder.h"

namespace ondrel::test {

/// The form that a random set is to survive.
enum class Form {
  /// Both. Text is ASCII with tabs and line ends, unknown types are type 3, no list has a file of cookie 0, dialogs
  /// have
  /// no child queries, and every file is on disk.
  projectAndImage,
  /// The object image: any UTF-16 units, any types, any cookies, files on disk and in memory.
  image,
};

/// Fills an empty set. Files are written below `folder`; the code files' transforms append a mark of their own.
void FillRandomly(CMMCObjectSet& set, std::mt19937& random, Form form, const TemporaryFolder& folder);

/// The transform of a random set's code file: appends the length of the path and the number of variables, a byte each.
CMMCObjectSet::Transform MarkingTransform(const WCHAR* path);

}  // namespace ondrel::test
