// What the descriptions of the commands that change a project have in common.
#pragma once

#include "edit/project_edit.h"
#include "edit/record_change.h"
#include "usage/usage.h"

namespace ondrel::command {

/// The operand PROJECT and the options --dry-run, --lossy and --raw-text.
void AddEdit(CLI::App& command, EditRequest& request);
/// The operand PROJECT of a file that is not there yet, and the option --dry-run.
void AddNewFile(CLI::App& command, EditRequest& request);

/// The options that change a record, but for its name.
void AddRecordChange(CLI::App& command, RecordChange& change);

/// What the names of files may be, for closing texts.
inline constexpr const char* kFileNames =
    "FILE is a file that the project has, added with \"ondrel add\": its cookie, its path as \"ondrel show\" tells\n"
    "it, or its path from the working folder; \"none\" takes it away. An option that may be given several times\n"
    "replaces the whole list.";

/// What NODE may be, for closing texts.
inline constexpr const char* kNodeNames =
    "NODE is a cookie, or the names from a top-level node on: \"Disk Console/Volumes/Quotas\". In a name, \"\\/\"\n"
    "stands for \"/\" and \"\\\\\" for \"\\\".";

}  // namespace ondrel::command
