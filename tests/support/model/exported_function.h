// The library's functions as a host without its headers finds them.
#pragma once

namespace ondrel::test {

/// The address of a function that the library exports under exactly this name; null when there is none.
void* ExportedFunction(const char* name);

}  // namespace ondrel::test
