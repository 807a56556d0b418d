// The function behind one that a test program has put in its place.
#pragma once

namespace ondrel::test {

/// The address of a function of that name in the program's libraries, as their linker knows it: mangled. Raises
/// std::runtime_error when there is none.
void* NextFunction(const char* name);

}  // namespace ondrel::test
