// How people name the nodes and dialogs of a definition.
#pragma once

#include <string>

#include "definition_file.h"

namespace ondrel::command {

/// The cookie of the node or dialog that `name` (UTF-8) names. It is a cookie, in decimal digits with or without "-";
/// or the names of nodes from a top-level node on, "Disk Console/Volumes/Quotas", where "\/" stands for a "/" in a name
/// and
/// "\\" for a backslash; or, where no node has that path, the name of a dialog. What is made of digits alone is always
/// taken for a cookie. Raises Failure for a name that nothing has, and for one that several nodes or dialogs have.
__int64 FindObjectNamed(Definition& definition, const std::string& name);

bool IsDialog(CMMCObjectSet& set, __int64 cookie);

/// "node 17" or "dialog 17".
std::string ObjectLabel(CMMCObjectSet& set, __int64 cookie);
/// The same with the name behind it: "node 17: Disks".
std::string ObjectLine(CMMCObjectSet& set, __int64 cookie);

}  // namespace ondrel::command
