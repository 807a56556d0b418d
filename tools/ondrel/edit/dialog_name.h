// Names of dialogs, which no two of them share.
#pragma once

#include <optional>

#include "definition_file.h"

namespace ondrel::command {

/// Refuses the name of a dialog that another one than `dialog` has: a project with two of them does not load. Raises
/// Failure.
void RequireFreeDialogName(Definition& definition, const CString& name, std::optional<__int64> dialog);

}  // namespace ondrel::command
