// What a script's object has beside its interfaces, refused: a base for objects of the tests' own.
#pragma once

#include <ondrel/platform/com.h>

namespace ondrel::test {

using DispatchBase = IDispatch;  // there is nothing else here

}  // namespace ondrel::test
