// The console for tests to implement: here it has no other operations than those that the contract header names.
#pragma once

#include <ondrel/platform/console.h>

#include "os/whole_interfaces.h"

namespace ondrel::test {

/// Whether VariantChangeType takes values by reference.
inline constexpr bool kConvertsReferences = false;

}  // namespace ondrel::test
