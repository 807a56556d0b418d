// The management console's interfaces: the system's own.
#pragma once

#include <ondrel/platform/os/com.h>

#include <mmc.h>

// The compiler's header has the interface without its identifier, which mmc.idl gives.
__CRT_UUID_DECL(IConsole3, 0x4f85efdb, 0xd0e1, 0x498c, 0x8d, 0x4a, 0xd0, 0x10, 0xdf, 0xdd, 0x40, 0x4f)
