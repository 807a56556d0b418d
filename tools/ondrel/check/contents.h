// What there is to check, alike for both forms.
#pragma once

#include "definition_file.h"
#include "project_contents.h"

namespace ondrel::command {

/// The contents of an image, in the order nodes, dialogs, icons, code files. Images have no lines: what stands for them
/// is the place in that order, from 1.
ProjectContents ContentsOfImage(CMMCObjectSet& set);

}  // namespace ondrel::command
