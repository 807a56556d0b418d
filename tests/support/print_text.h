// How failing tests show wide text.
#pragma once

#include <ostream>

#include <ondrel/platform/framework/string.h>

inline void PrintTo(const CString& text, std::ostream* out) {
  *out << '"' << ondrel::platform::ToUtf8(text) << "\" (" << text.GetLength() << " units)";
}
