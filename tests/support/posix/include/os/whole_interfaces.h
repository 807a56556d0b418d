// Interfaces for tests to implement: here they have no other operations than those that the contract headers name.
#pragma once

#include <ondrel/platform/xml.h>

namespace ondrel::test {

template <class Interface>
using Whole = Interface;

}  // namespace ondrel::test
