// What the page of the report is given to show.
#pragma once

#include <string>

#include "check/remark.h"
#include "definition_file.h"

namespace ondrel::command {

/// One JSON object: file, form, limits, nodes, dialogs, icons, codeFiles, remarks, strips. ASCII without "<", so that
/// nothing in it can end the element that holds it. Nodes are a flat list, parents before their children, each with the
/// place of its parent in the list (-1 for none): its depth does not grow with the tree's. The same definition and
/// files give the same bytes.
std::string ReportData(Definition& definition, const std::vector<Remark>& remarks);

}  // namespace ondrel::command
