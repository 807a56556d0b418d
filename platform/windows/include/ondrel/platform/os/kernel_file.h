// Reading and writing through a handle: the system's own.
#pragma once

#include <ondrel/platform/os/types.h>
