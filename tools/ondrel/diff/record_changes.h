// What changed in a record.
#pragma once

#include <string>

#include <ondrel/MMCObjectParams.h>

namespace ondrel::command {

/// "name "A" -> "B", icon 5 -> 6"; empty when nothing differs. Values that neither persistent form has for the record's
/// type are left out.
std::string RecordChanges(const CMMCObjectParams& older, const CMMCObjectParams& newer);

}  // namespace ondrel::command
