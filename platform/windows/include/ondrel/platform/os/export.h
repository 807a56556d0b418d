// How this system marks a name as exported from, or imported into, a shared library.
#pragma once

#define ONDREL_OS_EXPORT __declspec(dllexport)
#define ONDREL_OS_IMPORT __declspec(dllimport)

// What the platform layer adds to the system: so little that it is part of each library that uses it.
#define ONDREL_SYSTEM_API
