// Text from files and arguments, made safe to show on a terminal.
#pragma once

#include <string>
#include <string_view>

#include <ondrel/platform/framework/string.h>

namespace ondrel::command {

/// UTF-8 text in which everything that could move the cursor, break the line or turn the reading direction is written
/// as an escape: \n, \r, \t, \x1B, \u202E.
std::string Printable(std::string_view utf8);
std::string Printable(const CString& text);

/// A path argument as it was given.
std::string PrintablePath(const std::string& argument);

/// The text, cut behind a whole character when it is long, so that it does not bury what stands around it.
std::string Shortened(const std::string& utf8);

/// A value between quotes, cut when it is long.
std::string Quoted(const CString& value);

/// "1 node", "2 nodes".
std::string Counted(unsigned long long count, const char* one, const char* many);

/// "32 x 16": a width and a height in pixels.
std::string SizeText(long long width, long long height);

}  // namespace ondrel::command
