// How this system marks a name as exported from, or imported into, a shared library.
#pragma once

#define ONDREL_OS_EXPORT __attribute__((visibility("default")))
#define ONDREL_OS_IMPORT __attribute__((visibility("default")))

// What the platform layer adds to the system: a library that is shared, like the system itself.
#define ONDREL_SYSTEM_API ONDREL_OS_EXPORT
