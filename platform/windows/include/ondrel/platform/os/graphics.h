// Bitmaps, icons and image lists: the system's own.
#pragma once

#include <ondrel/platform/os/types.h>

#include <commctrl.h>
#include <shellapi.h>
