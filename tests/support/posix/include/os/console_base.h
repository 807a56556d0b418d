// What a console has beside its message box, refused: a base for consoles of the tests' own.
#pragma once

#include <ondrel/platform/console.h>

namespace ondrel::test {

using ConsoleBase = IConsole3;  // there is nothing else here

/// Whether VariantChangeType takes values by reference.
inline constexpr bool kConvertsReferences = false;

}  // namespace ondrel::test
