// Names and tags that a person gives, as a project is to hold them.
#pragma once

#include <string>

#include <ondrel/platform/framework/string.h>

#include "failure.h"

namespace ondrel::command {

/// The text of an argument. `what` is for the message: "the name". Raises Failure at `where` for text that XML cannot
/// carry, which could not be saved.
CString TextToWrite(const Location& where, const std::string& what, const std::string& argument);
/// The same of text that is there already.
void RequireCarried(const Location& where, const std::string& what, const CString& text);

/// The name of a node or dialog, which is not empty either.
CString NameToWrite(const Location& where, const std::string& argument);

}  // namespace ondrel::command
